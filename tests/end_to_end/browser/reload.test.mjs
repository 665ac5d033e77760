// A new version of the deck, and a player's next one, come onto the screens at once, or not at all.

import assert from "node:assert/strict";
import { copyFileSync, rmSync } from "node:fs";
import { test } from "node:test";
import { film, isUntouched, openScreen, useBrowser, waitForSlide, waitForText } from "../support/browser.mjs";
import { addPart, elementId } from "../support/deck.mjs";
import { setValues, showValues, valueDeck } from "../support/value_deck.mjs";
import { orderSlides, replaceDeck, replaceText, takeUp } from "../support/versions.mjs";
import { patience, refresh, until } from "../support/wait.mjs";

useBrowser();

// A picture that no browser has loaded before: a square in one colour.
const square = (colour) =>
  `<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64"><rect width="64" height="64" fill="${colour}"/></svg>`;

const currentText = (page) => page.evaluate(() => document.querySelector(".frame.current").innerText);

const waitForWords = (page, words, timeout = patience) =>
  page.waitForFunction((text) => document.querySelector(".frame.current").innerText.includes(text), words, {
    timeout,
    polling: 25,
  });

// What is painted while `change` leads to these words, with pictures that are slow to come.
async function filmChange(page, change, words, timeout) {
  await page.waitForFunction(() => document.getAnimations().length === 0);
  await page.waitForTimeout(500);
  await page.route("**/assets/*", async (route) => {
    await new Promise((resolve) => setTimeout(resolve, 800));
    await route.continue();
  });
  const filmed = await film(page);
  await change();
  await waitForWords(page, words, timeout);
  await page.waitForTimeout(500);
  const pictures = await filmed.end();
  assert.equal(pictures.length, 2, "the old picture, the new one, and nothing in between");
}

test("the screen changes from one version to the next in one step", async (t) => {
  const { sandbox, deck } = valueDeck(t, "a");
  addPart(deck, "ppt/media/image-3-1.png", square("green"));
  const show = await sandbox.show(deck);
  await show.command("goto/3");
  const page = await openScreen(t, show.url);
  await waitForSlide(page, 3);
  const change = () =>
    replaceDeck(deck, (fresh) => {
      addPart(fresh, "ppt/media/image-3-1.png", square("purple"));
      replaceText(fresh, 3, "Offer of the day", "Offer of tomorrow");
      orderSlides(fresh, [3, 1, 2]);
    });
  await filmChange(page, change, "Offer of tomorrow", takeUp);
  assert.equal(await page.evaluate(() => document.querySelectorAll(".frame.current").length), 1);
  await waitForSlide(page, 1);

  // What follows is drawn into the new frames.
  await show.command("next");
  await waitForSlide(page, 2);
  setValues(sandbox, "b");
  await until("the new value", async () => /\bb\b/.test(await currentText(page)), refresh);
  assert.ok(await isUntouched(page));
});

test("screens that keep to a slide or a shape find theirs in the new version", async (t) => {
  const { sandbox, deck, show } = await showValues(t, ["a"]);
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
  }
});

test("screens change from deck to deck of a player in one step", async (t) => {
  const { sandbox, deck } = valueDeck(t, "a");
  for (const [name, colour] of Object.entries({ One: "green", Two: "purple" })) {
    const file = sandbox.path(`shop/${name}.pptx`);
    copyFileSync(deck, file);
    addPart(file, "ppt/media/image-3-1.png", square(colour));
    replaceText(file, 3, "Offer of the day", `Offer ${name}`);
    orderSlides(file, [3]);
  }
  rmSync(deck);
  const player = await sandbox.play(sandbox.path("shop"), "--seconds", 86400);
  await until("both decks", async () => (await player.folder()).decks.length === 2);
  const page = await openScreen(t, player.url);
  await waitForWords(page, "Offer One");
  await filmChange(page, () => player.command("next"), "Offer Two");
  rmSync(sandbox.path("shop/Two.pptx"));
  await waitForWords(page, "Offer One");
  assert.ok(await isUntouched(page));
});
