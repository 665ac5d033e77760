// Charts on a screen: drawn at once, moved to new values, gone without a trace.

import assert from "node:assert/strict";
import { test } from "node:test";
import { isUntouched, openScreen, useBrowser } from "../support/browser.mjs";
import { elementId, holdStill } from "../support/deck.mjs";
import { at, bareDeck, textSource } from "../support/value_deck.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

const frame = 20; // ms

// The plant sample, whose chart "Output chart" on slide 3 shows a file. The page's clock is held: a chart moves as
// far as the test moves it.
async function openChart(t) {
  const { sandbox, deck } = bareDeck(t, "plant");
  holdStill(deck);
  const write = (...pallets) => {
    const rows = pallets.map((value, i) => [["North", "South", "West", "East"][i], `${value}`, "50"]);
    sandbox.write("plant/output.txt", [["Hour", "Pallets", "Target"], ...rows]);
  };
  write(20, 40, 80);
  sandbox.done("connection", deck, "add", ...textSource("Output", "output.txt"));
  sandbox.done("link", deck, ...at(3, "Output chart"), "--connection", "001", "--chart");
  const show = await sandbox.show(deck, "--slide", 3);
  const page = await openScreen(t, show.url, { isClockHeld: true });
  await page.evaluate((id) => {
    window.chart = () => document.querySelector(`#${id} > deck-chart`);
    // Without the mark of the legend.
    window.bars = () =>
      [...chart().shadowRoot.querySelectorAll('.drawing path[fill="#1f6f8b" i]')].filter(
        (bar) => bar.getBBox().height > 15,
      );
    window.heights = () => bars().map((bar) => bar.getBBox().height);
  }, elementId(deck, 3, "Output chart"));
  await until("the chart", async () => {
    await page.clock.runFor(frame);
    return page.evaluate(() => Boolean(chart().shadowRoot?.querySelector(".drawing svg")));
  });
  return { page, write };
}

test("a chart is drawn at once, moves to the new values of its file and stays the same element", async (t) => {
  const { page, write } = await openChart(t);
  const [first, second, third] = await page.evaluate(() => heights());
  assert.ok(Math.abs(second / first - 2) < 0.01 && Math.abs(third / first - 4) < 0.01, `${[first, second, third]}`);
  const texts = await page.evaluate(() => chart().shadowRoot.textContent);
  for (const text of ["North", "West", "Pallets", "80"]) assert.ok(texts.includes(text), `${text} in ${texts}`);

  await page.evaluate(() => (window.kept = [chart(), chart().shadowRoot.querySelector("svg"), ...bars()]));
  write(80, 40, 80);
  const seen = [];
  await until("the new value", async () => {
    await page.clock.runFor(frame);
    const [now] = await page.evaluate(() => heights());
    seen.push((now - first) / (third - first));
    return seen.at(-1) > 0.99;
  });
  assert.ok(seen.filter((way) => way > 0.01 && way < 0.99).length > 3, `it moves: ${seen}`);
  assert.ok(await page.evaluate(() => kept.every((node) => node.isConnected)), "nothing is made anew");
  assert.deepEqual(await page.evaluate(() => heights().slice(1)), [second, third]);
  write(80, 40, 80, 60);
  await until("another point", async () => {
    await page.clock.runFor(frame);
    return (await page.evaluate(() => bars().length)) === 4;
  });

  // What cannot be understood leaves the picture standing.
  await page.clock.runFor(100 * frame);
  const before = await page.evaluate(() => heights());
  await page.evaluate(() => (chart().dataset.chart = '{"series":'));
  await page.clock.runFor(10 * frame);
  assert.deepEqual(await page.evaluate(() => heights()), before);
  assert.ok(await isUntouched(page));
});

test("charts that leave take everything with them", async (t) => {
  const { page } = await openChart(t);
  await page.clock.resume();
  const devtools = await page.context().newCDPSession(page);
  const counts = async () => {
    await devtools.send("HeapProfiler.collectGarbage");
    const { nodes, jsEventListeners } = await devtools.send("Memory.getDOMCounters");
    return { nodes, jsEventListeners };
  };
  const comeAndGo = (times) =>
    page.evaluate(async (rounds) => {
      for (let i = 0; i < rounds; ++i) {
        const another = chart().cloneNode(true);
        document.body.append(another);
        await new Promise((done) => requestAnimationFrame(done));
        another.remove();
      }
    }, times);
  await comeAndGo(20);
  const before = await counts();
  await comeAndGo(100);
  const after = await counts();
  // One chart has some sixty nodes.
  assert.ok(after.nodes - before.nodes < 100, `${before.nodes} nodes became ${after.nodes}`);
  assert.ok(after.jsEventListeners - before.jsEventListeners < 10, JSON.stringify([before, after]));
});
