// Chromium, one for each test file, and screens in it.

import assert from "node:assert/strict";
import { after, before } from "node:test";
import { chromium } from "playwright-core";
import { showValues } from "./value_deck.mjs";
import { patience, until } from "./wait.mjs";

const executablePath = process.env.CHROMIUM || "/usr/bin/chromium";
let browser;

// To be called once by a test file.
export function useBrowser() {
  before(async () => {
    // The profile is a new one every time.
    browser = await chromium.launch({
      executablePath,
      ignoreDefaultArgs: ["--hide-scrollbars"],
      args: [
        "--no-sandbox",
        "--disable-gpu",
        "--disable-background-networking",
        "--disable-component-update",
        "--disable-sync",
        "--no-first-run",
        "--disable-quic",
      ],
    });
  });
  after(() => browser?.close());
}

// Opens a screen in a profile of its own. What must never happen on a screen fails the test at its end, and is
// gathered in page.faults: scripts that fail, dialogs, what the page's policy forbids.
// With `isClockHeld` the page's clock and timers stand until page.clock.runFor() moves them.
export async function openScreen(t, url, { isClockHeld = false, ...options } = {}) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 720 }, ...options });
  const page = await context.newPage();
  page.setDefaultTimeout(patience);
  page.faults = [];
  t.after(async () => {
    await context.close();
    assert.deepEqual(page.faults, [], url);
  });
  if (isClockHeld) {
    await page.clock.install({ time: "2026-01-05T09:00:00Z" });
    await page.clock.pauseAt("2026-01-05T09:00:01Z");
  }
  page.on("pageerror", (error) => page.faults.push(`error: ${error}`));
  page.on("console", (message) => {
    if (/Content Security Policy|Trusted/.test(message.text())) page.faults.push(`policy: ${message.text()}`);
  });
  page.on("dialog", (dialog) => {
    page.faults.push(`dialog: ${dialog.message()}`);
    dialog.dismiss();
  });
  await page.goto(url);
  if (options.javaScriptEnabled !== false) await page.evaluate(() => (window.marker = "untouched"));
  return page;
}

// A screen of a show of these values: {sandbox, deck, show, page}.
export async function openValues(t, values, ...options) {
  const shown = await showValues(t, values, ...options);
  return { ...shown, page: await openScreen(t, shown.show.url) };
}

// Whether the page is the one that was opened, never loaded anew since.
export const isUntouched = (page) => page.evaluate(() => window.marker === "untouched");

export function shownText(page, id) {
  return page.evaluate((name) => document.getElementById(name)?.innerText.trim(), id);
}

export function waitForText(page, id, text, timeout = patience) {
  return page.waitForFunction(
    ([name, wanted]) => document.getElementById(name)?.innerText.trim() === wanted,
    [id, text],
    { timeout, polling: 25 },
  );
}

export function waitForSlide(page, slide, timeout = patience) {
  return page.waitForFunction(
    (id) => document.querySelector(".frame.current > .slide")?.id === id,
    `s${slide}`,
    { timeout, polling: 25 },
  );
}

// Gathers all that the page paints, each different picture once.
export async function film(page) {
  const seen = new Set();
  const session = await page.context().newCDPSession(page);
  session.on("Page.screencastFrame", ({ data, sessionId }) => {
    seen.add(data);
    session.send("Page.screencastFrameAck", { sessionId }).catch(() => {});
  });
  await session.send("Page.startScreencast", { format: "png", everyNthFrame: 1 });
  await until("the first picture", () => seen.size > 0);
  return {
    seen,
    async end() {
      await session.send("Page.stopScreencast");
      return [...seen];
    },
  };
}
