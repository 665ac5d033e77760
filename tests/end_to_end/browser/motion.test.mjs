// What moves on a screen: texts that scroll, and slides that leave.

import assert from "node:assert/strict";
import { test } from "node:test";
import { elementId } from "../support/deck.mjs";
import { openScreen, useBrowser, waitForSlide, waitForText } from "../support/browser.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeValueDeck } from "../support/value_deck.mjs";

useBrowser();

// What every frame of some seconds showed: the values that came, the texts laid over
// shapes that glide, and for how long the value before each of these had stood.
function watchGlides(page, id, seconds) {
  return page.evaluate(
    ([name, time]) =>
      new Promise((resolve) => {
        const values = new Set();
        const glides = new Set();
        const pauses = new Map(); // by layer
        let [shown, since, pause] = [null, -Infinity, Infinity];
        const start = performance.now();
        const look = (now) => {
          const text = document.getElementById(name).innerText.trim();
          if (text !== shown) [shown, since, pause] = [text, now, now - since];
          values.add(text);
          for (const layer of document.querySelectorAll(".glide")) {
            if (!pauses.has(layer)) pauses.set(layer, pause);
            glides.add([...layer.children].map((text) => text.textContent.trim()).join(" > "));
          }
          if (now - start < time) requestAnimationFrame(look);
          else resolve({ values: [...values], glides: [...glides], pauses: [...pauses.values()] });
        };
        requestAnimationFrame(look);
      }),
    [id, seconds * 1000],
  );
}

test("scrolled texts glide in, unless they come too fast or motion is not wanted", async (t) => {
  for (const [time, reducedMotion, isGliding] of [
    [1000, "no-preference", true],
    [1000, "reduce", false],
    [100, "no-preference", false],
  ]) {
    const sandbox = new Sandbox(t);
    const deck = makeValueDeck(sandbox, "a", "b", "c", "d");
    sandbox.done("slide", deck, 1, "--scroll", 1, "--step", 1, "--time", time);
    const show = await sandbox.show(deck);
    const page = await openScreen(t, show.url, { reducedMotion });
    const id = elementId(deck, 1, "p1 Item");
    await waitForText(page, id, "b");
    await waitForText(page, id, "a"); // the first change may glide at any pace
    const { values, glides, pauses } = await watchGlides(page, id, 4.5);
    assert.ok(values.length >= 4, `${time} ms: ${values}`);
    if (isGliding) assert.ok(glides.includes("b > c"), `${glides}`);
    else if (reducedMotion === "reduce") assert.deepEqual(glides, []);
    // A busy machine may bring a value late, which then glides; 600 ms less some frames.
    else assert.ok(pauses.every((pause) => pause > 500), `${time} ms: glides after ${pauses}`);
    assert.deepEqual(page.faults, []);
    await show.stop();
  }
});

test("what was hidden on a slide stays so while the slide leaves", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("shop");
  const show = await sandbox.show(deck);
  const page = await openScreen(t, show.url);
  const id = elementId(deck, 1, "p1 Item");
  await page.evaluate((name) => {
    document.getElementById("rules").textContent = `#${name}{visibility:hidden}`;
    window.seen = [];
    const look = () => {
      const element = document.getElementById(name);
      if (element?.closest(".leaving")) window.seen.push(getComputedStyle(element).visibility);
      requestAnimationFrame(look);
    };
    look();
  }, id);
  await show.command("next");
  await waitForSlide(page, 2);
  await page.waitForFunction(() => window.seen.length > 0 && !document.querySelector(".leaving"));
  assert.deepEqual([...new Set(await page.evaluate(() => window.seen))], ["hidden"]);
});
