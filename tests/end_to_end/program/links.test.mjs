// The verbs link, unlink, slide, display and info.

import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { test } from "node:test";
import { editPart, readPart, renameShape, textInFile } from "../support/deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeValueDeck } from "../support/value_deck.mjs";

function links(sandbox, deck) {
  return JSON.parse(sandbox.done("info", deck, "--json")).slides.map((slide) =>
    slide.links.map(({ shape, sourceType, connection, column, row, format }) =>
      sourceType === 1 ? [shape, format] : [shape, connection, column, row],
    ),
  );
}

test("shapes are linked to values and clocks, and unlinked one by one or all", (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "a", "b", "c");
  sandbox.done("link", deck, "--slide", 2, "--shape", "Clock", "--clock", "hh:nn:ss");
  const values = [
    ["p1 Item", "001", "Value", 1],
    ["p2 Item", "001", "Value", 2],
    ["p3 Item", "001", "Value", 3],
  ];
  assert.deepEqual(links(sandbox, deck), [values, [["Clock", "hh:nn:ss"]], []]);

  sandbox.done("unlink", deck, "--slide", 1, "--shape", "p2 Item");
  assert.deepEqual(links(sandbox, deck), [[values[0], values[2]], [["Clock", "hh:nn:ss"]], []]);
  assert.match(
    sandbox.run("unlink", deck, "--slide", 1, "--shape", "p2 Item").error,
    /'p2 Item'.*not linked/,
  );

  sandbox.done("unlink", deck, "--all");
  assert.deepEqual(links(sandbox, deck), [[], [], []]);
  assert.match(sandbox.done("info", deck), /not linked/);
});

test("a link is changed by linking anew, also from a value to a clock", (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "a", "b", "c");
  sandbox.done(
    "link",
    deck,
    "--slide",
    1,
    "--shape",
    "p1 Item",
    "--connection",
    "001",
    "--column",
    "Value",
    "--row",
    3,
  );
  sandbox.done("link", deck, "--slide", 1, "--shape", "p2 Item", "--clock", "yyyy");
  assert.deepEqual(links(sandbox, deck)[0].slice(0, 2), [
    ["p1 Item", "001", "Value", 3],
    ["p2 Item", "yyyy"],
  ]);
  sandbox.done("fill", deck, "-o", sandbox.path("filled.pptx"));
  assert.equal(textInFile(sandbox.path("filled.pptx"), 1, "p1 Item"), "c");
  assert.match(textInFile(sandbox.path("filled.pptx"), 1, "p2 Item"), /^20\d\d$/);
});

test("properties of slides are shown and changed", (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "a");
  const properties = (slide) => JSON.parse(sandbox.done("slide", deck, slide, "--json"));
  sandbox.done("slide", deck, 2, "--hide-when-no-data", "on", "--refresh-linked-objects", "on");
  sandbox.done("slide", deck, 2, "--refresh-linked-objects", "off");
  assert.deepEqual(properties(1), {
    slide: 1,
    hideWhenNoData: false,
    refreshLinkedObjects: false,
    scroll: [],
  });
  assert.deepEqual(properties(2), {
    slide: 2,
    hideWhenNoData: true,
    refreshLinkedObjects: false,
    scroll: [],
  });
});

test("the display type decides what linked shapes show their author", (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "live");
  const filled = sandbox.path("filled.pptx");
  const cases = [
    ["1", "live"],
    ["Connection", "Values"],
    ["3", "Value"],
    ["4", "1"],
    ["column - index", "Value 1"],
    ["6", "Values Value"],
    ["Nothing", " "],
  ];
  for (const [code, text] of cases) {
    sandbox.done("display", deck, code);
    sandbox.done("fill", deck, "-o", filled);
    assert.equal(textInFile(filled, 1, "p1 Item"), text, code);
  }
  sandbox.done("display", deck, 1);
  sandbox.done("fill", deck, "-o", filled);
  assert.equal(textInFile(filled, 1, "p3 Item"), "[Row not available in current dataset]");
});

test("names of shapes may hold quotes and markup", (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "a");
  const name = `"><script>alert('1')</script> & co`;
  renameShape(deck, 1, "p4 Item", name);
  sandbox.done(
    "link",
    deck,
    "--slide",
    1,
    "--shape",
    name,
    "--connection",
    "001",
    "--column",
    "Value",
    "--row",
    1,
  );
  assert.deepEqual(links(sandbox, deck)[0].at(-1), [name, "001", "Value", 1]);
  const wrong = sandbox.run("link", deck, "--slide", 1, "--shape", `<b>"no'`, "--clock", "hh");
  assert.equal(wrong.code, 1);
  assert.ok(wrong.error.includes(`no shape named '<b>"no''`), wrong.error);
  assert.ok(wrong.error.includes(name), "the shapes there are, are named");
  sandbox.done("unlink", deck, "--slide", 1, "--shape", name);
});

test("links that cannot be are told, and the deck stays as it was", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "a");
  renameShape(deck, 2, "p8 Item", "p9 Item");
  const before = readFileSync(deck);
  const value = ["--connection", "001", "--column", "Value", "--row", 1];
  const first = ["--slide", 1, "--shape", "p1 Item"];
  const cases = [
    [["link", deck, "--slide", 4, "--shape", "p1 Item", ...value], 1, /no slide 4; the deck has 3/],
    [["link", deck, "--slide", 0, "--shape", "p1 Item", ...value], 1, /no slide 0/],
    [["link", deck, "--slide", "two", "--shape", "p1 Item", ...value], 2, /--slide/],
    [
      ["link", deck, "--slide", 1, "--shape", "Nix", ...value],
      1,
      /slide 1 has no shape named 'Nix'.*p1 Item/,
    ],
    [["link", deck, "--slide", 2, "--shape", "p9 Item", ...value], 1, /several shapes named 'p9 Item'/],
    [
      ["link", deck, ...first, "--connection", "009", "--column", "Value", "--row", 1],
      1,
      /no connection 009/,
    ],
    [
      ["link", deck, ...first, "--connection", "001", "--column", "Preis", "--row", 1],
      1,
      /no column 'Preis'.*Value/,
    ],
    [["link", deck, ...first, "--connection", "001", "--column", "Value", "--row", 0], 2, /--row/],
    [["link", deck, ...first, "--connection", "001", "--column", "Value", "--row", "nan"], 2, /--row/],
    [["link", deck, ...first, "--connection", "001", "--column", "Value", "--row", 1.5], 2, /--row/],
    [["link", deck, ...first], 2, /--clock/],
    [["link", deck, ...first, "--clock", "hh", ...value], 2, /--clock/],
    [["link", deck, ...first, "--clock", ""], 2, /--clock/],
    [
      ["link", sandbox.sample("plant"), "--slide", 2, "--shape", "Site", "--clock", "hh"],
      1,
      /'Site'.*no text/,
    ],
    [["unlink", deck], 2, /--all/],
    [["unlink", deck, "--all", "--slide", 1], 2, /--all/],
    [["unlink", deck, "--slide", 9, "--shape", "p1 Item"], 1, /no slide 9/],
    [["unlink", deck, "--slide", 1, "--shape", "Nix"], 1, /no shape named 'Nix'/],
    [["slide", deck, 9], 1, /no slide 9/],
    [["slide", deck, 1, "--hide-when-no-data", "perhaps"], 2, /perhaps/],
    [["display", deck, 8], 2, /'8'/],
    [["display", deck, "Values"], 2, /'Values'/],
    [["show", deck, "--slide", 9, "--port", 0], 1, /no slide 9/],
    [["show", deck, "--port", 70000], 2, /--port/],
    [["show", deck, "--port", 0, "--bind", "nonsense"], 1, /nonsense/],
    [
      ["show", deck, "--port", 0, "--token-file", "nowhere"],
      1,
      /nowhere: the token file cannot be read: No such/,
    ],
    [["juggle", deck], 2, /juggle/],
    [[], 2, /subcommand/],
  ];
  for (const [line, code, text] of cases) {
    await t.test(line.join(" ").replace(deck, "DECK"), () => {
      writeFileSync(deck, before);
      const result = sandbox.run(...line);
      assert.match(result.error, text);
      assert.match(result.error, /^lumenfold: /);
      assert.equal(result.code, code);
      assert.ok(readFileSync(deck).equals(before));
    });
  }
  assert.match(sandbox.done("--help"), /connection[^]*unlink/);
  assert.match(sandbox.done("--version"), /^\d+\.\d+\.\d+\n$/);
});

test("tags of other programs stay where they are", (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("shop");
  editPart(deck, "ppt/tags/tag1.xml", (xml) =>
    xml.replace("</p:tagLst>", '<p:tag name="OTHERS" val="kept &amp; safe"/></p:tagLst>'),
  );
  sandbox.done("unlink", deck, "--all");
  const tags = readPart(deck, "ppt/tags/tag1.xml");
  assert.match(tags, /name="OTHERS" val="kept &amp; safe"/);
  assert.doesNotMatch(tags, /CORVANE (VERSION|CONNECTION)/);
});
