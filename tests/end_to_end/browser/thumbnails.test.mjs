// The small slides of the remote control look as the slides do.

import assert from "node:assert/strict";
import { test } from "node:test";
import { openScreen, useBrowser, waitForSlide } from "../support/browser.mjs";
import { holdStill } from "../support/deck.mjs";
import { difference } from "../support/pictures.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

// The smoothing of edges in two sizes makes up half of this; text that is only centred differs by twice as much.
const tolerance = 0.014;

const slides = 3;

test("a slide in small is the slide, whatever surrounds it", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("shop");
  holdStill(deck);
  const show = await sandbox.show(deck, "--slide", 1);
  const screen = await openScreen(t, show.url);
  const remote = await openScreen(t, `${show.url}remote#token=${show.token}`, {
    viewport: { width: 390, height: 844 },
    deviceScaleFactor: 2,
  });
  // What a page may have set around it; and whole pixels, without the button's frame and number.
  await remote.addStyleTag({
    content: `#thumbnails { grid-template-columns: 320px; }
      .thumbnail { width: 320px; height: 180px; border: 0; border-radius: 0; }
      .thumbnail > span { visibility: hidden; }
      .thumbnail { direction: rtl; text-align: right; text-indent: 9px; text-transform: uppercase; white-space: nowrap;
        font-style: italic; line-height: 3; letter-spacing: 2px; word-spacing: 9px; }`,
  });
  for (let slide = 1; slide <= slides; ++slide) {
    await show.command(`goto/${slide}`);
    await waitForSlide(screen, slide);
    await until("the end of the transition", () => screen.evaluate(() => document.getAnimations().length === 0));
    const small = remote.locator(".thumbnail > div").nth(slide - 1);
    await until(`slide ${slide} in small`, () => small.evaluate((div) => Boolean(div.shadowRoot?.querySelector(".slide"))));
    const differs = await difference(screen, await screen.locator("#stage").screenshot(), await small.screenshot());
    assert.ok(differs < tolerance, `slide ${slide} differs by ${differs}`);
  }
  assert.deepEqual([...screen.faults, ...remote.faults], []);
});
