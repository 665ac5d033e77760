// The verb shapes, and link for many shapes at once.

import assert from "node:assert/strict";
import { test } from "node:test";
import { digest, editPart, renameShape } from "../support/deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { bareDeck, textSource } from "../support/value_deck.mjs";

const slide1 = "ppt/slides/slide1.xml";

// The bakery's board without its links, and a source with columns of other names.
function boardAndData(sandbox) {
  const deck = sandbox.bareSample("shop");
  sandbox.write("shop/offer.txt", [["Item", "Cost"], ["Rye", "4"], ["Plum", "5"], ["Oat", "6"]]);
  sandbox.done("connection", deck, "add", ...textSource("Offer", "offer.txt"));
  return deck;
}

function shapesOf(sandbox, deck, ...args) {
  return JSON.parse(sandbox.done("shapes", deck, "--json", ...args)).slides;
}

function linksOf(sandbox, deck) {
  return shapesOf(sandbox, deck, "--slide", 1)[0]
    .shapes.filter((shape) => shape.link)
    .map(({ name, link }) => [name, link.connection, link.column, link.row]);
}

test("a slide's shapes are listed as people read them, with what can be linked", (t) => {
  const sandbox = new Sandbox(t);
  const deck = boardAndData(sandbox);
  renameShape(deck, 1, "p7 Note", "p6 Note");
  editPart(deck, slide1, (xml) =>
    xml.replace(/<p:sp>(?:(?!<\/p:sp>).)*name="Clock".*?<\/p:sp>/s, (shape) =>
      `<p:grpSp><p:nvGrpSpPr><p:cNvPr id="900" name="Corner"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr><p:grpSpPr/>${shape}</p:grpSp>`,
    ),
  );
  const [{ index, shapes }] = shapesOf(sandbox, deck, "--slide", 1);
  assert.equal(index, 1);
  const named = (name) => shapes.find((shape) => shape.name === name);
  const places = ["p1 Item", "p1 Price", "p2 Item", "p2 Price"].map((name) => shapes.indexOf(named(name)));
  assert.deepEqual(places, [...places].sort((a, b) => a - b));
  assert.ok(named("p1 Item").top < named("p2 Item").top && named("p1 Item").width > 0);
  assert.deepEqual([named("p1 Item").shows, named("p1 Item").whyNot], ["text", ""]);
  assert.match(named("p6 Note").whyNot, /shares its name with 1 other/);
  assert.match(named("Corner").whyNot, /is a group/);
  assert.match(named("Clock").whyNot, /stands in the group 'Corner'/);
  assert.match(sandbox.done("shapes", deck), /^Slide +Shape +Kind[^]*1 +Clock .*cannot be linked: stands in the group/);
  assert.match(sandbox.run("shapes", deck, "--slide", 9).error, /no slide 9; the deck has 3/);
});

test("a grid is linked by where its shapes stand, after a look at what would be", (t) => {
  const { sandbox, deck } = bareDeck(t, "departures");
  sandbox.done("connection", deck, "add", ...textSource("Departures", "departures.txt"));
  const before = digest(deck);
  const grid = (...rest) => ["link", deck, "--slide", 1, "--grid", "r2 time", "--columns", "Time,,destination", ...rest];
  assert.match(
    sandbox.done(...grid("--rows", 2, "--row", 9, "--dry-run")),
    /1 +r3 Destination +001 +Destination +10 *\n4 shapes would be linked; nothing is written\./,
  );
  const broken = sandbox.run(...grid("--rows", 20));
  assert.equal(broken.code, 1);
  assert.match(broken.error, /nothing was linked:\n +Slide 1: From 'r2 Time' downwards stand \d+ shapes of its kind in line, not 20/);
  assert.equal(digest(deck), before);

  assert.match(sandbox.done(...grid("--rows", 2, "--row", 9)), /^4 shapes linked/);
  assert.deepEqual(linksOf(sandbox, deck), [
    ["r2 Time", "001", "Time", 9],
    ["r2 Destination", "001", "Destination", 9],
    ["r3 Time", "001", "Time", 10],
    ["r3 Destination", "001", "Destination", 10],
  ]);
});

test("names and typed marks say what is linked, all of it or nothing", (t) => {
  const sandbox = new Sandbox(t);
  const deck = boardAndData(sandbox);
  assert.match(sandbox.done("link", deck, "--slide", 1, "--names"), /^7 shapes linked/);
  assert.deepEqual(linksOf(sandbox, deck)[6], ["p7 Item", "001", "Item", 7]);

  const type = (shape, text) =>
    editPart(deck, slide1, (xml) =>
      xml.replace(new RegExp(`(name="${shape}".*?<a:t(?: [^>]*)?>)[^<]*`, "s"), `$1${text}`),
    );
  type("p1 Price", "{{Cost.1}}");
  type("p2 Price", "{{001.Price.2}}");
  type("p3 Price", "from {{Cost.3}}");
  const before = digest(deck);
  const { code, error } = sandbox.run("link", deck, "--from-texts");
  assert.equal(code, 1);
  assert.match(error, /'p2 Price' is for the column 'Price', which connection 001 does not have. It has: Item, Cost/);
  assert.match(error, /'p3 Price' holds a mark that does not stand alone/);
  assert.equal(digest(deck), before);

  type("p2 Price", "{{001.Cost.2}}");
  type("p3 Price", "3");
  assert.match(sandbox.done("link", deck, "--from-texts"), /^2 shapes linked/);
  assert.deepEqual(linksOf(sandbox, deck).slice(0, 4), [
    ["p1 Item", "001", "Item", 1],
    ["p1 Price", "001", "Cost", 1],
    ["p2 Item", "001", "Item", 2],
    ["p2 Price", "001", "Cost", 2],
  ]);
  assert.match(sandbox.run("link", deck, "--from-texts").error, /no shape holds a mark such as/);
});

test("what contradicts itself or leads nowhere is refused", (t) => {
  const sandbox = new Sandbox(t);
  const deck = boardAndData(sandbox);
  const before = digest(deck);
  const cases = [
    [["--slide", 1], 2, /--shape/],
    [["--slide", 1, "--names", "--shape", "Clock"], 2, /--names/],
    [["--slide", 1, "--grid", "p1 Item", "--rows", 2], 2, /--columns/],
    [["--slide", 1, "--grid", "p1 Item", "--columns", "Item", "--rows", 0], 2, /--rows/],
    [["--grid", "p1 Item", "--columns", "Item", "--rows", 2], 2, /--slide/],
    [["--slide", 1, "--shape", "Clock", "--clock", "hh", "--dry-run"], 2, /--dry-run/],
    [["--slide", 1, "--grid", "Nix", "--columns", "Item", "--rows", 2], 1, /no shape named 'Nix'/],
    [["--slide", 1, "--grid", "p1 Item", "--columns", "Price", "--rows", 2], 1, /no column 'Price'. It has: Item, Cost/],
    [["--names", "--connection", "007"], 1, /no connection 007/],
    [["--names", "--slide", 9], 1, /no slide 9/],
    [["--names", "--slide", 3], 1, /no shape has a name such as 'Item 1'/],
  ];
  for (const [line, code, text] of cases) {
    const result = sandbox.run("link", deck, ...line);
    assert.match(result.error, text, line.join(" "));
    assert.equal(result.code, code, line.join(" "));
  }
  assert.equal(digest(deck), before);
});
