// Slides as pages and pictures that stand alone.

import assert from "node:assert/strict";
import { existsSync, mkdirSync, readFileSync, readdirSync } from "node:fs";
import { test } from "node:test";
import { editPart } from "../support/deck.mjs";
import { sampleDeck, valueDeck } from "../support/value_deck.mjs";

const pngSize = (file) => {
  const bytes = readFileSync(file);
  assert.equal(bytes.toString("latin1", 1, 4), "PNG");
  return [bytes.readUInt32BE(16), bytes.readUInt32BE(20)];
};

test("every slide is written, filled, hidden ones too", (t) => {
  const { sandbox, deck } = valueDeck(t, "eggs & <ham>", "milk", "tea");
  editPart(deck, "ppt/slides/slide2.xml", (xml) => xml.replace("<p:sld ", '<p:sld show="0" '));
  const folder = sandbox.path("new folder/100% #1");
  sandbox.done("snapshot", deck, "-o", folder, "--png", "--width", 480);

  const slides = readdirSync(folder).filter((name) => name.endsWith(".html")).length;
  assert.deepEqual(
    readdirSync(folder).sort(),
    Array.from({ length: slides }, (_, i) => `slide-00${i + 1}`).flatMap((name) => [`${name}.html`, `${name}.png`]),
  );
  assert.ok(slides >= 2);
  const page = readFileSync(`${folder}/slide-001.html`, "utf8");
  assert.ok(page.includes("eggs &amp; &lt;ham&gt;"));
  assert.ok(page.includes('href="data:image/'));
  assert.ok(!/(src|href)="(?!data:)/.test(page));
  assert.deepEqual(pngSize(`${folder}/slide-002.png`), [480, 270]);
});

// The media boxes of a PDF's pages, [width, height] in points.
const sheets = (file) =>
  [...readFileSync(file, "latin1").matchAll(/\/MediaBox ?\[0 0 ([\d.]+) ([\d.]+)\]/g)].map(([, ...size]) => size.map(Number));

test("the slides of a show are the pages of a PDF, as large as they are", (t) => {
  const { sandbox, deck } = sampleDeck(t, "plant");
  const file = sandbox.path("plant & more.pdf");
  assert.equal(sandbox.done("snapshot", deck, "--pdf", file), `3 slides written to ${file}\n`);
  assert.match(readFileSync(file, "latin1"), /^%PDF-/);
  assert.deepEqual(sheets(file), Array(3).fill([960, 540]));

  editPart(deck, "ppt/slides/slide2.xml", (xml) => xml.replace("<p:sld ", '<p:sld show="0" '));
  // 4:3 with fractions of a pixel.
  editPart(deck, "ppt/presentation.xml", (xml) => xml.replace(/<p:sldSz [^>]*>/, '<p:sldSz cx="9140001" cy="6855003"/>'));
  sandbox.done("snapshot", deck, "--pdf", file);
  assert.equal(sheets(file).length, 2, "hidden slides are for who asks for them");
  const [[width, height]] = sheets(file);
  assert.ok(Math.abs(width - 719.7) < 1 && Math.abs(height - 539.8) < 1, `${width} × ${height}`);
  sandbox.done("snapshot", deck, "--pdf", file, "--slide", 2);
  assert.equal(sheets(file).length, 1);
});

test("the pages of an off-line copy are those that its show has", (t) => {
  const { sandbox, deck } = sampleDeck(t, "departures");
  const copy = sandbox.path("copy.pptx");
  const file = sandbox.path("copy.pdf");
  // All destinations take three pages, and nothing was changed.
  sandbox.write("departures/alerts.txt", readFileSync(sandbox.path("departures/alerts.txt"), "utf8").split("\n", 1)[0] + "\n");
  assert.equal(sandbox.done("offline", deck, "-o", copy, "--pdf", file), `5 slides written to ${file}\n`);
  assert.deepEqual(sheets(file), Array(5).fill([960, 540]));
  assert.equal(sandbox.done("snapshot", copy, "--pdf", file), `5 slides written to ${file}\n`);
});

test("what is drawn can be read, slide by slide", (t) => {
  const { sandbox, deck } = valueDeck(t, "eggs", "milk", "tea");
  const output = sandbox.done("snapshot", deck, "--scene", "--slide", 1);
  assert.match(output, /^slide 1 960x540 background #[0-9a-f]{6}\n/);
  assert.match(output, /\n      p[^\n]*\n        "eggs" /);
  assert.ok(!output.includes("\nslide 2 "));
  const beyond = sandbox.run("snapshot", deck, "--scene", "--slide", 99);
  assert.equal(beyond.code, 1);
  assert.match(beyond.error, /there is no slide 99; it has \d+\./);
});

test("what cannot be photographed or filled is told", (t) => {
  const { sandbox, deck } = valueDeck(t, "eggs", "milk", "tea");
  mkdirSync(sandbox.path("no programs"));
  const environment = { PATH: sandbox.path("no programs") };
  const blind = sandbox.runWith({ environment }, "snapshot", deck, "-o", sandbox.path("out"), "--png");
  assert.equal(blind.code, 1);
  assert.match(blind.error, /apt install chromium/);
  assert.ok(!existsSync(sandbox.path("out")));

  sandbox.done("connection", deck, "set", "001", "--file", "gone.txt");
  const unfilled = sandbox.run("snapshot", deck, "-o", sandbox.path("out"));
  assert.equal(unfilled.code, 1);
  assert.match(unfilled.error, /gone\.txt[^]*not everything could be filled/);
  assert.deepEqual(sandbox.errorLog(), []);
  assert.ok(existsSync(sandbox.path("out/slide-001.html")));
});
