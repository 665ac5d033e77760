// Screens beyond a hub: the same page, which finds out by itself where to stream from.

import assert from "node:assert/strict";
import { test } from "node:test";
import { isUntouched, openScreen, useBrowser, waitForSlide, waitForText } from "../support/browser.mjs";
import { elementId } from "../support/deck.mjs";
import { Bus, Hub, freePort, publishTo } from "../support/hub.mjs";
import { setValues, valueDeck } from "../support/value_deck.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

// A show of one value behind a hub: {sandbox, show, bus, hub, item}.
async function showBehindHub(t, value) {
  const { sandbox, deck } = valueDeck(t, value);
  const bus = new Bus();
  const hub = await Hub.start(t, bus);
  const show = await sandbox.show(deck, ...publishTo(sandbox, [hub]));
  hub.port = show.port;
  return { sandbox, show, bus, hub, item: elementId(deck, 1, "p1 Item") };
}


test("a screen streams from the hub through which it came, and is counted by its reports", async (t) => {
  const { sandbox, show, hub, item } = await showBehindHub(t, "first");
  const page = await openScreen(t, `${hub.origin}/`);
  await until("the hub's stream", () => hub.paths().includes("/screen/hub/show"));
  setValues(sandbox, "second");
  await waitForText(page, item, "second");
  await show.command("next");
  await waitForSlide(page, 2);
  const counted = await until("the screen's report", async () => {
    const { screens, screensAtHubs, hub: of } = await show.health();
    return screensAtHubs === 1 && screens[0].painted && { screens, of };
  });
  assert.equal(counted.screens.length, 1);
  assert.equal(counted.screens[0].hub, true);
  assert.deepEqual(counted.screens[0].view, { kind: "show" });
  assert.equal(counted.of.nodes[0].up, true);
  assert.ok(!hub.paths().includes("/screen/events"), "it has no stream of the show's");

  const shape = await openScreen(t, `${hub.origin}/?slide=1&shape=p1%20Item`);
  await waitForText(shape, item, "second");
  await until("its view in use", async () => (await show.health()).hub.views === 2);
  setValues(sandbox, "third");
  await waitForText(shape, item, "third");
  assert.ok(await isUntouched(page));
});

test("a screen makes up for what the hub has lost", async (t) => {
  const { sandbox, bus, hub, item } = await showBehindHub(t, "first");
  const page = await openScreen(t, `${hub.origin}/`);
  await until("the hub's stream", () => bus.streams.get("show")?.size === 1);
  let lost = 0;
  bus.loses = ({ event }) => event === "shapes" && ++lost === 1;
  setValues(sandbox, "second");
  await until("a message that is lost", () => lost > 0);
  setValues(sandbox, "third");
  await waitForText(page, item, "third");
  assert.ok(await isUntouched(page));
});

test("a screen whose hub is gone goes over to the next, and then to the show", async (t) => {
  const { sandbox, deck } = valueDeck(t, "first");
  const item = elementId(deck, 1, "p1 Item");
  const bus = new Bus();
  const origins = [];
  const hubs = [await Hub.start(t, bus, origins), await Hub.start(t, bus, origins)];
  const port = await freePort();
  const direct = `http://127.0.0.1:${port}`;
  const show = await sandbox.show(deck, "--port", port, ...publishTo(sandbox, hubs, direct));
  for (const hub of hubs) {
    hub.port = show.port;
    origins.push(hub.origin);
  }
  const page = await openScreen(t, `${hubs[0].origin}/?slide=1`);
  await until("a stream", () => bus.streams.get("slide-1")?.size === 1);
  for (const [gone, next, value] of [
    [hubs[0], hubs[1].origin, "second"],
    [hubs[1], direct, "third"],
  ]) {
    gone.stop();
    setValues(sandbox, value);
    await page.waitForURL(`${next}/?slide=1`);
    await waitForText(page, item, value);
  }
});

test("a page that has grown old waits until the hub has the new one", async (t) => {
  const { show, hub } = await showBehindHub(t, "first");
  const page = await openScreen(t, `${hub.origin}/`);
  await waitForSlide(page, 1);
  await page.evaluate(() => (document.documentElement.dataset.version = "old"));
  // Who loads itself anew too soon stands without a slide.
  hub.kept = Array(2).fill('<html data-version="old">');
  await show.command("next");
  await page.waitForFunction(() => window.marker === undefined && document.querySelector(".frame.current > #s2"));
});

test("a show that is silent for three beats is asked for its state, while the hub goes on", async (t) => {
  const { bus, hub, item } = await showBehindHub(t, "first");
  const page = await openScreen(t, `${hub.origin}/`, { isClockHeld: true });
  await until("a stream", () => bus.streams.get("show")?.size === 1);
  const states = () => hub.paths().filter((path) => path.startsWith("/screen/state/")).length;
  const before = states();
  bus.loses = () => true;
  for (let i = 0; i < 4; i++) {
    await page.clock.runFor(10000);
    for (const stream of bus.streams.get("show")) stream.write("event: ping\ndata:\n\n");
  }
  assert.equal(states(), before);
  await page.clock.runFor(10000);
  await until("its question", () => states() > before);
  await waitForText(page, item, "first");
});
