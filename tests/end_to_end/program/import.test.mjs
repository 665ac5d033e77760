// Old presentations become decks, by the verb and at the desk. LibreOffice converts them.

import assert from "node:assert/strict";
import { copyFileSync, existsSync, mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { test } from "node:test";
import { Sandbox } from "../support/sandbox.mjs";

const old = new URL("../../ppt/data/44296.ppt", import.meta.url).pathname;

test("the verb import makes a deck of an old presentation, once", (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.path("new.pptx");
  assert.match(sandbox.done("import", old, "-o", deck), /new\.pptx: written with 2 tags, on 0 shapes among others\n$/);
  assert.match(sandbox.done("shapes", deck), /Title 1 .*PATTERNS IN ENTERPRISE DEVELOPMENT/);

  const again = sandbox.run("import", old, "-o", deck);
  assert.equal(again.code, 1);
  assert.match(again.error, /new\.pptx' is there already\./);
});

test("what has no place in the new deck is listed, and the exit code says so", (t) => {
  const sandbox = new Sandbox(t);
  // A small presentation whose shapes bear tags, converted into a deck without such shapes.
  const seed = new URL("../../../fuzz/ppt/seeds/whole_file", import.meta.url).pathname;
  writeFileSync(sandbox.path("old.ppt"), readFileSync(seed).subarray(1));
  sandbox.done("import", old, "-o", sandbox.path("made.pptx"));
  mkdirSync(sandbox.path("office"));
  writeFileSync(
    sandbox.path("office/soffice"),
    `#!/bin/sh\nwhile [ $# -gt 2 ]; do shift; done\nmkdir -p "$1" && cp '${sandbox.path("made.pptx")}' "$1/deck.pptx"\n`,
    { mode: 0o755 },
  );
  const environment = { PATH: `${sandbox.path("office")}:${process.env.PATH}` };
  const { code, out, error } = sandbox.runWith({ environment }, "import", sandbox.path("old.ppt"), "-o", sandbox.path("new.pptx"));
  assert.equal(code, 1, error);
  assert.match(out, /written with 2 tags, .*; without those that are listed\n/);
  assert.match(error, /^Lost: Slide 1, 'Object 3' \(Title\): CORVANE VERSION = '1'\nLost: Slide 1, 'Shape 5': CORVANE VERSION = '1'\n/);
  assert.match(error, /new\.pptx: written without the tags of 2 shapes \(see above\)\.\n$/);
  assert.ok(existsSync(sandbox.path("new.pptx")));
});

test("who takes an old presentation for a deck is told what to do", (t) => {
  const sandbox = new Sandbox(t);
  const ppt = sandbox.path("old.ppt");
  copyFileSync(old, ppt);
  for (const line of [["edit", ppt, "--port", 0], ["show", ppt, "--port", 0], ["info", ppt]]) {
    const { code, error } = sandbox.run(...line);
    assert.equal(code, 1);
    assert.match(error, /binary format of PowerPoint 97 to 2003\. Make a deck of it with 'lumenfold import'\./);
  }
  const damaged = sandbox.path("damaged.ppt");
  writeFileSync(damaged, readFileSync(old).subarray(0, 20000));
  const { code, error } = sandbox.run("import", damaged, "-o", sandbox.path("new.pptx"));
  assert.equal(code, 1);
  assert.match(error, /damaged\.ppt' cannot be imported: it is damaged or not complete \(.*\)\.\n$/);
  assert.ok(!existsSync(sandbox.path("new.pptx")));
  assert.match(sandbox.run("import", sandbox.sample("shop"), "-o", sandbox.path("new.pptx")).error, /is not in the binary format/);
});

test("an old presentation that is uploaded at the desk becomes the deck", async (t) => {
  const sandbox = new Sandbox(t);
  const desk = await sandbox.edit(sandbox.sample("shop"));
  const window = await desk.openWindow();
  assert.equal((await desk.post("deck", readFileSync(old))).status, 200);
  await window.until("the job", ({ jobs }) => jobs.some(({ caption }) => caption === "Importing the old presentation"));
  await window.until("its end", ({ notices }) => notices.some(({ text }) => text.startsWith("The old presentation was imported, with 2 tags")));
  await window.until("its slide", ({ slides }) => slides.length === 1);
  assert.match(sandbox.done("shapes", sandbox.path("shop/shop.pptx")), /PATTERNS IN ENTERPRISE DEVELOPMENT/);

  assert.equal((await desk.post("deck", readFileSync(old).subarray(0, 20000))).status, 200);
  await window.until("the reason", ({ notices }) => notices.some(({ text }) => /^The old presentation cannot be imported: it is damaged/.test(text)));
});
