// Copies that stand alone: what is in them, what is told, and how the desk makes them.

import assert from "node:assert/strict";
import { existsSync, rmSync, writeFileSync } from "node:fs";
import { test } from "node:test";
import { allXml, assertFree, editPart, parts, readPart } from "../support/deck.mjs";
import { linkedSheetDeck, photoDeck, svg } from "../support/driven_deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { sampleDeck, textSource, valueDeck } from "../support/value_deck.mjs";
import { until } from "../support/wait.mjs";

test("slides scroll page by page, and those without data are not there", (t) => {
  const { sandbox, deck } = valueDeck(t, "Tea", "Milk", "Rye");
  sandbox.done("slide", deck, 1, "--scroll", 1, "--step", 1, "--time", 4000);
  const jump = '<a:hlinkClick r:id="" action="ppaction://customshow?id=7&amp;return=true"/>';
  editPart(deck, "ppt/slides/slide1.xml", (xml) => xml.replace(/(<p:cNvPr id="\d+" name="[^"]+")\/>/, `$1>${jump}</p:cNvPr>`));
  editPart(deck, "ppt/presentation.xml", (xml) => {
    const first = xml.match(/<p:sldId [^>]*r:id="([^"]+)"/)[1];
    const show = `<p:custShow name="Short" id="7"><p:sldLst><p:sld r:id="${first}"/></p:sldLst></p:custShow>`;
    return xml.replace(/<p:notesSz[^>]*>/, `$&<p:custShowLst>${show}</p:custShowLst>`);
  });
  const copy = sandbox.path("copy.pptx");
  const out = sandbox.run("offline", deck, "-o", copy);
  assert.equal(out.code, 0, out.error);
  assert.match(out.error + out.out, /Off-line presentation is ready\./);
  const slides = parts(copy).filter((part) => /slides\/slide\d+\.xml$/.test(part));
  assert.equal(slides.length, parts(deck).filter((part) => /slides\/slide\d+\.xml$/.test(part)).length + 2);
  const times = slides.map((part) => readPart(copy, part).match(/advTm="(\d+)"/)?.[1]);
  assert.ok(times.filter((time) => time === "4000").length >= 2, times.join());
  // The custom show has all pages of its slide, in their order, and links lead to it still.
  const presentation = readPart(copy, "ppt/presentation.xml");
  const ids = (text) => [...text.matchAll(/r:id="([^"]+)"/g)].map(([, id]) => id);
  const show = presentation.match(/<p:custShow name="Short" id="7">.*?<\/p:custShow>/s)[0];
  assert.deepEqual(ids(show), ids(presentation.match(/<p:sldIdLst>.*<\/p:sldIdLst>/s)[0]).slice(0, 3));
  const all = allXml(copy);
  assert.equal(all.split(jump).length - 1, 3);
  for (const value of ["Tea", "Milk", "Rye"]) assert.ok(all.includes(`<a:t>${value}</a:t>`), value);
  assertFree(copy);
});

test("what cannot be read is told, and nothing is written where nothing can be", (t) => {
  const sandbox = new Sandbox(t);
  const deck = photoDeck(sandbox, "yard");
  writeFileSync(sandbox.path("plant/photos/yard.svg"), svg("red"));
  const gone = sandbox.write("gone.txt", [["Item"], ["Tea"]]);
  sandbox.done("connection", deck, "add", ...textSource("Gone", gone));
  rmSync(gone);
  const copy = sandbox.path("copy.pptx");
  const { code, error } = sandbox.run("offline", deck, "-o", copy);
  assert.equal(code, 1);
  assert.match(error, /gone\.txt/);
  assert.match(error, /written without what could not be read/);
  assert.equal(readPart(copy, parts(copy).find((part) => part.endsWith(".svg"))), svg("red"));

  const same = sandbox.run("offline", deck, "-o", deck);
  assert.match(same.error, /this is the deck/);
  const nowhere = sandbox.run("offline", deck, "-o", sandbox.path("none/copy.pptx"));
  assert.equal(nowhere.code, 1);
  assert.match(nowhere.error, /Error while creating off-line presentation/);
  const again = sandbox.run("offline", copy, "-o", sandbox.path("again.pptx"));
  assert.match(again.error, /stands alone already/);
  assert.ok(!existsSync(sandbox.path("again.pptx")));
});

test("clocks go on as date fields", (t) => {
  const { sandbox, deck } = sampleDeck(t, "plant");
  const copy = sandbox.path("copy.pptx");
  sandbox.run("offline", deck, "-o", copy, "--keep-clocks");
  assert.match(allXml(copy), /<a:fld id="[^"]+" type="datetime1[0-3]">/);
});

test("a copy that is made at the desk is as the verb's, and can be downloaded", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = linkedSheetDeck(sandbox, "Prices!R1C1:R4C4");
  const desk = await sandbox.edit(deck);
  const window = await desk.openWindow();
  await window.do("press/cbrOfflineCopy");
  await window.raise(await window.form("frmOfflineCopy"), { control: "cmdOK", event: "click" });
  const notice = await window.until("the copy", ({ notices }) =>
    notices.find(({ actions }) => actions.some(({ id }) => id === "download")),
  );
  assert.match(notice.text, /^shop-offline\.pptx /);
  await window.do(`notices/${notice.id}/download`);
  const { data } = await until("the download", () => window.events.find(({ event }) => event === "download"));
  assert.equal(data.name, "shop-offline.pptx");
  const answer = await desk.get(data.path);
  assert.equal(answer.status, 200);
  assert.match(answer.headers["content-disposition"], /shop-offline\.pptx/);
  assert.equal((await desk.get("copies/2")).status, 404);

  const atDesk = sandbox.path("shop/shop-offline.pptx");
  const byVerb = sandbox.path("copy.pptx");
  assert.equal(sandbox.run("offline", deck, "-o", byVerb).code, 0);
  const sheet = (copy) => readPart(copy, parts(copy).find((part) => part.endsWith(".svg")));
  assert.ok(sheet(byVerb).includes("Country sourdough"));
  assert.equal(sheet(atDesk), sheet(byVerb));
  assert.ok(!allXml(atDesk).includes("oleObj"));
  assertFree(atDesk, "prices.xlsx");
});
