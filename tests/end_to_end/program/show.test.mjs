// A show's life: ports, signals, and the files it lives from.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { chmodSync, existsSync, mkdirSync, readFileSync, readdirSync, renameSync, rmSync } from "node:fs";
import { createServer } from "node:net";
import { dirname } from "node:path";
import { describe, it } from "node:test";
import { digest } from "../support/deck.mjs";
import { Sandbox, asNobody } from "../support/sandbox.mjs";
import { makeValueDeck, setValues } from "../support/value_deck.mjs";
import { refresh, until } from "../support/wait.mjs";

const isShown = (show, slide, shape, text) =>
  until(`'${text}' in ${shape}`, async () => (await show.text(slide, shape)) === text, refresh);

// Shows wait most of the time, so several go on at once.
describe("a show", { concurrency: 4 }, () => {
  it("a port in use is told in one line, before anything begins", async (t) => {
    const sandbox = new Sandbox(t);
    const deck = sandbox.sample("shop");
    const other = createServer();
    await new Promise((resolve) => other.listen(0, "127.0.0.1", resolve));
    t.after(() => other.close());
    const { port } = other.address();
    const { code, out, error } = sandbox.run("show", deck, "--port", port);
    assert.equal(code, 1);
    assert.equal(out, "");
    assert.match(error, new RegExp(`^lumenfold: .*\\b${port}\\b.*in use.*--port.*\\n$`));
  });

  for (const signal of ["SIGTERM", "SIGINT", "SIGHUP"]) {
    it(`${signal} ends a show with exit code 0, streams and all`, async (t) => {
      const sandbox = new Sandbox(t);
      const show = await sandbox.show(makeValueDeck(sandbox, "a"));
      const events = show.events();
      await events.next("the state", ({ event }) => event === "state");
      assert.deepEqual(await show.stop(signal), { code: 0, signal: null });
      assert.equal(show.error, "");
      await until("the end of the stream", () => events.isOver);
      assert.equal(events.all.at(-1).event, "end");
    });
  }

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

  it("a show goes on without its deck's file", async (t) => {
    const sandbox = new Sandbox(t);
    const deck = makeValueDeck(sandbox, "a");
    const show = await sandbox.show(deck);
    rmSync(deck);
    setValues(sandbox, "b");
    await isShown(show, 1, "p1 Item", "b");
    await show.command("next");
    const page = await show.get("/");
    for (const [, asset] of page.text.matchAll(/["(](\/?assets\/[^")]+)/g)) {
      assert.equal((await show.get(asset.replace(/^\/?/, "/"))).status, 200, asset);
    }
    assert.deepEqual(await show.stop(), { code: 0, signal: null });
    assert.deepEqual(sandbox.errorLog(), []);
  });

  it("a source that goes away leaves its values and one line in the log, and comes back", async (t) => {
    const sandbox = new Sandbox(t);
    const deck = makeValueDeck(sandbox, "standing");
    sandbox.write("shop/ticks.txt", "0\n");
    sandbox.done(
      "connection",
      deck,
      "add",
      "--type",
      "text",
      "--description",
      "Ticks",
      "--file",
      "ticks.txt",
    );
    sandbox.done(
      "link",
      deck,
      "--slide",
      1,
      "--shape",
      "p7 Item",
      "--connection",
      "002",
      "--column",
      "Column1",
      "--row",
      1,
    );
    const show = await sandbox.show(deck);
    // Each change of this other source that is shown proves that a tick has passed.
    let ticks = 0;
    const passTicks = async (count) => {
      for (let i = 0; i < count; ++i) {
        sandbox.write("shop/ticks.txt", `${++ticks}\n`);
        await isShown(show, 1, "p7 Item", `${ticks}`);
      }
    };
    for (const round of [1, 2]) {
      renameSync(sandbox.path("shop/values.txt"), sandbox.path("shop/away.txt"));
      await passTicks(3);
      assert.equal(await show.text(1, "p1 Item"), round === 1 ? "standing" : "back 1");
      assert.equal(sandbox.errorLog().length, round, sandbox.errorLog().join("\n"));
      assert.match(
        sandbox.errorLog().at(-1),
        /^\S+ \S+( [AP]M)?\.\d{3} Error requerying file Values[^]*values\.txt/,
      );
      setValues(sandbox, `back ${round}`);
      await isShown(show, 1, "p1 Item", `back ${round}`);
    }
    // What comes back unchanged, and with its old time, counts as back as well.
    renameSync(sandbox.path("shop/values.txt"), sandbox.path("shop/away.txt"));
    await passTicks(2);
    renameSync(sandbox.path("shop/away.txt"), sandbox.path("shop/values.txt"));
    await passTicks(2);
    setValues(sandbox, "at last");
    await isShown(show, 1, "p1 Item", "at last");
    assert.deepEqual(await show.stop(), { code: 0, signal: null });
    assert.match(show.error, /errors during the show.*errors\.txt/);
    assert.ok(sandbox.done("log").includes("values.txt"));
  });

  it("a source that is damaged for a while leaves the last values standing", async (t) => {
    const sandbox = new Sandbox(t);
    const deck = makeValueDeck(sandbox, "good");
    const show = await sandbox.show(deck);
    const file = sandbox.path("shop/values.txt");
    const damages = [
      () => sandbox.write("shop/values.txt", "Value\tvalue\nbad\tbad\n"),
      () => sandbox.write("shop/values.txt", ""),
      () => sandbox.write("shop/values.txt", "Value\t\nbad\tbad\n"),
      () => mkdirSync(file),
      () => execFileSync("mkfifo", [file]),
    ];
    for (const [i, damage] of damages.entries()) {
      rmSync(file);
      damage();
      await until("the line in the log", () => sandbox.errorLog().length > i, refresh);
      assert.equal(await show.text(1, "p1 Item"), i === 0 ? "good" : `good ${i - 1}`);
      rmSync(file, { recursive: true });
      setValues(sandbox, `good ${i}`);
      await isShown(show, 1, "p1 Item", `good ${i}`);
    }
    sandbox.write("shop/values.txt", [["Other"], ["column"]]);
    await until(
      "the line in the log",
      () => sandbox.errorLog().some((line) => line.includes("column Value of row 1")),
      refresh,
    );
    assert.equal(await show.text(1, "p1 Item"), "good 4");
    setValues(sandbox, "good 5");
    await isShown(show, 1, "p1 Item", "good 5");
  });

  it("a source that is not there at the beginning keeps no screen dark", async (t) => {
    const sandbox = new Sandbox(t);
    const deck = makeValueDeck(sandbox, "a");
    rmSync(sandbox.path("shop/values.txt"));
    const show = await sandbox.show(deck);
    assert.equal((await show.state()).running, true);
    setValues(sandbox, "there now");
    await isShown(show, 1, "p1 Item", "there now");
  });

  it("errors during a show open nothing where nobody sits at a terminal", async (t) => {
    const sandbox = new Sandbox(t);
    const deck = makeValueDeck(sandbox, "a");
    rmSync(sandbox.path("shop/values.txt"));
    const show = await sandbox.show(deck);
    await until("the line in the log", () => sandbox.errorLog().length > 0, refresh);
    assert.deepEqual(await show.stop(), { code: 0, signal: null });
    // What a show opens at its beginning is there by the time that this one's is.
    await (await sandbox.show(deck, "--open")).stop();
    const opened = await until(
      "the screen to be opened",
      () => existsSync(sandbox.path("opened")) && readFileSync(sandbox.path("opened"), "utf8"),
    );
    assert.match(opened, /^http:\S+\n$/);
  });

  it("a deck in a folder that is write-protected is shown", async (t) => {
    const sandbox = new Sandbox(t);
    const deck = makeValueDeck(sandbox, "a");
    for (const folder of ["state", "shop"])
      chmodSync(sandbox.path(folder), folder === "state" ? 0o777 : 0o555);
    sandbox.before = asNobody;
    const show = await sandbox.show(deck);
    setValues(sandbox, "b");
    await isShown(show, 1, "p1 Item", "b");
    assert.deepEqual(await show.stop(), { code: 0, signal: null });
    assert.equal(show.error, "");
  });

  it("a deck without links is shown as it is", async (t) => {
    const sandbox = new Sandbox(t);
    const deck = makeValueDeck(sandbox, "a");
    sandbox.done("unlink", deck, "--all");
    const show = await sandbox.show(deck);
    await show.command("next");
    const { position, slides } = await show.state();
    assert.deepEqual([position, slides.flatMap(({ shapes }) => shapes)], [2, []]);
    assert.match((await show.get("/")).text, /Text 3|<section/);
    assert.deepEqual(await show.stop(), { code: 0, signal: null });
  });

  it("a slide that has no data from the beginning is not shown", async (t) => {
    const sandbox = new Sandbox(t);
    const deck = makeValueDeck(sandbox);
    sandbox.done("slide", deck, 1, "--hide-when-no-data", "on");
    const show = await sandbox.show(deck);
    const { position, slides } = await show.state();
    assert.deepEqual([position, slides.map(({ hidden }) => hidden)], [2, [true, false, false]]);
    // The slides from the one on show to the next are watched; behind the last comes the first.
    await show.command("last");
    setValues(sandbox, "", "", "something");
    await until("slide 1", async () => !(await show.state()).slides[0].hidden, refresh);
  });

  it("a file replaced in one step, as editors and feeds do, is read like one written in place", async (t) => {
    const sandbox = new Sandbox(t);
    const show = await sandbox.show(makeValueDeck(sandbox, "0"));
    for (const value of ["1", "2"]) {
      sandbox.write("shop/new.txt", [["Value"], [value]]);
      renameSync(sandbox.path("shop/new.txt"), sandbox.path("shop/values.txt"));
      await isShown(show, 1, "p1 Item", value);
    }
    assert.deepEqual(sandbox.errorLog(), []);
  });
});
