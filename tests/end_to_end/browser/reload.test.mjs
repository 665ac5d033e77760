// A new version of the deck comes onto the screens at once, or not at all.

import assert from "node:assert/strict";
import { test } from "node:test";
import { film, isUntouched, openScreen, useBrowser, waitForSlide, waitForText } from "../support/browser.mjs";
import { addPart, elementId } from "../support/deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeValueDeck, setValues } from "../support/value_deck.mjs";
import { orderSlides, replaceDeck, replaceText, takeUp } from "../support/versions.mjs";
import { refresh, until } from "../support/wait.mjs";

useBrowser();

// A picture that no browser has loaded before: a square in one colour.
const square = (colour) =>
  `<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64"><rect width="64" height="64" fill="${colour}"/></svg>`;

const currentText = (page) => page.evaluate(() => document.querySelector(".frame.current").innerText);

test("the screen changes from one version to the next in one step", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "a");
  addPart(deck, "ppt/media/image-3-1.png", square("green"));
  const show = await sandbox.show(deck);
  await show.command("goto/3");
  const page = await openScreen(t, show.url);
  await waitForSlide(page, 3);
  await page.waitForFunction(() => document.getAnimations().length === 0);
  await page.waitForTimeout(500);
  // The new picture is slow to come.
  await page.route("**/assets/*", async (route) => {
    await new Promise((resolve) => setTimeout(resolve, 800));
    await route.continue();
  });
  const filmed = await film(page);
  const before = await page.screenshot();
  replaceDeck(deck, (fresh) => {
    addPart(fresh, "ppt/media/image-3-1.png", square("purple"));
    replaceText(fresh, 3, "Offer of the day", "Offer of tomorrow");
    orderSlides(fresh, [3, 1, 2]);
  });
  await page.waitForFunction(
    () => document.querySelector(".frame.current").innerText.includes("Offer of tomorrow"),
    null,
    { timeout: takeUp, polling: 25 },
  );
  await page.waitForTimeout(500);
  const pictures = await filmed.end();
  assert.equal(pictures.length, 2, "the old picture, the new one, and nothing in between");
  assert.ok(!before.equals(await page.screenshot()));
  assert.equal(await page.evaluate(() => document.querySelectorAll(".frame.current").length), 1);
  await waitForSlide(page, 1);

  // What follows is drawn into the new frames.
  await show.command("next");
  await waitForSlide(page, 2);
  setValues(sandbox, "b");
  await page.waitForFunction(() => /\bb\b/.test(document.querySelector(".frame.current").innerText), null, {
    timeout: refresh,
  });
  assert.ok(await isUntouched(page));
  assert.deepEqual(page.faults, []);
});

test("screens that keep to a slide or a shape find theirs in the new version", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "a");
  const show = await sandbox.show(deck);
  const second = await openScreen(t, `${show.url}?slide=2`);
  const shape = await openScreen(t, `${show.url}?shape=p1 Item`);
  const last = await openScreen(t, `${show.url}?slide=3`);
  await waitForText(shape, elementId(deck, 1, "p1 Item"), "a");
  const secondText = await currentText(second);
  const lastText = await currentText(last);

  replaceDeck(deck, (fresh) => orderSlides(fresh, [2, 1]));
  const id = elementId(deck, 1, "p1 Item").replace("s1-", "s2-");
  await waitForText(shape, id, "a", takeUp + refresh);
  setValues(sandbox, "b");
  await waitForText(shape, id, "b", refresh);
  await until("slide 2 as it is now", async () => /\bb\b/.test(await currentText(second)), takeUp);
  assert.notEqual(await currentText(second), secondText);

  replaceDeck(deck, (fresh) => orderSlides(fresh, [2, 1]));
  await until("slide 2 as it was", async () => (await currentText(second)) === secondText, takeUp + refresh);
  await waitForText(shape, elementId(deck, 1, "p1 Item"), "b", takeUp + refresh);
  assert.ok(lastText.length > 0);
  for (const page of [second, shape, last]) {
    assert.ok(await isUntouched(page));
    assert.deepEqual(page.faults, []);
  }
});
