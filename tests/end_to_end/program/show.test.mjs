// A show's life: ports, signals, and the files it lives from.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { chmodSync, mkdirSync, readFileSync, readdirSync, renameSync, rmSync } from "node:fs";
import { dirname } from "node:path";
import { describe, it } from "node:test";
import { digest } from "../support/deck.mjs";
import { Sandbox, asNobody } from "../support/sandbox.mjs";
import { setValues, showValues, valueDeck } from "../support/value_deck.mjs";
import { refresh, until } from "../support/wait.mjs";

// Shows wait most of the time, so several go on at once.
describe("a show", { concurrency: 4 }, () => {
  it("ends by signals with exit code 0, streams and all", async (t) => {
    const { sandbox, deck } = valueDeck(t, "a");
    for (const signal of ["SIGTERM", "SIGINT"]) {
      const show = await sandbox.show(deck);
      const events = show.events();
      await events.next("the state", ({ event }) => event === "state");
      assert.deepEqual(await show.stop(signal), { code: 0, signal: null }, signal);
      assert.equal(show.error, "");
      await until("the end of the stream", () => events.isOver);
      assert.equal(events.all.at(-1).event, "end");
    }
  });

  it("a show leaves the deck's bytes and its folder as they were", async (t) => {
    const sandbox = new Sandbox(t);
    for (const name of ["departures", "plant", "shop"]) {
      const deck = sandbox.sample(name);
      const before = digest(deck);
      const files = readdirSync(dirname(deck));
      const show = await sandbox.show(deck);
      const { slides } = await show.state();
      assert.ok(
        slides.every(({ shapes }) => shapes.some(({ text }) => text?.trim())),
        name,
      );
      await show.command("next");
      assert.deepEqual(await show.stop(), { code: 0, signal: null }, show.error);
      assert.equal(digest(deck), before, name);
      assert.deepEqual(readdirSync(dirname(deck)), files, name);
    }
  });

  it("a show whose folder is write-protected begins without its source and goes on without its deck's file", async (t) => {
    const { sandbox, deck } = valueDeck(t, "a");
    const values = sandbox.path("shop/values.txt");
    renameSync(values, sandbox.path("values.txt"));
    for (const folder of [".", "program", "state"]) chmodSync(sandbox.path(folder), 0o777);
    chmodSync(sandbox.path("shop"), 0o555);
    sandbox.before = asNobody;
    const show = await sandbox.show(deck, "--open");
    await until("the line in the log", () => sandbox.errorLog().length > 0, refresh);
    chmodSync(sandbox.path("shop"), 0o777);
    rmSync(deck);
    renameSync(sandbox.path("values.txt"), values);
    await show.shows(1, "p1 Item", "a");
    setValues(sandbox, "b");
    await show.shows(1, "p1 Item", "b");
    await show.command("next");
    const page = await show.get("/");
    for (const [, asset] of page.text.matchAll(/["(](\/?assets\/[^")]+)/g)) {
      assert.equal((await show.get(asset.replace(/^\/?/, "/"))).status, 200, asset);
    }
    assert.deepEqual(await show.stop(), { code: 0, signal: null });
    assert.match(readFileSync(sandbox.path("opened"), "utf8"), /^http:\S+\n$/, "its screen, and no log");
    assert.ok(sandbox.errorLog().every((line) => line.includes("Values")), sandbox.errorLog().join("\n"));
  });

  it("a source that is away or damaged for a while leaves its values and one line in the log", async (t) => {
    const { sandbox, show } = await showValues(t, ["good"]);
    const file = sandbox.path("shop/values.txt");
    const damages = [
      () => {},
      () => sandbox.write("shop/values.txt", "Value\tvalue\nbad\tbad\n"),
      () => sandbox.write("shop/values.txt", "<html><body>Bad gateway</body></html>\n"),
      () => mkdirSync(file),
      () => execFileSync("mkfifo", [file]),
    ];
    for (const [i, damage] of damages.entries()) {
      rmSync(file);
      damage();
      await until("the line in the log", () => sandbox.errorLog().length > 2 * i, refresh);
      assert.match(sandbox.errorLog().at(-1), /Error requerying file Values/);
      assert.equal(await show.text(1, "p1 Item"), i === 0 ? "good" : `good ${i - 1}`);
      rmSync(file, { recursive: true, force: true });
      setValues(sandbox, `good ${i}`);
      await show.shows(1, "p1 Item", `good ${i}`);
      assert.equal(sandbox.errorLog().length, 2 * i + 2, sandbox.errorLog().join("\n"));
      assert.match(sandbox.errorLog().at(-1), /Recovered: connection 001 \(Values\)\./);
    }
    assert.deepEqual(await show.stop(), { code: 0, signal: null });
    assert.match(show.error, /errors during the show.*errors\.txt/);
    const log = sandbox.done("log");
    assert.match(log, /^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d Error requerying file Values\. .*values\.txt/m);
    assert.doesNotMatch(log, /LF2000|\d\/\d+\/\d/);
  });

  it("health and the log name a column that is gone, and the slide that stands", async (t) => {
    const { sandbox, show } = await showValues(t, ["a", "b", "c"]);
      const [{ failing, deliveries }] = (await show.health()).connections;
    assert.equal(failing, false);
    assert.ok(deliveries > 0);

    sandbox.write("shop/values.txt", "Other\nd\ne\nf\n");
    const sick = await until("the slide that stands", async () => {
      const now = await show.health();
      return now.standing.length > 0 && now.connections[0].stale && now;
    });
    assert.equal(sick.standing[0].slide, 1);
    assert.match(sick.standing[0].error, /column Value of row 1/);
    assert.equal(sick.connections[0].failing, true);
    assert.match(sick.connections[0].lastError.text, /no column 'Value'/);
    assert.equal(await show.text(1, "p1 Item"), "a");
    const lines = sandbox.errorLog();
    assert.equal(lines.filter((line) => /no column 'Value'/.test(line)).length, 1, lines.join("\n"));

    setValues(sandbox, "g", "h", "i");
    await show.shows(1, "p1 Item", "g");
    await until("the recovery", () => sandbox.errorLog().some((line) => /Recovered: connection 001 \(Values\)/.test(line)));
    await until("health to be good again", async () => {
      const { standing, connections } = await show.health();
      return standing.length === 0 && !connections[0].failing && !connections[0].stale;
    });
  });
});
