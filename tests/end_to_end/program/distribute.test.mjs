// A deck on its way to players: what lies in the distribution folder afterwards, and what does not go.

import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import { createPublicKey, verify } from "node:crypto";
import { chmodSync, copyFileSync, mkdirSync, readFileSync, readdirSync, statSync, truncateSync, writeFileSync } from "node:fs";
import { test } from "node:test";
import { allXml, digest } from "../support/deck.mjs";
import { asNobody } from "../support/sandbox.mjs";
import { SilentServer } from "../support/silent_server.mjs";
import { valueDeck } from "../support/value_deck.mjs";
import { until } from "../support/wait.mjs";

function prepared(t) {
  const { sandbox, deck } = valueDeck(t, "live-value");
  mkdirSync(sandbox.path("out"));
  const out = (name) => sandbox.path(`out/${name}`);
  const note = (name = "shop") => JSON.parse(readFileSync(out(`${name}.sent.json`)));
  const names = () => readdirSync(sandbox.path("out")).filter((name) => !name.startsWith(".")).sort();
  const send = (...args) => sandbox.done("distribute", deck, "--folder", sandbox.path("out"), ...args);
  return { sandbox, deck, out, note, names, send };
}

test("a deck is sent live: its list in it, its paths absolute, no value in it", (t) => {
  const { sandbox, deck, out, note, names, send } = prepared(t);
  const said = send("--computer", "hall-1", "--computer", "hall-2", "--stop", "2030-01-01 20:00", "--days", "mon-fri");
  assert.match(said, /For hall-1, hall-2 until 1\/1\/2030 8:00:00 PM on mon-fri/);
  assert.deepEqual(names(), ["index.json", "shop.pptx", "shop.sent.json"]);
  assert.equal(note().way, "live");
  assert.deepEqual(note().files, [
    { path: "shop.pptx", size: statSync(out("shop.pptx")).size, sha256: digest(out("shop.pptx")) },
  ]);
  assert.deepEqual(JSON.parse(readFileSync(out("index.json"))).notes, [note()]);
  const sent = allXml(out("shop.pptx"));
  assert.ok(sent.includes(sandbox.path("shop/values.txt")));
  assert.ok(!sent.includes("live-value"));
  for (const file of [deck, out("shop.pptx")]) {
    assert.match(allXml(file), /CORVANE DISTRIBUTION COMPUTER" val="hall-1&#[x0]*9;hall-2&#[x0]*9;"/i);
    assert.match(allXml(file), /CORVANE DISTRIBUTION DAYS" val="mon-fri"/);
  }
  // The deck's own paths stay, and it knows for whom it is the next time.
  assert.ok(!allXml(deck).includes(sandbox.path("shop/values.txt")));
  const before = readFileSync(deck);
  assert.match(send(), /For hall-1, hall-2 until/);
  assert.deepEqual(readFileSync(deck), before);
  assert.match(send("--every-computer", "--stop", "none", "--days", ""), /For every computer at any time/);
});

test("a deck goes with its files and shows the same elsewhere, or frozen: with its values and without sources", (t) => {
  const { sandbox, out, note, send } = prepared(t);
  send("--way", "files");
  const { folder, files } = note();
  assert.deepEqual(files.map((file) => file.path), ["shop.pptx", "values.txt"]);
  for (const { path, sha256: sum } of files) assert.equal(digest(out(`${folder}/${path}`)), sum);
  assert.ok(!allXml(out(`${folder}/shop.pptx`)).includes(sandbox.folder));
  const copy = out(`${folder}/shop.pptx`);
  sandbox.done("fill", copy, "-o", sandbox.path("filled.pptx"));
  assert.ok(allXml(sandbox.path("filled.pptx")).includes("live-value"));
  // As it went last.
  send();
  assert.equal(note().way, "files");

  send("--way", "frozen", "--hours", "06:00-22:00");
  assert.equal(note().way, "frozen");
  const sent = allXml(out("shop.pptx"));
  assert.ok(sent.includes("live-value"));
  assert.ok(!sent.includes("CORVANE CONNECTION"));
  assert.ok(!sent.includes(sandbox.folder));
  assert.match(sent, /CORVANE DISTRIBUTION HOURS" val="06:00-22:00"/);
});

test("a deck is signed, so that other programs can check it, and taken back", (t) => {
  const { sandbox, note, names, send } = prepared(t);
  const key = sandbox.path("sender.key");
  assert.match(sandbox.done("key", "new", key), /^Key [0-9a-f]{16}\n/);
  assert.equal(statSync(key).mode & 0o777, 0o600);
  assert.notEqual(sandbox.run("key", "new", key).code, 0);
  const shown = sandbox.done("key", "show", `${key}.pub`);
  assert.equal(sandbox.done("key", "show", key), shown);
  const check = (note) => {
    const lines = [
      "lumenfold distribution 1", `name ${note.name}`, `serial ${note.serial}`, `way ${note.way}`, `folder ${note.folder}`,
      `withdrawn ${note.withdrawn ? 1 : 0}`, ...note.files.map((each) => `file ${each.sha256} ${each.size} ${each.path}`),
    ];
    const text = Buffer.from(lines.map((line) => line + "\n").join(""));
    assert.ok(verify(null, text, createPublicKey(readFileSync(`${key}.pub`)), Buffer.from(note.signature, "base64")));
  };
  // By the settings.
  writeFileSync(sandbox.path("program/Lumenfold.INI"), "[Distribution]\r\nFolder = ../out\r\nKey = ../sender.key\r\n");
  sandbox.done("distribute", sandbox.path("shop/shop.pptx"));
  check(note());
  assert.equal(note().key, shown.slice(4, 20));
  const { serial } = note();
  sandbox.done("distribute", "shop.pptx", "--withdraw");
  check(note());
  assert.ok(note().withdrawn && note().serial > serial);
  assert.deepEqual(names(), ["index.json", "shop.sent.json"]);
  send();
});

test("what cannot be sent leaves the folder as it was", (t) => {
  const { sandbox, deck, names } = prepared(t);
  const refused = (pattern, ...args) => {
    const { code, error } = sandbox.run("distribute", deck, ...args);
    assert.notEqual(code, 0, error);
    assert.match(error, pattern);
  };
  const to = ["--folder", sandbox.path("out")];
  refused(/Distribution folder not specified in Lumenfold\.INI file\./);
  refused(/nowhere' is not there/, "--folder", sandbox.path("nowhere"));
  refused(/stop/i, ...to, "--start", "2030-01-02", "--stop", "2030-01-01");
  refused(/'someday' is no date/, ...to, "--start", "someday");
  refused(/days/i, ...to, "--days", "mon-often");
  refused(/hours/i, ...to, "--hours", "25:00-26:00");
  refused(/no private key/, ...to, "--key", deck);
  refused(/itself lies in the distribution folder/, "--folder", sandbox.path("shop"));
  refused(/holds no deck 'shop'/, ...to, "--withdraw");
  assert.deepEqual(names(), []);
});

test("a folder that takes no more keeps what it had", (t) => {
  const { sandbox, deck, out, send } = prepared(t);
  send();
  const everything = () => readdirSync(sandbox.path("out"), { recursive: true }).sort();
  const before = everything();
  const note = readFileSync(out("shop.sent.json"));
  const refused = (pattern, command, ...args) => {
    const { code, error } = sandbox.runWith({ before: command, environment: { TMPDIR: "/tmp" } }, "distribute", deck, "--folder", sandbox.path("out"), ...args);
    assert.equal(code, 1, error);
    assert.match(error, pattern);
    assert.deepEqual(everything(), before);
    assert.deepEqual(readFileSync(out("shop.sent.json")), note);
  };
  chmodSync(sandbox.path("out"), 0o555);
  for (const way of ["live", "files"]) refused(/out.*: Permission denied\./, asNobody, "--way", way);
  chmodSync(sandbox.path("out"), 0o755);
  // The deck has room, what it reads has none.
  truncateSync(sandbox.path("shop/values.txt"), 8 << 20);
  refused(/values\.txt.*: File too large/, ["prlimit", `--fsize=${4 << 20}`], "--way", "files");
});

test("senders at the same time wait for each other", async (t) => {
  const { sandbox, deck, out, note } = prepared(t);
  copyFileSync(deck, sandbox.path("shop/other.pptx"));
  const decks = [deck, deck, deck, sandbox.path("shop/other.pptx"), sandbox.path("shop/other.pptx")];
  const senders = decks.map((each, i) => {
    const args = ["distribute", each, "--folder", sandbox.path("out"), "--way", i % 2 ? "files" : "live"];
    const sender = spawn(sandbox.program, args, { env: sandbox.environment, stdio: ["ignore", "ignore", "pipe"] });
    let error = "";
    sender.stderr.setEncoding("utf8").on("data", (text) => (error += text));
    return new Promise((resolve) => sender.on("close", (code) => resolve({ code, error })));
  });
  for (const { code, error } of await Promise.all(senders)) assert.equal(code, 0, error);
  const notes = ["other", "shop"].map(note);
  assert.deepEqual(JSON.parse(readFileSync(out("index.json"))).notes, notes);
  for (const { folder, files } of notes) {
    for (const { path, sha256: sum } of files) assert.equal(digest(out(`${folder}/${path}`)), sum);
  }
});

test("while a deck is being frozen it cannot be saved, and no live value comes into its file", async (t) => {
  const { sandbox, deck, note } = prepared(t);
  writeFileSync(sandbox.path("program/Lumenfold.INI"), "[Distribution]\r\nFolder = ../out\r\n");
  // A server that says nothing holds the copy up for as long as the test likes.
  const silent = await SilentServer.start(t);
  silent.holds = false;
  sandbox.run("connection", deck, "add", "--type", "database", "--description", "Silent", "--connection-string", silent.connectionString, "--sql", "SELECT 1");
  const desk = await sandbox.edit(deck);
  const window = await desk.openWindow();
  const question = await window.until("the question", ({ notices }) =>
    notices.find(({ actions }) => actions.some(({ id }) => id === "open")),
  );
  await window.do(`notices/${question.id}/open`);
  await window.until("the values", ({ connections, jobs }) => connections[0].state === "fresh" && jobs.length === 0);
  await window.do("rename", { slide: window.state.slide.id, shape: window.shape("p7 Note").id, name: "Before" });

  silent.holds = true;
  await window.do("press/cbrDistribution");
  const form = await window.form("frmDistribution");
  await window.raise(form, { control: "optFrozen", event: "change", value: true }, { control: "cmdSend", event: "click" });
  await until("the copy being made", () => silent.sockets.length > 0);
  const before = digest(deck);
  assert.ok(!allXml(deck).includes("live-value"));
  await window.do("rename", { slide: window.state.slide.id, shape: window.shape("p6 Note").id, name: "Meanwhile" });
  const refused = await window.post("commands/save");
  assert.equal(refused.status, 409);
  assert.match(refused.json.error, /is being made\. Save when it is ready\./);
  assert.equal(digest(deck), before);

  silent.letGo();
  await window.until("the end", ({ jobs }) => jobs.length === 0);
  assert.equal(note().way, "frozen");
  await window.do("commands/save");
  assert.match(sandbox.done("shapes", deck, "--slide", 1), /Meanwhile/);
  assert.ok(!allXml(deck).includes("live-value"));
});
