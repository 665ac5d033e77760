// A screen outlives its server.

import assert from "node:assert/strict";
import { test } from "node:test";
import { elementId } from "../support/deck.mjs";
import { isUntouched, openScreen, openValues, shownText, useBrowser, waitForSlide, waitForText } from "../support/browser.mjs";
import { Line } from "../support/line.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeValueDeck, setValues, showValues } from "../support/value_deck.mjs";
import { refresh } from "../support/wait.mjs";

useBrowser();

for (const signal of ["SIGKILL", "SIGTERM"]) {
  test(`after ${signal} the last picture stands, and a new server takes over without a reload`, async (t) => {
    const { sandbox, deck, show, page } = await openValues(t, ["before", "stays"]);
    await show.command("goto/2");
    await waitForSlide(page, 2);
    await show.command("goto/1");
    await waitForSlide(page, 1);
    await page.waitForFunction(() => document.getAnimations().length === 0); // the transition is over
    const picture = await page.screenshot();
    const gone = page.waitForEvent("requestfailed", (request) => request.url().endsWith("/screen/events"));
    const end = await show.stop(signal);
    assert.deepEqual(end, signal === "SIGTERM" ? { code: 0, signal: null } : { code: null, signal });
    await gone; // the screen has tried to reach the server in vain
    assert.ok(picture.equals(await page.screenshot()), "the picture has changed");

    setValues(sandbox, "after", "stays");
    const next = await sandbox.show(deck, "--port", show.port);
    await waitForText(page, elementId(deck, 1, "p1 Item"), "after");
    setValues(sandbox, "live again", "stays");
    await waitForText(page, elementId(deck, 1, "p1 Item"), "live again", refresh);
    await next.command("next");
    await waitForSlide(page, 2);
    assert.ok(await isUntouched(page));
  });
}

test("a screen that was cut off catches up with what it has missed", async (t) => {
  const { sandbox, deck, show } = await showValues(t, ["before"]);
  const line = new Line(t, show.port);
  await line.open();
  const page = await openScreen(t, `http://127.0.0.1:${line.port}/`);
  setValues(sandbox, "connected");
  await waitForText(page, elementId(deck, 1, "p1 Item"), "connected", refresh);
  const gone = page.waitForEvent("requestfailed", (request) => request.url().endsWith("/screen/events"));
  line.cut(true);
  await gone;
  setValues(sandbox, "missed");
  await show.shows(1, "p1 Item", "missed");
  await show.command("goto/2");
  line.heal();
  await waitForSlide(page, 2);
  await show.command("goto/1");
  await waitForSlide(page, 1);
  assert.equal(await shownText(page, elementId(deck, 1, "p1 Item")), "missed");
  assert.ok(await isUntouched(page));
});

test("a page whose server has newer scripts loads them, once", async (t) => {
  const sandbox = new Sandbox(t);
  const show = await sandbox.show(makeValueDeck(sandbox, "before"));
  for (const path of ["", "remote"]) {
    await show.command("goto/1");
    const page = await openScreen(t, `${show.url}${path}#token=${show.token}`);
    const growOld = async () => {
      await page.evaluate(() => {
        document.documentElement.dataset.version = "old";
        window.marker = "untouched";
      });
    };
    await waitForSlide(page, 1);
    await growOld();
    await show.command("goto/2");
    await page.waitForFunction(() => window.marker === undefined && document.querySelector(".frame.current > #s2"));
    // A cache that goes on giving the old page must not make it load for ever.
    await growOld();
    await show.command("goto/3");
    await waitForSlide(page, 3);
    await show.command("goto/2");
    await waitForSlide(page, 2);
    assert.ok(await isUntouched(page), path);
  }
});
