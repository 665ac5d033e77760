// One deck of a player takes the place of another on the screens.

import assert from "node:assert/strict";
import { copyFileSync, rmSync } from "node:fs";
import { test } from "node:test";
import { film, isUntouched, openScreen, useBrowser } from "../support/browser.mjs";
import { addPart } from "../support/deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeValueDeck } from "../support/value_deck.mjs";
import { orderSlides, replaceText } from "../support/versions.mjs";
import { patience, until } from "../support/wait.mjs";

useBrowser();

const square = (colour) =>
  `<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64"><rect width="64" height="64" fill="${colour}"/></svg>`;

test("screens change from deck to deck in one step, however slow the pictures are", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "a");
  const decks = { One: "green", Two: "purple" };
  for (const [name, colour] of Object.entries(decks)) {
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
  const shows = (name) =>
    page.waitForFunction(
      (text) => document.querySelector(".frame.current").innerText.includes(text),
      `Offer ${name}`,
      { timeout: patience, polling: 25 },
    );
  await shows("One");
  await page.waitForFunction(() => document.getAnimations().length === 0);
  await page.waitForTimeout(500);
  await page.route("**/assets/*", async (route) => {
    await new Promise((resolve) => setTimeout(resolve, 800));
    await route.continue();
  });
  const filmed = await film(page);
  await player.command("next");
  await shows("Two");
  await page.waitForTimeout(500);
  const pictures = await filmed.end();
  assert.equal(pictures.length, 2, "the old picture, the new one, and nothing in between");

  rmSync(sandbox.path("shop/Two.pptx"));
  await shows("One");
  assert.ok(await isUntouched(page));
  assert.deepEqual(page.faults, []);
});
