// Decks that are valid by PowerPoint's own rules stay so, whatever is linked in them; off-line copies as well, which
// look as a show does.

import assert from "node:assert/strict";
import { test } from "node:test";
import { assertFree, digest } from "../support/deck.mjs";
import { drawDeck } from "../support/drawn_deck.mjs";
import { linkWhole } from "../support/linked_whole.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { added, findings } from "../support/valid.mjs";
import { writtenAnew } from "../support/written_anew.mjs";

test("nothing is found in the samples and their workbook", async (t) => {
  const sandbox = new Sandbox(t);
  for (const name of ["departures", "plant", "shop"]) {
    assert.deepEqual(await findings(sandbox, sandbox.sample(name)), [], name);
  }
  assert.deepEqual(await findings(sandbox, sandbox.path("shop/prices.xlsx")), []);
});

// How a deck is made; how many texts, pictures and charts are linked in it.
const decks = {
  "a sample with charts": {
    make: (sandbox) => sandbox.sample("plant"),
    links: { text: 135, picture: 1, chart: 2 },
  },
  "a sample with a picture": {
    make: (sandbox) => sandbox.sample("shop"),
    links: { text: 55, picture: 1, chart: 0 },
  },
  "a deck with charts of every kind": {
    make: (sandbox) => drawDeck(sandbox, sandbox.path("shop/pictures/flat-white.png")),
    links: { text: 3, picture: 2, chart: 8 },
  },
  "a deck that LibreOffice wrote": {
    make: async (sandbox) => writtenAnew(sandbox, await drawDeck(sandbox, sandbox.path("shop/pictures/flat-white.png"))),
    links: { text: 5, picture: 1, chart: 8 },
  },
};

// What is drawn of each slide; clocks stand at no time.
const drawings = (sandbox, deck) => sandbox.run("snapshot", deck, "--scene").out.replace(/\d\d:\d\d:\d\d/g, "TIME");

for (const [name, { make, links }] of Object.entries(decks)) {
  test(`linking, filling, copying and unlinking add no finding: ${name}`, async (t) => {
    const sandbox = new Sandbox(t);
    sandbox.sample("shop");
    const deck = await make(sandbox);
    const before = await findings(sandbox, deck);
    const unchanged = async (what, file) => assert.deepEqual(added(before, await findings(sandbox, file)), [], what);
    sandbox.done("unlink", deck, "--all");
    assert.deepEqual(linkWhole(sandbox, deck), links);

    const whole = digest(deck);
    const copy = sandbox.path("copy.pptx");
    sandbox.run("offline", deck, "-o", copy);
    assert.equal(digest(deck), whole);
    assert.deepEqual(drawings(sandbox, copy), drawings(sandbox, deck));
    await unchanged("copied", copy);
    // The generator names its own files in alternative texts, but not those of the data.
    assertFree(copy, sandbox.path("data"));
    assert.deepEqual(JSON.parse(sandbox.done("info", copy, "--json")).connections ?? [], []);

    sandbox.done("slide", deck, 1, "--hide-when-no-data", "on");
    sandbox.done("slide", deck, 1, "--scroll", 1, "--step", 1, "--time", 5000);
    await unchanged("linked", deck);

    sandbox.done("fill", deck, "-o", sandbox.path("filled.pptx"));
    await unchanged("filled", sandbox.path("filled.pptx"));

    sandbox.done("unlink", deck, "--all");
    await unchanged("unlinked", deck);
  });
}
