// What a show knows of its data and its screens, and what screens do about old data.

import assert from "node:assert/strict";
import { renameSync } from "node:fs";
import { test } from "node:test";
import { elementId } from "../support/deck.mjs";
import { openScreen, useBrowser, waitForText } from "../support/browser.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeValueDeck, setValues } from "../support/value_deck.mjs";
import { refresh, until } from "../support/wait.mjs";

useBrowser();

const health = async (show) => (await show.get("/api/v1/health")).json;
const sample = async (show, name) =>
  Number((await show.get("/metrics")).text.match(new RegExp(`^${name} (.*)$`, "m"))?.[1]);

test("a screen tells what it has painted, and how long after the change", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "one", "two");
  const show = await sandbox.show(deck);
  const page = await openScreen(t, show.url);
  const painted = (fits) =>
    until("a report", async () => {
      const [screen] = (await health(show)).screens;
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
  await until("the screen's end", async () => (await health(show)).screens.length === 0);
});

test("data that do not come are marked, blanked or kept, as the operator wants", async (t) => {
  for (const [choice, option] of [
    ["keep", []],
    ["mark", ["--stale", "mark"]],
    ["blank", ["--stale", "blank"]],
  ]) {
    await t.test(choice, async (t) => {
      const sandbox = new Sandbox(t);
      const deck = makeValueDeck(sandbox, "one", "two");
      const show = await sandbox.show(deck, ...option);
      const page = await openScreen(t, show.url);
      const id = elementId(deck, 1, "p1 Item");
      const looks = () =>
        page.evaluate((name) => {
          const shape = document.getElementById(name);
          return {
            isMarked: getComputedStyle(shape, "::after").content === '""',
            isBlank: getComputedStyle(shape.querySelector(".t")).visibility === "hidden",
          };
        }, id);
      const isStale = (expected) =>
        until(`stale: ${expected}`, async () => {
          const [connection] = (await health(show)).connections;
          return connection.stale === expected && connection;
        });
      const good = await isStale(false);
      // A file that has not changed has been delivered all the same.
      await until("another look", async () => (await health(show)).connections[0].deliveries > good.deliveries + 3);
      await isStale(false);
      assert.deepEqual(await looks(), { isMarked: false, isBlank: false });

      renameSync(sandbox.path("shop/values.txt"), sandbox.path("shop/away.txt"));
      const bad = await isStale(true);
      assert.match(bad.lastError.text, /values\.txt/);
      assert.ok(bad.age > 2.5 && bad.failures > 0 && bad.rows === 2, JSON.stringify(bad));
      await until("its look", async () => {
        const { isMarked, isBlank } = await looks();
        return isMarked === (choice === "mark") && isBlank === (choice === "blank");
      });
      assert.equal(await sample(show, 'lumenfold_connection_stale\\{connection="001"\\}'), 1);
      assert.equal(await page.evaluate((name) => document.getElementById(name).textContent.trim(), id), "one");

      setValues(sandbox, "fresh", "two");
      await waitForText(page, id, "fresh", refresh);
      await isStale(false);
      await until("the usual look", async () => {
        const { isMarked, isBlank } = await looks();
        return !isMarked && !isBlank;
      });
      assert.deepEqual(page.faults, []);
    });
  }
});
