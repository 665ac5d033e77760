// The screen as a window: its size, its pointer, its keys and its end.

import assert from "node:assert/strict";
import { test } from "node:test";
import { elementId } from "../support/deck.mjs";
import { isUntouched, openScreen, useBrowser, waitForSlide, waitForText } from "../support/browser.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeValueDeck, setValues, showValues } from "../support/value_deck.mjs";
import { refresh, within } from "../support/wait.mjs";

useBrowser();

test("the slide fills windows of any size without scroll bars, in its own proportions", async (t) => {
  const sandbox = new Sandbox(t);
  const show = await sandbox.show(makeValueDeck(sandbox, "wide ".repeat(500)));
  const page = await openScreen(t, show.url);
  for (const [width, height] of [
    [1280, 720],
    [1920, 1080],
    [1024, 768],
    [390, 844],
    [2560, 300],
    [320, 240],
    [3840, 2160],
  ]) {
    await page.setViewportSize({ width, height });
    const { stage, overflow } = await page.evaluate(() => {
      const { left, top, right, bottom } = document.getElementById("stage").getBoundingClientRect();
      scrollTo(1000, 1000);
      const root = document.scrollingElement;
      const overflow = [root.clientWidth - innerWidth, root.clientHeight - innerHeight, scrollX, scrollY];
      return { stage: { left, top, right, bottom }, overflow };
    });
    const told = `${width}x${height}: ${JSON.stringify(stage)}`;
    const near = (a, b) => Math.abs(a - b) < 1;
    const shownWidth = stage.right - stage.left;
    assert.deepEqual(overflow, [0, 0, 0, 0], told);
    assert.ok(near(shownWidth, Math.min(width, (height * 16) / 9)), told);
    assert.ok(near(stage.bottom - stage.top, (shownWidth * 9) / 16), told);
    assert.ok(near(stage.left, width - stage.right) && near(stage.top, height - stage.bottom), told);
  }
});

// Screens tell what they paint by POST as well.
const isCommand = (request) => request.method() === "POST" && !request.url().endsWith("/painted");

const cursorOver = (page, id) =>
  page.evaluate(
    (name) => getComputedStyle(name ? document.getElementById(name) : document.documentElement).cursor,
    id,
  );

test("a kiosk show has no pointer and no keys but Escape", async (t) => {
  const { deck, show } = await showValues(t, ["a"], "--kiosk");
  const page = await openScreen(t, show.operatorUrl);
  await page.mouse.move(400, 300);
  for (const id of [null, "stage", "s1", elementId(deck, 1, "p1 Item")])
    assert.equal(await cursorOver(page, id), "none", id);
  const posts = [];
  page.on("request", (request) => isCommand(request) && posts.push(new URL(request.url()).pathname));
  for (const key of ["ArrowRight", "End", "b", "2", "Enter"]) await page.keyboard.press(key);
  await page.mouse.click(400, 300);
  await page.keyboard.press("Escape");
  assert.deepEqual(await within("the end", show.ended), { code: 0, signal: null });
  assert.deepEqual(posts, ["/api/v1/end"]);
});

test("elsewhere the pointer shows while it moves and goes when it rests", async (t) => {
  const sandbox = new Sandbox(t);
  const show = await sandbox.show(makeValueDeck(sandbox, "a"));
  const page = await openScreen(t, show.url, { isClockHeld: true });
  await page.mouse.move(400, 300);
  await page.clock.runFor(2900);
  assert.notEqual(await cursorOver(page), "none");
  await page.clock.runFor(100);
  assert.equal(await cursorOver(page), "none");
  await page.mouse.move(500, 300);
  assert.notEqual(await cursorOver(page), "none");
});

const blankOn = (page) =>
  page.evaluate(() => getComputedStyle(document.getElementById("cover")).display !== "none");

test("with the token, keys steer the show on every screen", async (t) => {
  const sandbox = new Sandbox(t);
  const show = await sandbox.show(makeValueDeck(sandbox, "a"));
  const page = await openScreen(t, show.operatorUrl);
  const other = await openScreen(t, show.url);
  assert.ok(!page.url().includes(show.token), "the token does not stay in sight");
  const moves = [
    [["ArrowRight"], 2],
    [["PageDown"], 3],
    [["ArrowLeft"], 2],
    [["Home"], 1],
    [["End"], 3],
    [["2", "Enter"], 2],
    [["p"], 1],
    [[" "], 2],
    [["9", "9", "Enter"], 2],
    [["1", "Enter"], 1],
  ];
  for (const [keys, slide] of moves) {
    for (const key of keys) await page.keyboard.press(key);
    for (const each of [page, other])
      await waitForSlide(each, slide).catch((error) => assert.fail(`${keys}: ${error.message}`));
  }
  await page.reload();
  await page.keyboard.press("ArrowRight");
  await waitForSlide(other, 2); // the token outlives a reload
  await page.keyboard.press("Home");
  await waitForSlide(other, 1);
  for (const [key, colour] of [
    ["b", "rgb(0, 0, 0)"],
    ["w", "rgb(255, 255, 255)"],
  ]) {
    const isBlank = async (wanted) => {
      for (const each of [page, other])
        await each.waitForFunction(
          ([shown, background]) => {
            const style = getComputedStyle(document.getElementById("cover"));
            return (style.display !== "none") === shown && (!shown || style.backgroundColor === background);
          },
          [wanted, colour],
          { polling: 25 },
        );
    };
    await page.keyboard.press(key);
    await isBlank(true);
    await page.keyboard.press(key.toUpperCase());
    await isBlank(false);
  }
  // Two presses before the screen has heard of the first.
  await page.evaluate(() => {
    for (const key of ["b", "b"]) dispatchEvent(new KeyboardEvent("keydown", { key }));
  });
  await page.mouse.click(200, 200);
  await waitForSlide(other, 2);

  // Behind the last slide the screen is black and says so; one step further the show ends.
  const end = (each) => each.getByText("End of slide show");
  await page.keyboard.press("End");
  await waitForSlide(other, 3);
  assert.equal(await end(other).isVisible(), false);
  await page.keyboard.press("ArrowRight");
  await end(other).waitFor();
  assert.ok(await end(await openScreen(t, show.url)).isVisible(), "who comes late sees it as well");
  await page.keyboard.press("ArrowLeft");
  await end(other).waitFor({ state: "hidden" });
  await waitForSlide(other, 3);
  assert.ok(await isUntouched(other));
  for (const key of ["ArrowRight", "ArrowRight"]) await page.keyboard.press(key);
  for (const each of [page, other]) await end(each).waitFor();
  assert.deepEqual(await within("the end", show.ended), { code: 0, signal: null });
});

test("without the token keys do nothing; with a wrong one, nothing either", async (t) => {
  const { sandbox, deck, show } = await showValues(t, ["a"]);
  for (const url of [show.url, `${show.url}#token=wrong`]) {
    const page = await openScreen(t, url);
    const answers = [];
    page.on("response", (response) => isCommand(response.request()) && answers.push(response.status()));
    for (const key of ["ArrowRight", "End", "3", "Enter", "b", "Escape"]) await page.keyboard.press(key);
    await page.mouse.click(200, 200);
    // The screen goes on as before, and so does the show.
    setValues(sandbox, url);
    await waitForText(page, elementId(deck, 1, "p1 Item"), url, refresh);
    assert.ok(answers.every((status) => status === 401), `${answers}`);
    assert.equal(answers.length > 0, url !== show.url);
    assert.equal(await blankOn(page), false);
    const { position, running } = await show.state();
    assert.deepEqual([position, running], [1, true]);
  }
});
