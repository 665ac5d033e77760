// Screens that look at something of their own: a slide, a shape.

import assert from "node:assert/strict";
import { test } from "node:test";
import { editPart, elementId } from "../support/deck.mjs";
import { isUntouched, openScreen, shownText, useBrowser, waitForSlide, waitForText } from "../support/browser.mjs";
import { setValues, showValues, valueDeck } from "../support/value_deck.mjs";
import { refresh } from "../support/wait.mjs";

useBrowser();

test("a screen keeps to its slide, also a hidden one, while the show goes its way", async (t) => {
  const { sandbox, deck } = valueDeck(t, "one", "two", "three");
  editPart(deck, "ppt/slides/slide1.xml", (xml) => xml.replace("<p:sld ", '<p:sld show="0" '));
  const show = await sandbox.show(deck, "--slide", 3);
  const pinned = await openScreen(t, `${show.url}?slide=1`);
  const mirror = await openScreen(t, show.url);
  await waitForSlide(pinned, 1);
  await waitForSlide(mirror, 3);
  const id = elementId(deck, 1, "p2 Item");
  setValues(sandbox, "one", "fresh", "three");
  await waitForText(pinned, id, "fresh", refresh);

  await show.command("goto/2");
  await waitForSlide(mirror, 2);
  await waitForSlide(pinned, 1);
  await show.command("blank/black");
  await pinned.waitForFunction(() => document.documentElement.dataset.blank === "black");

  for (const query of ["slide=99", "slide=x", "shape=nothing"]) {
    const calm = await openScreen(t, `${show.url}?${query}`);
    assert.equal(await calm.evaluate(() => document.body.innerText.trim()), "", query);
  }
  assert.ok(await isUntouched(pinned));
});

test("a shape alone fills its window upon nothing, and stays live", async (t) => {
  const { sandbox, deck, show } = await showValues(t, ["one", "two"], "--slide", 2);
  const page = await openScreen(t, `${show.url}?shape=p2%20Item`);
  const id = elementId(deck, 1, "p2 Item");
  setValues(sandbox, "one", "alone");
  await waitForText(page, id, "alone", refresh);
  const seen = await page.evaluate((name) => {
    const box = document.getElementById(name).getBoundingClientRect();
    const grounds = ["html", "body", ".slide"].map(
      (selector) => getComputedStyle(document.querySelector(selector)).backgroundColor,
    );
    return { shapes: document.querySelectorAll(".slide > *").length, box, grounds };
  }, id);
  assert.equal(seen.shapes, 1);
  assert.ok(Math.abs(seen.box.left) < 1 && Math.abs(seen.box.right - 1280) < 1, JSON.stringify(seen.box));
  assert.deepEqual(new Set(seen.grounds), new Set(["rgba(0, 0, 0, 0)"]));
  // A blank screen is the show's, not an overlay's.
  await show.command("blank/black");
  setValues(sandbox, "one", "still there");
  await waitForText(page, id, "still there", refresh);
  assert.ok(!(await page.locator("#cover").isVisible()));
});

const emptyData = "Value\n";

test("when every slide has hidden itself the deck's background shows, until data return", async (t) => {
  const { sandbox, deck } = valueDeck(t, "one", "two");
  sandbox.done("slide", deck, 1, "--hide-when-no-data", "on");
  for (const slide of [2, 3]) {
    editPart(deck, `ppt/slides/slide${slide}.xml`, (xml) => xml.replace("<p:sld ", '<p:sld show="0" '));
  }
  const show = await sandbox.show(deck);
  const page = await openScreen(t, show.url);
  await waitForSlide(page, 1);
  sandbox.write("shop/values.txt", emptyData);
  await waitForSlide(page, 0, refresh);
  assert.equal(await page.evaluate(() => document.querySelector(".frame.current").innerText.trim()), "");
  assert.equal((await show.get("/readyz")).status, 200);
  assert.equal((await show.health()).position, 0);
  setValues(sandbox, "back", "two");
  await waitForSlide(page, 1, refresh);
  await waitForText(page, elementId(deck, 1, "p1 Item"), "back", refresh);
  assert.ok(await isUntouched(page));

  const other = await sandbox.show(deck, "--when-empty", 3);
  const second = await openScreen(t, other.url);
  sandbox.write("shop/values.txt", emptyData);
  await waitForSlide(second, 3, refresh);
  setValues(sandbox, "back");
  await waitForSlide(second, 1, refresh);
});

test("slides change by their transitions, on screens that are awake", async (t) => {
  const { sandbox, deck } = valueDeck(t, "one");
  const transition = (slide, xml) =>
    editPart(deck, `ppt/slides/slide${slide}.xml`, (old) =>
      old.replace(/<p:transition.*?<\/p:transition>|<p:transition[^>]*\/>/s, "").replace("</p:clrMapOvr>", `</p:clrMapOvr>${xml}`),
    );
  transition(2, '<p:transition spd="slow"><p:push dir="u"/></p:transition>');
  transition(3, "<p:transition/>");
  const show = await sandbox.show(deck);
  // With the clock held, no screen takes a busy machine for one that slept.
  const page = await openScreen(t, show.url, { isClockHeld: true });
  const calm = await openScreen(t, show.url, { isClockHeld: true, reducedMotion: "reduce" });
  await waitForSlide(page, 1);
  await waitForSlide(calm, 1);
  for (const each of [page, calm]) {
    await each.evaluate(() => {
      window.begun = [];
      const { animate } = Element.prototype;
      Element.prototype.animate = function (...how) {
        const motion = animate.apply(this, how);
        const { effect } = motion;
        begun.push({
          slide: this.firstElementChild.id,
          duration: effect.getTiming().duration,
          from: effect.getKeyframes()[0].transform,
        });
        return motion;
      };
    });
  }
  const motions = (each = page) => each.evaluate(() => begun.splice(0));
  await show.command("next");
  await waitForSlide(page, 2);
  assert.deepEqual(await motions(), [
    { slide: "s1", duration: 1000, from: "translate(0px, 0px)" },
    { slide: "s2", duration: 1000, from: "translate(0%, 100%)" },
  ]);
  await waitForSlide(calm, 2);
  assert.deepEqual(await motions(calm), []);
  // It ends by itself, and the frame that left is gone.
  await page.waitForFunction(() => document.getAnimations().length === 0);
  assert.equal(await page.evaluate(() => document.querySelectorAll(".leaving").length), 0);
  await show.command("next");
  await waitForSlide(page, 3);
  assert.deepEqual(await motions(), []);
  await show.command("previous");
  await show.command("previous");
  await waitForSlide(page, 1);
  assert.equal(await shownText(page, elementId(deck, 1, "p1 Item")), "one");
});
