// The look over a deck before it goes on screens.

import assert from "node:assert/strict";
import { test } from "node:test";
import { editPart } from "../support/deck.mjs";
import { valueDeck } from "../support/value_deck.mjs";

// Which ones there are is the machine's affair.
const typeface = /^different 0 : The typeface '[^']+' is not installed here; .+ stands in for it\.$/;

const findings = (sandbox, deck) => {
  const { out } = sandbox.run("check", deck, "--json");
  return JSON.parse(out)
    .findings.map(({ gravity, slide, shape, text }) => `${gravity} ${slide} ${shape}: ${text}`)
    .filter((each) => !typeface.test(each));
};

test("what is broken in a deck is told, with its place", (t) => {
  const { sandbox, deck } = valueDeck(t, "eggs", "milk", "tea");
  assert.equal(sandbox.run("check", deck).code, 0);
  const still = /^note 0 : With --kiosk: The show loops, but no slide goes on by itself/;
  const [first, ...others] = findings(sandbox, deck);
  assert.match(first, still);
  assert.deepEqual(others, []);

  sandbox.write("shop/values.txt", [["Value"], ["eggs ".repeat(200)], ["milk"]]);
  sandbox.done("link", deck, "--slide", 1, "--shape", "p4 Item", "--clock", "hh:nn");
  editPart(deck, "ppt/slides/slide2.xml", (xml) => xml.replace("<p:sld ", '<p:sld show="0" '));
  sandbox.done("connection", deck, "add", "--type", "text", "--description", "Gone", "--file", "gone.txt");
  sandbox.done("link", deck, "--slide", 1, "--shape", "p5 Item", "--connection", "002", "--column", "A", "--row", 1);
  const warp = '<a:prstTxWarp prst="textWave1"><a:avLst/></a:prstTxWarp>';
  editPart(deck, "ppt/slides/slide3.xml", (xml) =>
    xml.replace(/(<a:bodyPr[^>]*?)(\/>|>)/, (_, tag, end) => `${tag}>${warp}${end === ">" ? "" : "</a:bodyPr>"}`),
  );
  sandbox.done("slide", deck, 3, "--scroll", 77, "--step", 1, "--time", 1000);
  const found = findings(sandbox, deck);
  assert.equal(sandbox.run("check", deck).code, 1);
  const patterns = [
    /^broken 0 : Connection 002 \(Gone\): .*gone\.txt' cannot be opened/,
    still,
    /^note 1 : Connection 001 \(Values\) has 2 rows today; what shows row 3 of it is blank\.$/,
    /^broken 1 p1 Item: Today's text is larger than the shape, by \d+ px/,
    /^note 2 : The slide is hidden in the deck\.$/,
    /^broken 3 : Scroll entry 77 moves nothing/,
    /^different 3 [^:]+: Nearly drawn: text bent as WordArt/,
  ];
  assert.deepEqual(
    found.map((each) => patterns.findIndex((pattern) => pattern.test(each))),
    patterns.map((_, i) => i),
    found.join("\n"),
  );
  assert.deepEqual(sandbox.errorLog(), []);
});

test("a language that is not known is told", (t) => {
  const { sandbox, deck } = valueDeck(t, "eggs");
  const told = (language) => {
    sandbox.environment.LC_ALL = language;
    return findings(sandbox, deck).filter((each) => /English/.test(each));
  };
  assert.deepEqual(told("de_DE.UTF-8"), []);
  assert.match(told("xx_XX").join(), /^different 0 : Numbers and days are shown as in English: the language 'xx_XX'/);
});
