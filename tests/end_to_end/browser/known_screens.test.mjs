// Shows that know their screens: how one is set up, goes on, and is cut off.

import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { test } from "node:test";
import { openScreen, useBrowser, waitForSlide } from "../support/browser.mjs";
import { valueDeck } from "../support/value_deck.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

// A show with a list of screens, and the addresses that set them up.
async function knownShow(t, ...names) {
  const { sandbox, deck } = valueDeck(t, "one", "two");
  const list = sandbox.path("screens.txt");
  const tokens = names.map((name) => sandbox.done("screen", "add", name, "--screens", list).match(/#token=(\S+)/)[1]);
  const show = await sandbox.show(deck, "--screens", list);
  return { sandbox, list, show, tokens, addresses: tokens.map((token) => `${show.url}#token=${token}`) };
}

// A page that is let in loads itself anew.
const go = (page, address) => page.goto(address, { waitUntil: "commit" });
async function openAt(t, address) {
  const page = await openScreen(t, "about:blank");
  await go(page, address);
  return page;
}

const stateIn = (show) => async (name) => {
  const { json } = await show.get("/api/v1/status");
  const found = json.screens.find((screen) => screen.name === name);
  return found && `${found.level} ${found.state}`;
};

test("an address sets a screen up for good, and revoking it takes the picture away at once", async (t) => {
  const { sandbox, list, show, addresses } = await knownShow(t, "HALL1", "Büro 2");
  assert.match(sandbox.done("screen", "list", "--screens", list), /^HALL1\nBüro 2\n$/);
  const page = await openAt(t, addresses[0]);
  await waitForSlide(page, 1);
  assert.equal(page.url(), show.url, "the token stays in no address");
  assert.equal(await page.evaluate(() => document.cookie + JSON.stringify({ ...localStorage }) + JSON.stringify({ ...sessionStorage })).then((kept) => kept.match(/[0-9a-f]{24}/)), null);
  await page.goto(show.url);
  await waitForSlide(page, 1);
  const stateOf = stateIn(show);
  await until("the screen's report", async () => (await stateOf("HALL1")) === "good current");
  assert.match(await stateOf("Büro 2"), /missing/);
  const metrics = (await show.get("/metrics")).text;
  assert.match(metrics, /^lumenfold_screen_present\{screen="HALL1"\} 1$/m);
  assert.match(metrics, /^lumenfold_screen_present\{screen="Büro 2"\} 0$/m);

  const other = await openAt(t, addresses[1]);
  await waitForSlide(other, 1);
  await other.evaluate(() => (window.marker = "untouched"));
  assert.equal(sandbox.done("screen", "revoke", "hall1", "--screens", list), "hall1 may not look any more.\n");
  await page.waitForFunction(() => /screen add/.test(document.body.innerText));
  assert.equal(await page.locator(".slide").count(), 0);
  assert.equal(await stateOf("HALL1"), undefined);
  assert.equal(await other.evaluate(() => window.marker), "untouched", "nobody else is cut off");

  // A new address lets it in again, in the same window.
  const again = sandbox.done("screen", "add", "HALL1", "--screens", list, "--url", `${show.url}?slide=2`);
  await until("the new token to be known", async () => {
    await go(page, "about:blank");
    await go(page, again.match(/^http\S+$/m)[0]);
    return page.evaluate(() => document.querySelector(".frame.current > .slide")?.id === "s2");
  });
  // What was there already may become another screen.
  await go(other, "about:blank");
  await go(other, again.match(/^http\S+$/m)[0]);
  await waitForSlide(other, 2);
  await until("one name for both", async () => /missing/.test(await stateOf("Büro 2")));
});

test("who steers looks as well, also after the show has begun anew", async (t) => {
  const { sandbox, list, show } = await knownShow(t, "HALL1");
  const page = await openScreen(t, show.url);
  assert.match(await page.locator("main").innerText(), /This screen is not known here/);
  await page.locator("input").fill("nothing");
  await page.locator("button").click();
  await page.waitForFunction(() => /not known, or not any more/.test(document.body.innerText));
  const painted = page.waitForResponse(/\/screen\/painted/); // the page has its slide before it hears keys
  await page.locator("input").fill(show.token);
  await page.locator("button").click();
  await painted;
  await waitForSlide(page, 1);
  await page.keyboard.press("ArrowRight");
  await waitForSlide(page, 2);
  const remote = await openAt(t, `${show.url}remote#token=${show.token}`);
  await waitForSlide(remote, 2);
  assert.equal((await show.get("/api/v1/state")).status, 401);
  assert.equal((await show.get("/api/v1/state", { Authorization: `Bearer ${show.token}` })).status, 200);

  const { port, token } = show;
  await show.stop();
  sandbox.write("token", token);
  const again = await sandbox.show(sandbox.path("shop/shop.pptx"), "--screens", list, "--port", port, "--token-file", sandbox.path("token"));
  await waitForSlide(page, 1);
  await waitForSlide(remote, 1);
  await again.stop();
});

test("a damaged list changes nothing, and says so in the errors log", async (t) => {
  const { sandbox, list, show, tokens } = await knownShow(t, "HALL1", "HALL2");
  const asScreen = async (i) => (await show.get("/screen/check", { Cookie: `lumenfold_screen=${tokens[i]}` })).status;
  const good = readFileSync(list, "utf8");
  writeFileSync(list, `${good}HALL3\n`);
  await until("the complaint", () => sandbox.errorLog().some((entry) => /line 5: a screen's line is/.test(entry)));
  assert.deepEqual([await asScreen(0), await asScreen(1)], [204, 204]);
  const begun = sandbox.run("show", sandbox.path("shop/shop.pptx"), "--port", 0, "--screens", list);
  assert.equal(begun.code, 1);
  assert.match(begun.error, /screens\.txt, line 5: /);
  const lines = good.split("\n");
  writeFileSync(list, lines.filter((line) => !line.includes("HALL1")).join("\n"));
  await until("the new list", async () => (await asScreen(0)) === 401);
  assert.equal(await asScreen(1), 204);
  const { code, error } = sandbox.run("screen", "add", "HALL2", "--screens", list);
  assert.equal(code, 1);
  assert.match(error, /already/);
});
