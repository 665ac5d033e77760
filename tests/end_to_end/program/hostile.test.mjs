// Visitors that mean harm, or only are many.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { test } from "node:test";
import { Sandbox } from "../support/sandbox.mjs";
import { makeDatabaseDeck } from "../support/value_deck.mjs";
import { until } from "../support/wait.mjs";

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
