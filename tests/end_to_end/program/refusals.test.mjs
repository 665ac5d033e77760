// Files that are no decks, and where the program writes about itself.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { chmodSync, existsSync, mkdirSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { test } from "node:test";
import { editPart } from "../support/deck.mjs";
import { Sandbox, asNobody } from "../support/sandbox.mjs";

test("every verb says what is wrong with a file that is no deck", (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("shop");
  const bytes = readFileSync(deck);
  const bad = (name, change) => {
    const file = sandbox.path(name);
    change(file);
    return file;
  };
  const damaged = Buffer.from(bytes);
  damaged.fill(0x55, 1000, bytes.length >> 1);
  const files = [
    [sandbox.path("missing.pptx"), /missing\.pptx' cannot be read: No such file/],
    [sandbox.folder, /cannot be read: it is a folder/],
    [
      bad("text.pptx", (file) => writeFileSync(file, "These are no slides.\n")),
      /text\.pptx' cannot be read: it is no ZIP/,
    ],
    [bad("empty.pptx", (file) => writeFileSync(file, "")), /empty\.pptx' cannot be read: the file is empty/],
    [
      bad("cut.pptx", (file) => writeFileSync(file, bytes.subarray(0, bytes.length / 2))),
      /cut\.pptx' cannot be read: the file is damaged or not complete/,
    ],
    [bad("damaged.pptx", (file) => writeFileSync(file, damaged)), /damaged\.pptx' cannot be read/],
    [
      bad("other.pptx", (file) => execFileSync("zip", ["-q", "-j", file, sandbox.path("text.pptx")])),
      /other\.pptx' cannot be read.*Content_Types/,
    ],
    [
      bad("broken.pptx", (file) => {
        writeFileSync(file, bytes);
        editPart(file, "ppt/slides/slide1.xml", (xml) => xml.slice(0, xml.length / 2));
      }),
      /broken\.pptx'.*slide1\.xml/,
      "shown", // what can be read of it
    ],
    [
      bad("pipe.pptx", (file) => execFileSync("mkfifo", [file])),
      /pipe\.pptx' cannot be read: it is no regular file/,
    ],
  ];
  const verbs = (file) => [
    ["info", file],
    ["show", file, "--port", 0],
    ["display", file, 1],
    ["fill", file, "-o", sandbox.path("filled.pptx")],
    ["connection", file, "add", "--type", "text", "--description", "x", "--file", "x"],
  ];
  for (const [file, text, isShown] of files) {
    for (const line of verbs(file).filter(([verb]) => verb !== "show" || !isShown)) {
      const { code, out, error } = sandbox.run(...line);
      const told = line.join(" ");
      assert.equal(code, 1, `${told}: ${out}${error}`);
      assert.match(error, text, told);
      assert.equal(error.split("\n").length, 2, `one line: ${told}: ${error}`);
      assert.equal(out, "", told);
    }
  }
  assert.ok(!existsSync(sandbox.path("filled.pptx")));
});

test("a deck whose data are missing is not filled, and says so", (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("departures");
  rmSync(sandbox.path("departures/weather.txt"));
  const { code, error } = sandbox.run("fill", deck, "-o", sandbox.path("filled.pptx"));
  assert.equal(code, 1);
  assert.match(error, /Weather[^]*weather\.txt' cannot be opened: there is no such file/);
  assert.ok(!existsSync(sandbox.path("filled.pptx")));
});

test("an answer that cannot be written is a failure", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("shop");
  const before = ["bash", "-c", 'exec "$@" > /dev/full', "bash"];
  for (const line of [
    ["info", deck],
    ["info", deck, "--json"],
    ["connection", deck, "list", "--json"],
    ["connection", deck, "test", "001"],
    ["--version"],
  ]) {
    await t.test(line.join(" ").replace(deck, "DECK"), () => {
      const { code, error } = sandbox.runWith({ before }, ...line);
      assert.equal(code, 1);
      assert.match(error, /No space left on device/);
    });
  }
});

test("the debug log is written when the setting Debug says so", (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("departures");
  const log = sandbox.done("log", "--debug", "--path").trim();
  assert.equal(log, sandbox.path("program/lumenfold.dbg"));
  for (const off of ["", "False", "nonsense"]) {
    sandbox.runWith(
      { environment: { LUMENFOLD_INFO_DEBUG: off } },
      "fill",
      deck,
      "-o",
      sandbox.path("filled.pptx"),
    );
    assert.ok(!existsSync(log), `Debug=${off}`);
  }
  sandbox.runWith(
    { environment: { LUMENFOLD_INFO_DEBUG: "True" } },
    "fill",
    deck,
    "-o",
    sandbox.path("filled.pptx"),
  );
  const lines = readFileSync(log, "utf8").split("\r\n");
  assert.match(lines[0], /^\S+ \S+( [AP]M)?\.\d{3} Event +OnConnection$/);
  assert.ok(lines.some((line) => /Information +Open text connection .*departures\/weather\.txt$/.test(line)));
  assert.ok(lines.some((line) => /Information +Program shut down\.$/.test(line)));
  assert.ok(sandbox.done("log", "--debug").includes("Open text connection"));
});

test("settings come from the user's file, and the environment goes before it", (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("shop");
  const log = sandbox.path("program/lumenfold.dbg");
  mkdirSync(sandbox.path("config/Corvane Lumenfold 2000"));
  sandbox.write("config/Corvane Lumenfold 2000/settings.ini", "[Info]\nDebug = True\n");
  sandbox.runWith({ environment: { LUMENFOLD_INFO_DEBUG: "False" } }, "display", deck, 1);
  assert.ok(!existsSync(log));
  sandbox.done("display", deck, 1);
  assert.ok(existsSync(log));
});

test("an installed program logs into the user's own folder", (t) => {
  const sandbox = new Sandbox(t);
  chmodSync(sandbox.path("program"), 0o555);
  chmodSync(sandbox.path("state"), 0o777);
  const { out } = sandbox.runWith({ before: asNobody }, "log", "--path");
  assert.equal(out.trim(), sandbox.path("state/Corvane Lumenfold 2000/errors.txt"));
});
