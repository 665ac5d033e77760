// What data and files drive besides texts, as screens see it.

import assert from "node:assert/strict";
import { renameSync, truncateSync, writeFileSync } from "node:fs";
import { test } from "node:test";
import { isUntouched, openScreen, useBrowser } from "../support/browser.mjs";
import { editPart, elementId, holdStill } from "../support/deck.mjs";
import { linkedPictureDeck, linkedSheetDeck, photoDeck, setPhotos, sheetShape, svg } from "../support/driven_deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

// The SVG files that the pictures of an element show, decoded by the browser.
const shownFiles = (page, id) =>
  page.evaluate(async (name) => {
    const shown = [...document.getElementById(name).querySelectorAll("img, image")];
    return Promise.all(
      shown.map(async (element) => {
        const address = element.src || element.href.baseVal;
        const picture = new Image();
        picture.src = address;
        await picture.decode();
        return (await fetch(address)).text();
      }),
    );
  }, id);

const waitForFile = (page, id, part) =>
  until(`a picture with ${part}`, async () => (await shownFiles(page, id)).join("").includes(part));

test("a picture follows its data, and the last good one stands", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = photoDeck(sandbox, "yard");
  holdStill(deck);
  for (const name of ["yard", "hall"]) writeFileSync(sandbox.path(`plant/photos/${name}.svg`), svg(`${name}-red`));
  const id = elementId(deck, 2, "Site");
  const show = await sandbox.show(deck, "--slide", 2);
  const page = await openScreen(t, show.url);
  await waitForFile(page, id, "yard-red");
  setPhotos(sandbox, "hall");
  await waitForFile(page, id, "hall-red");

  writeFileSync(sandbox.path("plant/photos/broken.svg"), '<svg xmlns="http://www.w3.org/2000/svg"><rect');
  setPhotos(sandbox, "broken");
  await until("a line in the log", () => sandbox.errorLog().some((entry) => entry.includes("broken.svg")));
  assert.deepEqual(await shownFiles(page, id), [svg("hall-red")]);
  assert.ok(await isUntouched(page));
});

test("a linked picture is read anew when its file is replaced", async (t) => {
  const sandbox = new Sandbox(t);
  const file = sandbox.write("photo.svg", svg("before-red"));
  const deck = linkedPictureDeck(sandbox, file);
  const id = elementId(deck, 2, "Site");
  const show = await sandbox.show(deck, "--slide", 2);
  const page = await openScreen(t, show.url);
  await waitForFile(page, id, "before-red");
  renameSync(sandbox.write("fresh.svg", svg("after-red")), file);
  await waitForFile(page, id, "after-red");
  truncateSync(file, 20);
  await until("a line in the log", () => sandbox.errorLog().some((entry) => entry.includes("photo.svg")));
  assert.deepEqual(await shownFiles(page, id), [svg("after-red")]);
});

test("linked cells are drawn as the workbook has them, and again when it changes", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = linkedSheetDeck(sandbox, "Prices!R1C1:R4C4");
  const id = `s1-sh${sheetShape}`;
  const show = await sandbox.show(deck);
  const page = await openScreen(t, show.url);
  await waitForFile(page, id, "Country sourdough");
  const [drawn] = await shownFiles(page, id);
  for (const text of ["Item", "€5.40", "Walnut loaf"]) assert.ok(drawn.includes(text), text);
  assert.ok(!drawn.includes("Baguette"), "what lies below the range stays out");
  editPart(sandbox.path("shop/prices.xlsx"), "xl/sharedStrings.xml", (xml) =>
    xml.replace("Country sourdough", "Rye &amp; &lt;wheat"),
  );
  await waitForFile(page, id, "Rye &amp; &lt;wheat");
  assert.deepEqual(sandbox.errorLog(), []);
});
