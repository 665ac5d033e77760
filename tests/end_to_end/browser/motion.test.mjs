// What moves on a screen: texts that scroll, and slides that leave.

import assert from "node:assert/strict";
import { test } from "node:test";
import { elementId } from "../support/deck.mjs";
import { openScreen, useBrowser, waitForSlide } from "../support/browser.mjs";
import { sampleDeck, valueDeck } from "../support/value_deck.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

// The texts laid over shapes that glide, as "old > new", in the order in which they came.
const glidesOf = (page) => page.evaluate(() => window.glides);

// Waits until the shape shows another value, which then is told.
async function nextValue(page, id) {
  const shown = await page.evaluate((name) => document.getElementById(name).innerText.trim(), id);
  const isOther = ([name, old]) => {
    const text = document.getElementById(name).innerText.trim();
    return text !== old && text;
  };
  return (await page.waitForFunction(isOther, [id, shown], { polling: 5 })).jsonValue();
}

async function openScrolling(t, options) {
  const { sandbox, deck } = valueDeck(t, "a", "b", "c", "d");
  sandbox.done("slide", deck, 1, "--scroll", 1, "--step", 1, "--time", 300);
  const show = await sandbox.show(deck);
  const page = await openScreen(t, show.url, { isClockHeld: true, ...options });
  const id = elementId(deck, 1, "p1 Item");
  await page.evaluate((name) => {
    window.glides = [];
    new MutationObserver((records) => {
      for (const layer of records.flatMap(({ addedNodes }) => [...addedNodes])) {
        if (!layer.classList?.contains("glide") || layer.previousElementSibling?.id !== name) continue;
        glides.push([...layer.children].map((text) => text.textContent.trim()).join(" > "));
      }
    }).observe(document.getElementById("stage"), { childList: true, subtree: true });
  }, id);
  return { page, id };
}

test("scrolled texts glide in, unless they come too fast", async (t) => {
  const { page, id } = await openScrolling(t);
  await nextValue(page, id); // the first change may glide at any pace
  const before = (await glidesOf(page)).length;
  // By the page's clock no time passes between these.
  for (let i = 0; i < 3; ++i) await nextValue(page, id);
  assert.equal((await glidesOf(page)).length, before);
  await until("a glide", async () => {
    await page.clock.runFor(600);
    await nextValue(page, id);
    return (await glidesOf(page)).length > before;
  });
  assert.ok((await glidesOf(page)).every((glide) => /^(a > b|b > c|c > d|d > |d > a| > a)$/.test(glide)));

  // Where motion is not wanted, nothing glides.
  const calm = await openScrolling(t, { reducedMotion: "reduce" });
  for (let i = 0; i < 5; ++i) {
    await calm.page.clock.runFor(1000);
    await nextValue(calm.page, calm.id);
  }
  assert.deepEqual(await glidesOf(calm.page), []);
});

test("what was hidden on a slide stays so while the slide leaves", async (t) => {
  const { sandbox, deck } = sampleDeck(t, "shop");
  const show = await sandbox.show(deck);
  const page = await openScreen(t, show.url, { isClockHeld: true });
  const id = elementId(deck, 1, "p1 Item");
  // The first state brings rules of its own.
  await waitForSlide(page, 1);
  await page.evaluate((name) => {
    document.getElementById("rules").textContent = `#${name}{visibility:hidden}`;
    window.seen = [];
    new MutationObserver(() => {
      const element = document.getElementById(name);
      if (element?.closest(".leaving")) window.seen.push(getComputedStyle(element).visibility);
    }).observe(document.getElementById("stage"), { subtree: true, attributeFilter: ["class"] });
  }, id);
  await show.command("next");
  await waitForSlide(page, 2);
  await page.waitForFunction(() => window.seen.length > 0 && !document.querySelector(".leaving"));
  assert.deepEqual([...new Set(await page.evaluate(() => window.seen))], ["hidden"]);
});
