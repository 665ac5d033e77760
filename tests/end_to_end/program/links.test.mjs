// The verbs link, unlink, slide, display and info.

import assert from "node:assert/strict";
import { existsSync, rmSync } from "node:fs";
import { test } from "node:test";
import { digest, renameShape, textInFile } from "../support/deck.mjs";
import { at, textSource, value, valueDeck } from "../support/value_deck.mjs";

function links(sandbox, deck) {
  return JSON.parse(sandbox.done("info", deck, "--json")).slides.map((slide) =>
    slide.links.map(({ shape, sourceType, connection, column, row, format }) =>
      sourceType === 1 ? [shape, format] : [shape, connection, column, row],
    ),
  );
}

test("shapes are linked to values and clocks, linked anew, and unlinked one by one or all", (t) => {
  const { sandbox, deck } = valueDeck(t, "a", "b", "c");
  sandbox.done("link", deck, ...at(2, "Clock"), "--clock", "hh:nn:ss");
  const values = [
    ["p1 Item", "001", "Value", 1],
    ["p2 Item", "001", "Value", 2],
    ["p3 Item", "001", "Value", 3],
  ];
  assert.deepEqual(links(sandbox, deck), [values, [["Clock", "hh:nn:ss"]], []]);

  const told = sandbox.done("unlink", deck, ...at(1, "p2 Item"));
  assert.equal(told, 'slide 1, p2 Item: no longer linked; its text is now "b"\n');
  assert.equal(textInFile(deck, 1, "p2 Item"), "b");
  assert.deepEqual(links(sandbox, deck), [[values[0], values[2]], [["Clock", "hh:nn:ss"]], []]);
  assert.match(sandbox.run("unlink", deck, ...at(1, "p2 Item")).error, /'p2 Item'.*not linked/);

  // Linked anew, also from a value to a clock.
  sandbox.done("link", deck, ...at(1, "p1 Item"), ...value(3));
  sandbox.done("link", deck, ...at(1, "p3 Item"), "--clock", "yyyy");
  assert.deepEqual(links(sandbox, deck)[0], [["p1 Item", "001", "Value", 3], ["p3 Item", "yyyy"]]);
  sandbox.done("fill", deck, "-o", sandbox.path("filled.pptx"));
  assert.equal(textInFile(sandbox.path("filled.pptx"), 1, "p1 Item"), "c");
  assert.match(textInFile(sandbox.path("filled.pptx"), 1, "p3 Item"), /^20\d\d$/);

  assert.match(sandbox.done("unlink", deck, "--all"), /^slide 1, p1 Item: .*"c"\nslide 1, p3 Item: .*\nslide 2, Clock: /);
  assert.deepEqual(links(sandbox, deck), [[], [], []]);
  assert.match(sandbox.done("info", deck), /not linked/);
});

test("a deck is kept as it was before its first link, where that is wanted", (t) => {
  const { sandbox, deck } = valueDeck(t, "a");
  const copy = deck.replace(".pptx", ".backup.pptx");
  const before = digest(deck);
  const link = (shape) => sandbox.run("link", deck, ...at(1, shape), ...value(1), "--backup").error;
  assert.ok(link("p5 Item").includes(copy));
  assert.equal(digest(copy), before);
  assert.equal(link("p6 Item"), "");
  assert.equal(digest(copy), before, "the older one stays");
  const fails = ["link", deck, ...at(1, "Nix"), ...value(1), "--backup"];
  rmSync(copy);
  sandbox.run(...fails);
  assert.ok(!existsSync(copy), "nothing has changed");
  assert.equal(sandbox.done("connection", deck, "add", ...textSource("More", "values.txt"), "--backup"), "002\n");
  assert.ok(existsSync(copy));
});

test("slides have their properties, and the display type decides what linked shapes show their author", (t) => {
  const { sandbox, deck } = valueDeck(t, "live");
  const properties = (slide) => JSON.parse(sandbox.done("slide", deck, slide, "--json"));
  sandbox.done("slide", deck, 2, "--hide-when-no-data", "on", "--refresh-linked-objects", "on");
  sandbox.done("slide", deck, 2, "--refresh-linked-objects", "off");
  const unset = { hideWhenNoData: false, refreshLinkedObjects: false, scroll: [] };
  assert.deepEqual(properties(1), { ...unset, slide: 1 });
  assert.deepEqual(properties(2), { ...unset, slide: 2, hideWhenNoData: true });

  const filled = sandbox.path("filled.pptx");
  const cases = [
    ["1", "live"],
    ["Connection", "Values"],
    ["column - index", "Value 1"],
    ["Nothing", " "],
  ];
  for (const [code, text] of cases) {
    sandbox.done("display", deck, code);
    sandbox.done("fill", deck, "-o", filled);
    assert.equal(textInFile(filled, 1, "p1 Item"), text, code);
  }
});

test("links that cannot be are told, and the deck stays as it was", (t) => {
  const { sandbox, deck } = valueDeck(t, "a");
  renameShape(deck, 2, "p8 Item", "p9 Item");
  const before = digest(deck);
  const first = at(1, "p1 Item");
  const link = (place, ...source) => ["link", deck, ...place, ...source];
  const cases = [
    [link(at(4, "p1 Item"), ...value(1)), 1, /no slide 4; the deck has 3/],
    [link(at(0, "p1 Item"), ...value(1)), 1, /no slide 0/],
    [link(at("two", "p1 Item"), ...value(1)), 2, /--slide/],
    [link(at(1, "Nix"), ...value(1)), 1, /slide 1 has no shape named 'Nix'.*p1 Item/],
    [link(at(2, "p9 Item"), ...value(1)), 1, /several shapes named 'p9 Item'/],
    [link(first, ...value(1, "Value", "009")), 1, /no connection 009/],
    [link(first, ...value(1, "Preis")), 1, /no column 'Preis'.*Value/],
    [link(first, ...value(0)), 2, /--row/],
    [link(first, ...value("nan")), 2, /--row/],
    [link(first, ...value(1.5)), 2, /--row/],
    [link(first), 2, /--clock/],
    [link(first, "--clock", "hh", ...value(1)), 2, /--clock/],
    [link(first, "--clock", ""), 2, /--clock/],
    [link(first, "--clock", '"hh" :'), 2, /holds no sign[^]*hh +hour[^]*Try 'lumenfold link --help'\.\n$/],
    [["connection", deck, "add", "--never"], 2, /Try 'lumenfold connection DECK add --help'/],
    [link(first, ...value(1), "--folder", "photos"), 1, /'p1 Item'.*neither a picture nor/],
    [["link", sandbox.sample("plant"), ...at(2, "Site"), "--clock", "hh"], 1, /'Site'.*no text/],
    [["unlink", deck], 2, /--all/],
    [["unlink", deck, "--all", "--slide", 1], 2, /--all/],
    [["unlink", deck, ...at(9, "p1 Item")], 1, /no slide 9/],
    [["unlink", deck, ...at(1, "Nix")], 1, /no shape named 'Nix'/],
    [["slide", deck, 9], 1, /no slide 9/],
    [["slide", deck, 1, "--hide-when-no-data", "perhaps"], 2, /perhaps/],
    [["display", deck, 8], 2, /'8'/],
    [["display", deck, "Values"], 2, /'Values'/],
    [["show", deck, "--slide", 9, "--port", 0], 1, /no slide 9/],
    [["show", deck, "--port", 70000], 2, /--port/],
    [["show", deck, "--port", 0, "--bind", "nonsense"], 1, /nonsense/],
    [["show", deck, "--port", 0, "--token-file", "nowhere"], 1, /nowhere: the token file cannot be read: No such/],
    [["show", deck, "--stale", "hide"], 1, /--stale must be keep, mark or blank, not "hide"/],
    [["juggle", deck], 2, /juggle[^]*Try 'lumenfold --help'/],
    [[], 2, /a verb is required/],
  ];
  for (const [line, code, text] of cases) {
    const result = sandbox.run(...line);
    assert.match(result.error, text, line.join(" "));
    assert.match(result.error, /^lumenfold: /, line.join(" "));
    assert.equal(result.code, code, line.join(" "));
    assert.equal(digest(deck), before, line.join(" "));
  }
  assert.match(sandbox.done("--help"), /connection[^]*unlink/);
  assert.match(sandbox.done("--version"), /^\d+\.\d+\.\d+\n$/);
});
