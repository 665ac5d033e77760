// How a screen keeps up: intervals between frames while 50 values of scrolling shapes
// change ten times a second, and while they glide, once a second; its memory over
// 100,000 changes.
//   node bench/web/screen.mjs build/bench/bench/web/screen_source [SECONDS]

import { spawn } from "node:child_process";
import { createRequire } from "node:module";
import { createInterface } from "node:readline";

const require = createRequire(new URL("../../tests/end_to_end/package.json", import.meta.url));
const { chromium } = require("playwright-core");
const [source, seconds = "20"] = process.argv.slice(2);
const shapes = 50;

async function serve(milliseconds) {
  const child = spawn(source, [String(milliseconds)], { stdio: ["ignore", "pipe", "inherit"] });
  const { value: url } = await createInterface(child.stdout)[Symbol.asyncIterator]().next();
  return { url, stop: () => child.kill() };
}

const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM || "/usr/bin/chromium",
  args: ["--no-sandbox", "--disable-gpu", "--disable-background-networking", "--no-first-run"],
});

async function open(url) {
  const page = await browser.newPage({ viewport: { width: 1280, height: 720 } });
  await page.goto(url);
  await page.waitForFunction(() => document.querySelectorAll(".s").length > 0);
  return page;
}

async function frames(milliseconds) {
  const { url, stop } = await serve(milliseconds);
  const page = await open(url);
  const { intervals, values, gliding } = await page.evaluate(
    (time) =>
      new Promise((resolve) => {
        const intervals = [];
        const values = new Set();
        const start = performance.now();
        let last = start;
        let gliding = 0;
        const look = (now) => {
          intervals.push(now - last);
          last = now;
          if (document.querySelector(".glide")) ++gliding;
          values.add(document.querySelector(".s p").textContent);
          if (now - start < time) requestAnimationFrame(look);
          else resolve({ intervals, values: values.size, gliding });
        };
        requestAnimationFrame(look);
      }),
    Number(seconds) * 1000,
  );
  await page.close();
  stop();
  intervals.sort((a, b) => a - b);
  const at = (share) => intervals[Math.floor(share * (intervals.length - 1))].toFixed(1);
  console.log(
    `changes every ${milliseconds} ms: ${(intervals.length / Number(seconds)).toFixed(1)} frames a second, ` +
      `${Math.round((100 * gliding) / intervals.length)} % with gliding texts; interval median ${at(0.5)} ms, ` +
      `95 % ${at(0.95)}, 99 % ${at(0.99)}, longest ${at(1)}; ${(values / Number(seconds)).toFixed(1)} changes of ` +
      `${shapes} values a second seen`,
  );
}

async function memory() {
  const { url, stop } = await serve(10);
  const page = await open(url);
  const session = await page.context().newCDPSession(page);
  await session.send("Performance.enable");
  const value = () => page.evaluate(() => Number(document.querySelector(".s p").textContent) / 37);
  const first = await value();
  for (const changes of [5000, 25000, 50000, 75000, 100000]) {
    await page.waitForFunction(
      (wanted) => Number(document.querySelector(".s p").textContent) / 37 >= wanted,
      first + changes / shapes,
      { timeout: 0, polling: 200 },
    );
    await session.send("HeapProfiler.collectGarbage");
    const { metrics } = await session.send("Performance.getMetrics");
    const metric = (name) => metrics.find((each) => each.name === name).value;
    console.log(
      `after ${changes} changes: ${(metric("JSHeapUsedSize") / 1048576).toFixed(2)} MiB of JavaScript, ` +
        `${metric("Nodes")} nodes, ${metric("JSEventListeners")} listeners`,
    );
  }
  await page.close();
  stop();
}

await frames(100);
await frames(1000);
await memory();
await browser.close();
