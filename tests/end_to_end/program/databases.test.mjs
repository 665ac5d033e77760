// Shows on databases, whose data other programs change.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { readFileSync } from "node:fs";
import { after, before, describe, it } from "node:test";
import { Postgres } from "../support/postgres.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeDatabaseDeck, setValues } from "../support/value_deck.mjs";
import { refresh, until } from "../support/wait.mjs";

const shows = (show, slide, shape, text) =>
  until(`'${text}' in ${shape}`, async () => (await show.text(slide, shape)) === text, refresh);

it("a change that another process makes in a file of SQLite is shown", async (t) => {
  const sandbox = new Sandbox(t);
  const show = await sandbox.show(sandbox.sample("plant"));
  await shows(show, 1, "l1 Rate", "412");
  const sqlite = (sql) => execFileSync("sqlite3", [sandbox.path("plant/plant.db"), sql]);
  sqlite("UPDATE plant SET Rate = 7, Light = 'Halt' WHERE Line = 'Line 1'");
  await shows(show, 1, "l1 Rate", "7");
  await shows(show, 1, "l1 Halt", "●");
  assert.equal(await show.text(1, "l1 Run"), null);
  assert.deepEqual(sandbox.errorLog(), []);
});

describe("a show on a database server", () => {
  let server;
  before(async () => {
    server = new Postgres();
    await server.start();
  });
  after(() => server?.remove());

  it("goes on while a query is slow, and ends at once in the midst of it", async (t) => {
    server.run("CREATE VIEW slow AS SELECT 'quick'::text AS \"Value\"");
    const sandbox = new Sandbox(t);
    const deck = makeDatabaseDeck(sandbox, server.connectionString(), "slow");
    sandbox.done("link", deck, "--slide", 1, "--shape", "Clock", "--clock", "hh:nn:ss");
    const show = await sandbox.show(deck);
    await shows(show, 1, "p1 Item", "quick");

    server.run("CREATE OR REPLACE VIEW slow AS SELECT 'late'::text AS \"Value\" FROM pg_sleep(3600)");
    const waiting = "SELECT count(*) FROM pg_stat_activity WHERE wait_event = 'PgSleep'";
    await until("the slow query", () => server.run(waiting) === "1");
    const seen = new Set();
    await until("three seconds of the clock", async () => seen.add(await show.text(1, "Clock")).size > 3);
    assert.equal(await show.text(1, "p1 Item"), "quick");
    assert.equal(server.run(waiting), "1");

    assert.deepEqual(await show.stop(), { code: 0, signal: null });
    await until("the query to be cancelled", () => server.run(waiting) === "0");
    assert.deepEqual(sandbox.errorLog(), []);
  });

  it("keeps its values while the server or the table is gone, with one line in the log", async (t) => {
    server.run(`CREATE TABLE readings ("Value" text); INSERT INTO readings VALUES ('standing')`);
    const sandbox = new Sandbox(t);
    const deck = makeDatabaseDeck(sandbox, server.connectionString(), 'SELECT "Value" FROM readings');
    // What changes in this text file and is shown proves that a tick has passed.
    setValues(sandbox, "0");
    const ticking = ["--type", "text", "--description", "Ticks", "--file", "values.txt", "--header"];
    sandbox.done("connection", deck, "add", ...ticking);
    const link = ["--connection", "002", "--column", "Value", "--row", 1];
    sandbox.done("link", deck, "--slide", 1, "--shape", "p7 Item", ...link);
    const show = await sandbox.show(deck);
    let ticks = 0;
    const passTicks = async (count) => {
      for (let i = 0; i < count; ++i) {
        setValues(sandbox, `${++ticks}`);
        await shows(show, 1, "p7 Item", `${ticks}`);
      }
    };
    const losses = [
      { leave: () => server.stop(), comeBack: () => server.start(), reason: /opening database Values/ },
      {
        leave: () => server.run("ALTER TABLE readings RENAME TO away"),
        comeBack: () => server.run("ALTER TABLE away RENAME TO readings"),
        reason: /"readings" does not exist/,
      },
      {
        leave: () => server.run(`ALTER TABLE readings RENAME "Value" TO "Other"`),
        comeBack: () => server.run(`ALTER TABLE readings RENAME "Other" TO "Value"`),
        reason: /"Value" does not exist/,
      },
    ];
    let value = "standing";
    for (const [i, { leave, comeBack, reason }] of losses.entries()) {
      await shows(show, 1, "p1 Item", value);
      await leave();
      await until("the line in the log", () => sandbox.errorLog().length > i);
      await passTicks(3);
      assert.equal(await show.text(1, "p1 Item"), value);
      assert.equal(sandbox.errorLog().length, i + 1, sandbox.errorLog().join("\n"));
      assert.match(sandbox.errorLog().at(-1), reason);
      await comeBack();
      value = `back ${i}`;
      server.run(`UPDATE readings SET "Value" = '${value}'`);
      await shows(show, 1, "p1 Item", value);
    }
    assert.deepEqual(await show.stop(), { code: 0, signal: null });
  });

  it("tells its password nobody", async (t) => {
    const wrong = "wr0ng;secret";
    server.run(`CREATE TABLE guarded ("Value" text); INSERT INTO guarded VALUES ('seen')`);
    const sandbox = new Sandbox(t);
    sandbox.environment.LUMENFOLD_INFO_DEBUG = "True";
    const deck = makeDatabaseDeck(sandbox, server.connectionString(), "guarded");
    const told = [];
    const run = (...line) => {
      const { out, error } = sandbox.run(...line);
      told.push(out, error);
    };
    const bad = ["--type", "database", "--description", "Wrong", "--sql", "guarded"];
    run("connection", deck, "add", ...bad, "--connection-string", server.connectionString(wrong));
    for (const verb of ["test", "preview", "tables"]) {
      run("connection", deck, verb, "001");
      run("connection", deck, verb, "002", "--json");
    }
    run("connection", deck, "list");
    run("connection", deck, "list", "--json");
    run("info", deck);
    run("info", deck, "--json");
    assert.match(told.join("\n"), /Password=\*\*\*/);
    assert.match(told.join("\n"), /password authentication failed/);

    const show = await sandbox.show(deck);
    await shows(show, 1, "p1 Item", "seen");
    for (const path of ["/", "/api/v1/state", "/metrics"]) told.push((await show.get(path)).text);
    await show.stop();
    told.push(show.out, show.error, ...sandbox.errorLog());
    const debugLog = readFileSync(sandbox.path("program/lumenfold.dbg"), "utf8");
    assert.match(debugLog, /Open database connection .*Password=/);
    assert.match(sandbox.errorLog().join("\n"), /password authentication failed/);
    const everything = [...told, debugLog].join("\n");
    for (const part of [server.password, wrong, "c}r{e't", "wr0ng"]) assert.ok(!everything.includes(part), part);
  });
});
