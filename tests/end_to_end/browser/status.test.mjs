// The page that tells people how a show does.

import assert from "node:assert/strict";
import { renameSync } from "node:fs";
import { test } from "node:test";
import { openScreen, useBrowser } from "../support/browser.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeValueDeck } from "../support/value_deck.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

test("the status page follows what becomes of data, screens and the show itself", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "one", "two");
  const show = await sandbox.show(deck);
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
