// Shows on databases, whose data other programs change.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { readFileSync } from "node:fs";
import { it } from "node:test";
import { Sandbox } from "../support/sandbox.mjs";
import { at, makeDatabaseDeck } from "../support/value_deck.mjs";
import { refresh, until } from "../support/wait.mjs";

it("a change that another process makes in a file of SQLite is shown", async (t) => {
  const sandbox = new Sandbox(t);
  const show = await sandbox.show(sandbox.sample("plant"));
  await show.shows(1, "l1 Rate", "412");
  const sqlite = (sql) => execFileSync("sqlite3", [sandbox.path("plant/plant.db"), sql]);
  sqlite("UPDATE plant SET Rate = 7, Light = 'Halt' WHERE Line = 'Line 1'");
  await show.shows(1, "l1 Rate", "7");
  await show.shows(1, "l1 Halt", "●");
  assert.equal(await show.text(1, "l1 Run"), null);
  assert.deepEqual(sandbox.errorLog(), []);
});

it("a show goes on while a query is slow, and ends at once in the midst of it", async (t) => {
  const sandbox = new Sandbox(t);
  const sqlite = (sql) => execFileSync("sqlite3", [sandbox.path("shop/stock.db"), sql]);
  const deck = makeDatabaseDeck(sandbox, "Provider=SQLite;Data Source=stock.db", "stock");
  sqlite("CREATE VIEW stock AS SELECT 'quick' AS Value");
  sandbox.done("connection", deck, "set", "001", "--refresh", 500);
  sandbox.done("link", deck, ...at(1, "Clock"), "--clock", "hh:nn:ss");
  const show = await sandbox.show(deck);
  await show.shows(1, "p1 Item", "quick");
  // The driver looks up from it at every row, of which there is none for hours.
  const endless = "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c LIMIT 1000000000000)";
  sqlite(`DROP VIEW stock; CREATE VIEW stock AS ${endless} SELECT 'late' AS Value FROM c WHERE x < 0`);
  const seen = new Set();
  await until("five seconds of the clock", async () => seen.add(await show.text(1, "Clock")).size > 5);
  assert.equal(await show.text(1, "p1 Item"), "quick");
  assert.deepEqual(await show.stop(), { code: 0, signal: null });
  assert.deepEqual(sandbox.errorLog(), []);
});

it("a password is told nobody", async (t) => {
  const sandbox = new Sandbox(t);
  sandbox.environment.LUMENFOLD_INFO_DEBUG = "True";
  const secret = `"s3;c}r{e't"`;
  const deck = makeDatabaseDeck(sandbox, `Provider=PostgreSQL;Password=${secret};Data Source=/nowhere`, "t");
  const told = [];
  for (const line of [
    ["connection", deck, "test", "001"],
    ["connection", deck, "preview", "001", "--json"],
    ["connection", deck, "tables", "001"],
    ["connection", deck, "list"],
    ["connection", deck, "list", "--json"],
    ["info", deck],
    ["info", deck, "--json"],
  ]) {
    const { out, error } = sandbox.run(...line);
    told.push(out, error);
    assert.match(out + error, /Password=\*\*\*/, line.join(" "));
  }
  const show = await sandbox.show(deck);
  for (const path of ["/", "/api/v1/state", "/api/v1/health", "/metrics"]) told.push((await show.get(path)).text);
  await show.stop();
  assert.match(sandbox.errorLog().join("\n"), /opening database Values/);
  const debugLog = readFileSync(sandbox.path("program/lumenfold.dbg"), "utf8");
  assert.match(debugLog, /Open database connection .*Password=/);
  const everything = [...told, show.out, show.error, ...sandbox.errorLog(), debugLog].join("\n");
  for (const part of ["s3;c", "c}r{e't"]) assert.ok(!everything.includes(part), part);
});
