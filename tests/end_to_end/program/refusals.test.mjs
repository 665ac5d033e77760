// Files that are no decks, and where the program writes about itself.

import assert from "node:assert/strict";
import { chmodSync, copyFileSync, existsSync, mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { test } from "node:test";
import { editPart } from "../support/deck.mjs";
import { Sandbox, asNobody } from "../support/sandbox.mjs";
import { sampleDeck } from "../support/value_deck.mjs";

test("every verb says what is wrong with a file that is no deck", (t) => {
  const { sandbox, deck } = sampleDeck(t, "shop");
  const [missing, cut, broken] = ["missing.pptx", "cut.pptx", "broken.pptx"].map((name) => sandbox.path(name));
  writeFileSync(cut, readFileSync(deck).subarray(0, 5000));
  copyFileSync(deck, broken);
  editPart(broken, "ppt/slides/slide1.xml", (xml) => xml.slice(0, xml.length / 2));
  const verbs = (file) => [
    ["info", file],
    ["display", file, 1],
    ["fill", file, "-o", sandbox.path("filled.pptx")],
    ["connection", file, "add", "--type", "text", "--description", "x", "--file", "x"],
  ];
  for (const [text, line] of [
    [/missing\.pptx' cannot be read: No such file/, ["show", missing, "--port", 0]],
    [/cut\.pptx' cannot be read: the file is damaged or not complete/, ["show", cut, "--port", 0]],
    ...verbs(missing).map((line) => [/missing\.pptx' cannot be read: No such file/, line]),
    // A show goes on with what can be read of it.
    ...verbs(broken).map((line) => [/broken\.pptx'.*slide1\.xml/, line]),
  ]) {
    const { code, out, error } = sandbox.run(...line);
    const told = line.join(" ");
    assert.equal(code, 1, `${told}: ${out}${error}`);
    assert.match(error, text, told);
    assert.equal(error.split("\n").length, 2, `one line: ${told}: ${error}`);
    assert.equal(out, "", told);
  }
  assert.ok(!existsSync(sandbox.path("filled.pptx")));
});

test("an answer that cannot be written is a failure", (t) => {
  const { sandbox, deck } = sampleDeck(t, "shop");
  const before = ["bash", "-c", 'exec "$@" > /dev/full', "bash"];
  const test = ["connection", deck, "test", "001"];
  for (const line of [["info", deck], ["info", deck, "--json"], test, ["--version"]]) {
    const { code, error } = sandbox.runWith({ before }, ...line);
    assert.equal(code, 1, line.join(" "));
    assert.match(error, /No space left on device/, line.join(" "));
  }
});

test("settings come from the user's file, the environment goes before it, and Debug writes the debug log", (t) => {
  const sandbox = new Sandbox(t);
  const fill = ["fill", sandbox.sample("departures"), "-o", sandbox.path("filled.pptx")];
  const log = sandbox.done("log", "--debug", "--path").trim();
  assert.equal(log, sandbox.path("program/lumenfold.dbg"));
  mkdirSync(sandbox.path("config/Corvane Lumenfold 2000"));
  sandbox.write("config/Corvane Lumenfold 2000/settings.ini", "[Info]\nDebug = True\n");
  sandbox.runWith({ environment: { LUMENFOLD_INFO_DEBUG: "False" } }, ...fill);
  assert.ok(!existsSync(log));
  sandbox.done(...fill);
  const lines = readFileSync(log, "utf8").split("\r\n");
  assert.match(lines[0], /^\S+ \S+( [AP]M)?\.\d{3} Event +OnConnection$/);
  assert.ok(lines.some((line) => /Information +Open text connection .*departures\/weather\.txt$/.test(line)));
  assert.ok(lines.some((line) => /Information +Program shut down\.$/.test(line)));
  assert.ok(sandbox.done("log", "--debug").includes("Open text connection"));
  const environment = { LUMENFOLD_INFO_STALEDATA: "maybe" };
  assert.match(sandbox.runWith({ environment }, "show", fill[1]).error, /setting StaleData/);
});

test("an installed program logs into the user's own folder", (t) => {
  const sandbox = new Sandbox(t);
  chmodSync(sandbox.path("program"), 0o555);
  chmodSync(sandbox.path("state"), 0o777);
  const { out } = sandbox.runWith({ before: asNobody }, "log", "--path");
  assert.equal(out.trim(), sandbox.path("state/Corvane Lumenfold 2000/errors.txt"));
});
