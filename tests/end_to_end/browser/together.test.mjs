// Screens that all change at one moment.

import assert from "node:assert/strict";
import { test } from "node:test";
import { openScreen, useBrowser, waitForSlide } from "../support/browser.mjs";
import { showValues } from "../support/value_deck.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

// Which slides stand on the stage, with how much can be seen of each; none while something moves.
const framesOf = (page) =>
  page.evaluate(() => {
    if (document.getAnimations().length > 0 || document.querySelector(".leaving")) return [];
    const frames = [...document.querySelectorAll(".frame")];
    return frames.map((frame) => `${frame.firstElementChild.id} ${getComputedStyle(frame).opacity}`);
  });

test("a screen finds the server's time, and waits for a moment of it in its frames", async (t) => {
  const { show } = await showValues(t, ["one"]);
  const page = await openScreen(t, show.url, { isClockHeld: true });
  // The first answer tells the time, an hour from the screen's; later ones are lost.
  const hour = 3600000;
  let asked = 0;
  await page.route(/\/screen\/time/, async (route) => {
    const now = await page.evaluate(() => performance.now());
    if (++asked === 1) await route.fulfill({ json: { now: now + hour } });
    else await route.abort();
  });
  await page.evaluate(async () => {
    const from = document.querySelector("script[src]").src.replace("screen/screen.js", "core/");
    const { measureServerTime, timeUntil } = await import(`${from}server_time.js`);
    const { frameAt, isAhead, timeOf } = await import(`${from}moment.js`);
    Object.assign(window, { timeUntil, frameAt, isAhead, timeOf });
    window.unknown = [timeUntil(Date.now()), isAhead(Date.now() + 100)];
    measureServerTime();
  });
  assert.deepEqual(await page.evaluate(() => unknown), [null, false]);
  await page.clock.runFor(300); // it asks within that time, which then stands until it has its answer
  await until("an exchange", () => page.evaluate(() => timeUntil(0) !== null));
  const ahead = (time) => page.evaluate((delay) => isAhead(performance.now() + 3600000 + delay), time);
  assert.deepEqual([await ahead(-1), await ahead(500), await ahead(60000)], [false, true, false]);

  await page.evaluate(() => {
    window.moment = 500 - timeUntil(0); // by its idea of the time, off by half of how long the answer took
    frameAt(moment).then(() => (window.shown = timeUntil(moment)));
  });
  await page.clock.runFor(400);
  assert.equal(await page.evaluate(() => window.shown), undefined);
  await page.clock.runFor(200);
  const { shown, time } = await page.evaluate(() => ({ shown: window.shown, time: timeOf(moment) }));
  assert.ok(Math.abs(shown) <= 10, `${shown} ms from the moment`);
  assert.equal(time, null);
  // What has passed is not waited for.
  assert.equal(await page.evaluate(() => frameAt(performance.now() + 3600000 - 5).then(() => "at once")), "at once");
});

test("with --synchronous a change comes with its moment, and no screen shows it before", async (t) => {
  const { show } = await showValues(t, ["one"], "--synchronous");
  const first = await openScreen(t, show.url);
  const second = await openScreen(t, `${show.url}?part=2x1/2`);
  await second.emulateMedia({ reducedMotion: "reduce" }); // the slide is pushed up on the first alone
  const told = show.events("/screen/events");
  for (const page of [first, second]) {
    await waitForSlide(page, 1);
    await page.evaluate(() => {
      requestAnimationFrame(function look() {
        const frame = document.getElementById("s2")?.parentElement;
        const isSeen = frame && getComputedStyle(frame).opacity !== "0";
        if (isSeen && frame.getBoundingClientRect().top < innerHeight) window.changed = Date.now();
        else requestAnimationFrame(look);
      });
    });
  }
  await until("the first exchanges", () =>
    Promise.all([first, second].map((page) => page.evaluate(async () => {
      const from = document.querySelector("script[src]").src.replace("screen/screen.js", "core/");
      return (await import(`${from}server_time.js`)).timeUntil(0) !== null;
    }))).then((known) => known.every(Boolean)),
  );
  const before = Date.now();
  await show.command("next");
  const { data } = await told.next("slide 2", ({ event, data }) => event === "picture" && data.current?.index === 2);
  assert.ok(data.at >= before + 400, "time to prepare");
  for (const page of [first, second]) {
    await waitForSlide(page, 2);
    await page.waitForFunction(() => window.changed);
    const time = await page.evaluate(() => changed);
    // A busy machine is late. Half of the time to prepare is far more than the clocks may be wrong.
    assert.ok(time >= data.at - 250, `${data.at - time} ms too early`);
  }
  // One change on the heels of the other, the second back to the slide that leaves by the first.
  await show.command("goto/1");
  await show.command("goto/2");
  for (const page of [first, second]) {
    await until("nothing left of the changes", async () => (await framesOf(page)).sort().join() === "s2 1,s3 0");
  }
  // Without the option nobody waits.
  const { show: other } = await showValues(t, ["one"]);
  const { data: plain } = await other.events("/screen/events").next("the picture", ({ event }) => event === "picture");
  assert.equal(plain.at, null);
});
