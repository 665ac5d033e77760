// What data drives besides texts: pictures, and rows that scroll.

import assert from "node:assert/strict";
import { symlinkSync, writeFileSync } from "node:fs";
import { test } from "node:test";
import { digest, parts, readPart } from "../support/deck.mjs";
import { photoDeck, setPhotos, svg } from "../support/driven_deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { valueDeck } from "../support/value_deck.mjs";

test("a picture shows its file, also in a filled copy, and the deck keeps its own", (t) => {
  const sandbox = new Sandbox(t);
  const deck = photoDeck(sandbox, "yard");
  const before = digest(deck);
  writeFileSync(sandbox.path("plant/photos/yard.svg"), svg("red"));
  const [link] = JSON.parse(sandbox.done("info", deck, "--json")).slides[1].links;
  assert.deepEqual([link.sourceType, link.folder, link.extension], [3, "photos", "svg"]);

  sandbox.done("fill", deck, "-o", sandbox.path("filled.pptx"));
  assert.equal(readPart(sandbox.path("filled.pptx"), "ppt/media/live1.svg"), svg("red"));
  sandbox.done("display", deck, 1);
  assert.deepEqual(parts(deck).filter((part) => part.includes("live")), []);
  assert.equal(digest(deck), before);
});

test("files outside of the picture's folder are refused", (t) => {
  const sandbox = new Sandbox(t);
  const deck = photoDeck(sandbox, "yard");
  writeFileSync(sandbox.path("secret.svg"), svg("black"));
  symlinkSync(sandbox.path("secret.svg"), sandbox.path("plant/photos/through.svg"));
  for (const name of ["../../secret", sandbox.path("secret"), "through", "C:\\secret"]) {
    setPhotos(sandbox, name);
    const { code, error } = sandbox.run("fill", deck, "-o", sandbox.path("filled.pptx"));
    assert.equal(code, 1);
    assert.match(error, /leads out of the folder/, name);
  }
  setPhotos(sandbox, "none");
  assert.match(sandbox.run("fill", deck, "-o", sandbox.path("filled.pptx")).error, /none\.svg.*cannot be found/);
});

test("scroll entries are made, changed, switched off and refused by name", (t) => {
  const { sandbox, deck } = valueDeck(t, "a", "b", "c");
  const slide = (...args) => sandbox.run("slide", deck, 1, ...args);
  const entries = () => JSON.parse(sandbox.done("slide", deck, 1, "--json")).scroll;
  assert.equal(slide("--scroll", 1, "--step", 2, "--time", 5000).error, "");
  assert.deepEqual(entries(), [{ entry: 1, enabled: true, step: 2, time: 5000 }]);
  slide("--scroll", 1, "--time", 4000);
  slide("--scroll", 1, "--off");
  assert.deepEqual(entries(), [{ entry: 1, enabled: false, step: 2, time: 4000 }]);
  assert.match(slide("--scroll", 9, "--step", 1, "--time", 500).error, /nothing on slide 1 .* named '9'/);

  const refused = [
    [["--scroll", 1000, "--step", 1, "--time", 500], /1 to 999/],
    [["--scroll", 1, "--step", 1000001], /--step/],
    [["--scroll", 1, "--time", 19], /--time/],
    [["--scroll", 2, "--step", 1], /no scroll entry 2; give --step/],
    [["--scroll", 2, "--off"], /no scroll entry 2/],
    [["--scroll", 1, "--off", "--step", 1], /--off/],
    [["--step", 1], /--scroll ENTRY/],
  ];
  const before = digest(deck);
  for (const [args, why] of refused) {
    const { code, error } = slide(...args);
    assert.notEqual(code, 0);
    assert.match(error, why, args.join(" "));
  }
  assert.equal(digest(deck), before);
});
