// Decks and visitors that mean harm, or only look as if they did.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { writeFileSync } from "node:fs";
import { test } from "node:test";
import { editPart } from "../support/deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeDatabaseDeck, makeValueDeck, setValues } from "../support/value_deck.mjs";
import { refresh, until } from "../support/wait.mjs";

test("a shape may have any number of 32 bits", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "one", "two");
  const numbers = { "p1 Item": 2147483648, "p2 Item": 4294967295 };
  for (const [name, number] of Object.entries(numbers)) {
    editPart(deck, "ppt/slides/slide1.xml", (xml) =>
      xml.replace(new RegExp(`id="\\d+" name="${name}"`), `id="${number}" name="${name}"`),
    );
  }
  const show = await sandbox.show(deck);
  const alone = [];
  for (const name of Object.keys(numbers)) {
    const screen = show.events(`/screen/events?shape=${encodeURIComponent(name)}`);
    alone.push(screen);
    const { data } = await screen.next(name, ({ event }) => event === "picture");
    assert.match(data.current.html, new RegExp(`id="s1-sh${numbers[name]}"`));
  }
  await show.command("blank/black");
  await show.command("blank/off");
  setValues(sandbox, "one", "changed");
  const { data } = await alone[1].next("the new value", ({ event }) => event === "shapes", refresh);
  assert.equal(data[0].id, `s1-sh${numbers["p2 Item"]}`);
  assert.match(data[0].html, /changed/);
  await until("the state", async () => (await show.text(1, "p2 Item")) === "changed");
});

test("a deck's connection loads nothing and says which setting is at fault", (t) => {
  const sandbox = new Sandbox(t);
  const library = sandbox.path("driver.so");
  writeFileSync(library, "no library");
  writeFileSync(sandbox.path("source.dsn"), `[ODBC]\nDRIVER=${library}\n`);
  const cases = [
    [`Driver=${library}`, /No ODBC driver is registered as '.*driver\.so'/],
    [`FILEDSN=${sandbox.path("source.dsn")}`, /No ODBC driver is registered as '.*driver\.so'/],
    [`Provider=SQLite;Data Source=:memory:;LoadExt=${library}`, /holds 'LoadExt'/],
    ["DSN=shop;Servername=evil.example;PWD=s3cret", /holds 'Servername'/],
  ];
  for (const [connectionString, reason] of cases) {
    const deck = makeDatabaseDeck(sandbox, connectionString, "SELECT 1 AS Value");
    const verbs = [
      ["check", deck],
      ["fill", deck, "-o", sandbox.path("filled.pptx")],
      ["connection", deck, "test", "001"],
    ];
    for (const line of verbs) {
      const { code, out, error } = sandbox.run(...line);
      assert.equal(code, 1, line[0]);
      assert.match(out + error, reason, line[0]);
      assert.doesNotMatch(out + error, /s3cret/, line[0]);
    }
  }
});

test("screens take no descriptors that data and logs need", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeDatabaseDeck(sandbox, "Provider=SQLite;Data Source=values.db", "SELECT Value FROM list");
  const sqlite = (sql) => execFileSync("sqlite3", [sandbox.path("shop/values.db"), sql]);
  sqlite("CREATE TABLE list (Value); INSERT INTO list VALUES ('before')");
  sandbox.before = ["prlimit", "--nofile=64:400", ...sandbox.before];
  const show = await sandbox.show(deck);
  assert.match(show.error, /open 400 files, so it takes 96 connections/);
  const streams = Array.from({ length: 200 }, () => show.events("/screen/events"));
  await until("all seats to be taken", async () => {
    const { status } = await show.get("/api/v1/state");
    return status === 503;
  });
  assert.equal((await show.get("/healthz")).status, 200);
  assert.equal((await show.get("/readyz")).status, 200);
  await show.command("blank/black");
  const steered = { Authorization: `Bearer ${show.token}` };
  const health = async () => (await show.get("/api/v1/health", steered)).json;
  sqlite("UPDATE list SET Value = 'after'");
  await until("the new value", async () => {
    const { text } = await show.get("/api/v1/state", steered);
    return text.includes('"after"');
  });
  const { connections, screens } = await health();
  assert.equal(screens.length, 96);
  assert.equal(connections[0].lastError, null);
  assert.deepEqual(sandbox.errorLog(), []);
  assert.equal(streams.length, 200);
});
