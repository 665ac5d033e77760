// The small slides of the remote control look as the slides do.

import assert from "node:assert/strict";
import { test } from "node:test";
import { openScreen, useBrowser, waitForSlide } from "../support/browser.mjs";
import { holdStill } from "../support/deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

const slides = 3;

// Where the elements of a slide stand in it, in thousandths, and what of their looks is handed down to them.
const looks = (slide) => {
  const whole = slide.getBoundingClientRect();
  const inherited = ["direction", "textTransform", "fontStyle", "letterSpacing", "wordSpacing", "color", "fontFamily"];
  const drawn = [...slide.querySelectorAll("[id], [id] *")].filter((element) => element.getClientRects().length > 0);
  return drawn.map((element) => {
    const box = element.getBoundingClientRect();
    const style = getComputedStyle(element);
    const place = [box.left - whole.left, box.top - whole.top, box.width, box.height];
    return [...place.map((px) => Math.round((px / whole.width) * 1000)), ...inherited.map((name) => style[name])];
  });
};

test("a slide in small is the slide, whatever surrounds it", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("shop");
  holdStill(deck);
  const show = await sandbox.show(deck, "--slide", 1);
  const screen = await openScreen(t, show.url);
  const remote = await openScreen(t, `${show.url}remote#token=${show.token}`, { viewport: { width: 390, height: 844 } });
  // What a page may have set around it.
  await remote.addStyleTag({
    content: `.thumbnail { direction: rtl; text-align: right; text-indent: 9px; text-transform: uppercase;
      white-space: nowrap; font-style: italic; line-height: 3; letter-spacing: 2px; word-spacing: 9px; }`,
  });
  for (let slide = 1; slide <= slides; ++slide) {
    await show.command(`goto/${slide}`);
    await waitForSlide(screen, slide);
    await until("the end of the transition", () => screen.evaluate(() => document.getAnimations().length === 0));
    const small = remote.locator(".thumbnail > div").nth(slide - 1).locator(".slide");
    const large = screen.locator(".frame.current > .slide");
    const [shown, wanted] = [await small.evaluate(looks), await large.evaluate(looks)];
    assert.equal(shown.length, wanted.length);
    for (const [i, each] of wanted.entries()) {
      const isNear = each.every((value, k) => (k < 4 ? Math.abs(value - shown[i][k]) <= 2 : value === shown[i][k]));
      assert.ok(isNear, `slide ${slide}, element ${i}: ${shown[i]} in place of ${each}`);
    }
  }
  assert.deepEqual([...screen.faults, ...remote.faults], []);
});
