// What a show knows of its data and its screens, and what screens do about old data.

import assert from "node:assert/strict";
import { renameSync } from "node:fs";
import { test } from "node:test";
import { elementId } from "../support/deck.mjs";
import { openScreen, openValues, useBrowser, waitForText } from "../support/browser.mjs";
import { setValues, showValues, valueDeck } from "../support/value_deck.mjs";
import { refresh, until } from "../support/wait.mjs";

useBrowser();

const sample = async (show, name) =>
  Number((await show.get("/metrics")).text.match(new RegExp(`^${name} (.*)$`, "m"))?.[1]);

test("a screen tells what it has painted, and how long after the change", async (t) => {
  const { sandbox, deck, show, page } = await openValues(t, ["one", "two"]);
  const painted = (fits) =>
    until("a report", async () => {
      const [screen] = (await show.health()).screens;
      return screen?.painted && fits(screen.painted) && screen;
    });
  const first = await painted(() => true);
  assert.equal(first.painted.slide, 1);
  assert.equal(first.painted.delay, null, "what was there before the screen has no delay");
  const changed = Date.now();
  setValues(sandbox, "one", "changed");
  await waitForText(page, elementId(deck, 1, "p2 Item"), "changed", refresh);
  const second = await painted(({ sequence }) => sequence > first.painted.sequence);
  assert.equal(second.painted.sequence, second.newest);
  const { delay } = second.painted;
  assert.ok(delay > 0 && delay < (Date.now() - changed) / 1000, `${delay} s`);
  assert.equal(await sample(show, "lumenfold_screen_paint_delay_seconds_count"), 1);
  assert.equal(await sample(show, "lumenfold_screens"), 1);
  await page.close();
  await until("the screen's end", async () => (await show.health()).screens.length === 0);
});

const connection = async (show) => (await show.health()).connections[0];

test("data that do not come are marked, blanked or kept, as the operator wants", async (t) => {
  const { sandbox, deck } = valueDeck(t, "one", "two");
  const id = elementId(deck, 1, "p1 Item");
  const boards = [];
  for (const choice of ["keep", "mark", "blank"]) {
    const show = await sandbox.show(deck, ...(choice === "keep" ? [] : ["--stale", choice]));
    boards.push({ choice, show, page: await openScreen(t, show.url) });
  }
  const looks = (page) =>
    page.evaluate((name) => {
      const shape = document.getElementById(name);
      const isMarked = getComputedStyle(shape, "::after").content === '""';
      const isBlank = getComputedStyle(shape.querySelector(".t")).visibility === "hidden";
      return `${isMarked ? "mark" : ""}${isBlank ? "blank" : ""}` || "keep";
    }, id);
  const isStale = (show, expected) =>
    until(`stale: ${expected}`, async () => {
      const told = await connection(show);
      return told.stale === expected && told;
    });
  for (const { show, page } of boards) {
    const { deliveries } = await isStale(show, false);
    // A file that has not changed has been delivered all the same.
    await until("another look", async () => (await connection(show)).deliveries > deliveries + 3);
    await isStale(show, false);
    assert.equal(await looks(page), "keep");
  }

  renameSync(sandbox.path("shop/values.txt"), sandbox.path("shop/away.txt"));
  for (const { choice, show, page } of boards) {
    const bad = await isStale(show, true);
    assert.match(bad.lastError.text, /values\.txt/);
    assert.ok(bad.age > 2.5 && bad.failures > 0 && bad.rows === 2, JSON.stringify(bad));
    await until(`its look: ${choice}`, async () => (await looks(page)) === choice);
    assert.equal(await sample(show, 'lumenfold_connection_stale\\{connection="001"\\}'), 1);
    assert.equal(await page.evaluate((name) => document.getElementById(name).textContent.trim(), id), "one");
  }

  setValues(sandbox, "fresh", "two");
  for (const { show, page } of boards) {
    await waitForText(page, id, "fresh", refresh);
    await isStale(show, false);
    await until("the usual look", async () => (await looks(page)) === "keep");
  }
});

test("the status page follows what becomes of data, screens and the show itself", async (t) => {
  const { sandbox, show } = await showValues(t, ["one", "two"]);
  const page = await openScreen(t, `${show.url}status`);
  const seen = () =>
    page.evaluate(() => {
      const row = (list) => {
        const first = document.querySelector(`#${list} li`);
        return `${first?.dataset.level} ${first?.innerText.replace(/\s+/g, " ").trim()}`;
      };
      const header = document.querySelector("header");
      return {
        level: header.dataset.level,
        verdict: document.getElementById("verdict").textContent,
        connection: row("connections"),
        screen: row("screens"),
      };
    });
  const becomes = (what, fits) =>
    until(what, async () => {
      const now = await seen();
      return fits(now) && now;
    });
  const alone = await becomes("amber", ({ level }) => level === "warning");
  assert.equal(alone.verdict, "No screen is connected");
  const screen = await openScreen(t, show.url);
  const well = await becomes("green", ({ level, screen }) => level === "good" && screen.startsWith("good"));
  assert.equal(well.verdict, "Everything is well");
  assert.match(well.connection, /^good 001 Values up to date 2 rows · every 1 s read /);
  assert.match(well.screen, /^good Screen \d+ up to date the show · painted slide 1/);

  renameSync(sandbox.path("shop/values.txt"), sandbox.path("shop/away.txt"));
  const bad = await becomes("red", ({ level }) => level === "bad");
  assert.match(bad.connection, /^bad 001 Values no new data .*Failed .*'values\.txt' cannot be found/);
  assert.ok(!bad.connection.includes(sandbox.folder), bad.connection);
  assert.equal(bad.verdict, "1 connection needs a look");
  renameSync(sandbox.path("shop/away.txt"), sandbox.path("shop/values.txt"));
  await becomes("green again", ({ level }) => level === "good");

  await screen.close();
  await show.stop();
  const lost = await becomes("the loss", ({ verdict }) => verdict.startsWith("The show does not answer"));
  assert.equal(lost.level, "bad");
});
