// The remote control: steering from a phone, also when nobody else is let in.

import assert from "node:assert/strict";
import { test } from "node:test";
import { openScreen, shownText, useBrowser, waitForSlide, waitForText } from "../support/browser.mjs";
import { elementId, holdStill } from "../support/deck.mjs";
import { sampleDeck, setValues, showValues, valueDeck } from "../support/value_deck.mjs";
import { refresh, until } from "../support/wait.mjs";

useBrowser();

const phone = { viewport: { width: 390, height: 844 }, hasTouch: true };

// The small pictures hold what the slides hold.
const showsSmall = (remote, text) =>
  until("slide 1 in small", () =>
    remote.evaluate((part) => document.querySelector(".thumbnail > div").shadowRoot?.textContent.includes(part), text),
  );

test("a phone steers the show once it has been given the token", async (t) => {
  const { show } = await showValues(t, ["one"]);
  const screen = await openScreen(t, show.url);
  const remote = await openScreen(t, `${show.url}remote`, phone);
  await remote.fill("#token", "wrong");
  await remote.getByText("Continue").tap();
  await remote.locator("#next").tap();
  await remote.getByText("This token is not the show's.").waitFor();
  await remote.locator("#next").tap();
  await remote.fill("#token", show.token);
  await remote.getByText("Continue").tap();
  await waitForSlide(screen, 2);
  await remote.getByText("2 / 3").waitFor();

  await remote.getByText("Black").tap();
  await screen.waitForFunction(() => document.documentElement.dataset.blank === "black");
  await remote.locator("#blanks [aria-pressed=true]").tap();
  await screen.waitForFunction(() => document.documentElement.dataset.blank === "none");
  await remote.locator(".thumbnail").nth(2).tap();
  await waitForSlide(screen, 3);
  await remote.locator(".thumbnail[aria-current=true]", { hasText: "3" }).waitFor();
  await showsSmall(remote, "one");
  assert.match(await remote.locator("#elapsed").innerText(), /^0:\d\d$/);

  const given = await openScreen(t, `${show.url}remote#token=${show.token}`, phone);
  assert.ok(!given.url().includes("token"));
  await given.locator("#previous").click();
  await waitForSlide(screen, 2);
  const { overflow, fits } = await given.evaluate(() => ({
    overflow: document.documentElement.scrollWidth - innerWidth,
    fits: document.getElementById("thumbnails").getBoundingClientRect().bottom <= innerHeight,
  }));
  assert.equal(overflow, 0);
  assert.ok(fits);
});

test("it comes in and steers when all seats are taken, and counts as no screen", async (t) => {
  const { sandbox, deck } = valueDeck(t, "one");
  sandbox.before = ["prlimit", "--nofile=320:320", ...sandbox.before];
  const show = await sandbox.show(deck);
  const seats = Number(show.error.match(/takes (\d+) connections/)[1]);
  for (let i = 0; i < seats; ++i) await show.events("/screen/events").next("its first event", () => true);
  assert.equal((await show.get("/")).status, 503);

  const remote = await openScreen(t, `${show.url}remote#token=${show.token}`, phone);
  await waitForSlide(remote, 1);
  await waitForText(remote, elementId(deck, 1, "p1 Item"), "one");
  await remote.locator("#next").tap();
  await waitForSlide(remote, 2);
  // With its styles, and the slides in small.
  assert.ok(await remote.evaluate(() => document.getElementById("slide-styles").sheet.cssRules.length > 0));
  await showsSmall(remote, "one");
  setValues(sandbox, "live");
  await remote.locator("#previous").tap();
  await waitForText(remote, elementId(deck, 1, "p1 Item"), "live", refresh);
  assert.equal(await shownText(remote, "position"), "1 / 3");
  const { screens } = (await show.get("/api/v1/health", { Authorization: `Bearer ${show.token}` })).json;
  assert.equal(screens.length, seats);
});

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
  const { sandbox, deck } = sampleDeck(t, "shop");
  holdStill(deck);
  const show = await sandbox.show(deck, "--slide", 1);
  const screen = await openScreen(t, show.url);
  const remote = await openScreen(t, `${show.url}remote#token=${show.token}`, phone);
  // What a page may have set around it.
  await remote.addStyleTag({
    content: `.thumbnail { direction: rtl; text-align: right; text-indent: 9px; text-transform: uppercase;
      white-space: nowrap; font-style: italic; line-height: 3; letter-spacing: 2px; word-spacing: 9px; }`,
  });
  for (const slide of [1, 2, 3]) {
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
});
