// What is written to deck files, and what never is.

import assert from "node:assert/strict";
import { chmodSync, readdirSync, readFileSync, symlinkSync, writeFileSync } from "node:fs";
import { dirname } from "node:path";
import { test } from "node:test";
import { allXml, digest, parts, textInFile } from "../support/deck.mjs";
import { Sandbox, asNobody } from "../support/sandbox.mjs";
import { setValues, valueDeck } from "../support/value_deck.mjs";

test("live values are in filled copies only", (t) => {
  const { sandbox, deck } = valueDeck(t, "xyzzy-live-value");
  sandbox.done("display", deck, 1);
  assert.ok(!allXml(deck).includes("xyzzy-live-value"));
  const before = digest(deck);
  sandbox.done("fill", deck, "-o", sandbox.path("filled.pptx"));
  assert.ok(allXml(sandbox.path("filled.pptx")).includes("xyzzy-live-value"));
  assert.equal(digest(deck), before);
  assert.deepEqual(parts(sandbox.path("filled.pptx")), parts(deck));

  // The copy is not taken for the deck.
  setValues(sandbox, "<second> & more");
  sandbox.done("fill", deck, "-o", sandbox.path("filled.pptx"));
  assert.equal(textInFile(sandbox.path("filled.pptx"), 1, "p1 Item"), "<second> & more");

  // What was filled once and is linked still is emptied again by the next save.
  const filled = sandbox.path("shop/filled.pptx");
  sandbox.done("fill", deck, "-o", filled);
  sandbox.done("display", filled, 3);
  assert.ok(!allXml(filled).includes("second"));

  // The deck itself is no copy.
  symlinkSync("shop/shop.pptx", sandbox.path("link.pptx"));
  for (const same of [deck, sandbox.path("shop/../shop/shop.pptx"), sandbox.path("link.pptx")]) {
    const { code, error } = sandbox.run("fill", deck, "-o", same);
    assert.ok(code !== 0 && error.includes("shop.pptx"), same);
    assert.equal(digest(deck), before);
  }
});

test("the sample decks are saved as they are in the tree", (t) => {
  const sandbox = new Sandbox(t);
  for (const name of ["departures", "plant", "shop"]) {
    const deck = sandbox.sample(name);
    const before = allXml(deck);
    sandbox.done("display", deck, 1);
    assert.equal(allXml(deck), before, name);
  }
});

// A save that fails leaves the old file and nothing beside it.
const failures = {
  "a folder where nothing can be created": {
    prepare: (sandbox, deck) => chmodSync(deck, 0o666),
    before: asNobody,
    line: (deck) => ["display", deck, 2],
    error: /shop\.pptx' cannot be saved:.*folder.*Permission denied/,
  },
  "a write-protected file": {
    prepare: (sandbox, deck) => {
      chmodSync(deck, 0o444);
      chmodSync(dirname(deck), 0o777);
    },
    before: asNobody,
    line: (deck) => ["display", deck, 2],
    error: /shop\.pptx' cannot be saved:.*write-protected/,
  },
  "a filled copy in a folder that is not there": {
    line: (deck) => ["fill", deck, "-o", "nowhere/filled.pptx"],
    error: /nowhere\/filled\.pptx' cannot be saved:.*No such file/,
  },
};
for (const [name, { prepare, before, line, error }] of Object.entries(failures)) {
  test(`a save that fails leaves the old file: ${name}`, (t) => {
    const { sandbox, deck } = valueDeck(t, "a");
    prepare?.(sandbox, deck);
    const files = readdirSync(dirname(deck));
    const bytes = readFileSync(deck);
    const result = sandbox.runWith({ before }, ...line(deck));
    assert.equal(result.code, 1, result.error);
    assert.match(result.error, error);
    assert.equal(result.error.split("\n").length, 2, `one line: ${result.error}`);
    assert.ok(readFileSync(deck).equals(bytes), "the old file");
    assert.deepEqual(readdirSync(dirname(deck)), files, "nothing is left behind");
  });
}

test("a save that is killed at any moment leaves the old file or the new one", (t) => {
  const { sandbox, deck } = valueDeck(t, "a");
  const before = readFileSync(deck);
  sandbox.done("display", deck, 2);
  const after = readFileSync(deck);
  assert.ok(!after.equals(before));
  for (let milliseconds = 5; milliseconds <= 100; milliseconds += 5) {
    writeFileSync(deck, before);
    const killer = ["timeout", "--signal=KILL", `${milliseconds / 1000}s`];
    sandbox.runWith({ before: killer }, "display", deck, 2);
    const found = readFileSync(deck);
    assert.ok(found.equals(before) || found.equals(after), `killed after ${milliseconds} ms`);
  }
});
