// How far apart screens change: pages in Chromium and plain readers follow one show with --synchronous. Each page is a
// window on a virtual display, without motion, and what counts is when a pixel of it changes there, which is looked at
// twice a millisecond.
//   node bench/together/together.mjs build/release/lumenfold [CHANGES [PAGES [READERS [ADDRESS]]]]
// With an ADDRESS, such as that of a hub before the show, pages go there. The variables SAMPLE, PORT and SHOW_OPTIONS
// are the deck (a folder of samples/), the show's port and further options, such as --publish.

import { spawn } from "node:child_process";
import { cpSync, mkdtempSync, readFileSync, rmSync } from "node:fs";
import { request } from "node:http";
import { createRequire } from "node:module";
import { loadavg, tmpdir } from "node:os";
import { join, resolve } from "node:path";
import { createInterface } from "node:readline";
import { setTimeout as pause } from "node:timers/promises";
import { fileURLToPath } from "node:url";
import { startDisplay } from "./display.mjs";

const require = createRequire(new URL("../../tests/end_to_end/package.json", import.meta.url));
const { chromium } = require("playwright-core");
const [program, changes = "30", pages = "20", readers = "500", address] = process.argv.slice(2);
const port = process.env.PORT ?? "0";
const sample = process.env.SAMPLE ?? "plant";

const folder = mkdtempSync(join(tmpdir(), "lumenfold-together-"));
cpSync(fileURLToPath(new URL(`../../samples/${sample}/`, import.meta.url)), folder, { recursive: true });
const more = process.env.SHOW_OPTIONS?.split(" ") ?? [];
const show = spawn(resolve(program), ["show", `${sample}.pptx`, "--port", port, "--synchronous", ...more], {
  cwd: folder,
  env: { ...process.env, LUMENFOLD_TOKEN: "bench" },
  stdio: ["ignore", "pipe", "inherit"],
});
process.once("exit", () => show.kill());
let url;
for await (const line of createInterface(show.stdout)) {
  url = line.match(/^Screen: +(\S+)$/)?.[1];
  if (url) break;
}
const seen = address ?? url;
const now = () => performance.timeOrigin + performance.now();
const jiffies = () => {
  const fields = readFileSync(`/proc/${show.pid}/stat`, "utf8").split(" ");
  return Number(fields[13]) + Number(fields[14]);
};

// Readers take what comes; the first one tells the moment of each change, and all of them how long before it
// they had it.
const moments = [];
const ahead = [];
function read(isFirst) {
  const asked = request(new URL("/screen/events", url), (answer) => {
    let text = "";
    answer.setEncoding("utf8").on("data", (more) => {
      const blocks = (text + more).split("\n\n");
      text = blocks.pop();
      for (const block of blocks) {
        if (!block.includes("event: picture")) continue;
        const moment = Number(block.match(/"at":(\d+)/)[1]);
        if (moment < now() - 1000) continue;
        ahead.push(moment - now());
        if (isFirst) moments.push(moment);
      }
    });
  });
  asked.end();
  return asked;
}
const asked = Array.from({ length: Number(readers) }, (_, i) => read(i === 0));

const [width, height, inRow] = [500, 400, 5];
const display = await startDisplay(width * inRow, height * Math.ceil(Number(pages) / inRow));
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM || "/usr/bin/chromium",
  headless: false,
  env: { ...process.env, DISPLAY: display.name },
  args: ["--no-sandbox", "--disable-gpu", "--disable-background-networking", "--no-first-run"],
});
const open = [];
for (let i = 0; i < Number(pages); ++i) {
  const page = await (await browser.newContext({ viewport: null, reducedMotion: "reduce" })).newPage();
  const devtools = await page.context().newCDPSession(page);
  const { windowId } = await devtools.send("Browser.getWindowForTarget");
  const bounds = { left: width * (i % inRow), top: height * Math.floor(i / inRow), width, height };
  await devtools.send("Browser.setWindowBounds", { windowId, bounds });
  await devtools.detach();
  await page.goto(`${seen}?part=2x1/${1 + (i % 2)}`);
  open.push({ page, bounds });
}
await pause(5000); // the first exchanges

const order = (command) =>
  fetch(new URL(`/api/v1/${command}`, url), { method: "POST", headers: { Authorization: "Bearer bench" } });

// A place of each window that has one colour on the first slide and another on the second, also a while later.
async function coloursOn(slide) {
  const step = 10;
  await order(`goto/${slide}`);
  await pause(4000);
  return open.map(({ bounds: { left, top } }) => {
    const colours = new Map();
    for (let y = top + height / 2; y < top + height; y += step) {
      for (let x = left; x < left + width; x += step) colours.set(`${x},${y}`, display.colour({ x, y }));
    }
    return colours;
  });
}
const seenColours = [];
for (const slide of [1, 2, 1, 2]) seenColours.push(await coloursOn(slide));
const places = open.map((_, i) => {
  const [first, second, firstAgain, secondAgain] = seenColours.map((colours) => colours[i]);
  for (const [place, colour] of first) {
    const isSteady = firstAgain.get(place) === colour && secondAgain.get(place) === second.get(place);
    if (!isSteady || second.get(place) === colour) continue;
    const [x, y] = place.split(",").map(Number);
    return { x, y };
  }
  throw new Error(`page ${i + 1} shows no change`);
});

// Of all processes of the browser, in ms.
const devtools = await browser.newBrowserCDPSession();
async function browserTime() {
  const { processInfo } = await devtools.send("SystemInfo.getProcessInfo");
  return 1000 * processInfo.reduce((sum, { cpuTime }) => sum + cpuTime, 0);
}
const restBegun = { browser: await browserTime(), time: now() };
await pause(5000);
const atRest = ((await browserTime()) - restBegun.browser) / (now() - restBegun.time);

const begun = { cpu: jiffies(), browser: await browserTime(), time: now() };
const rows = [];
const doubts = [];
for (let i = 0; i < Number(changes); ++i) {
  moments.length = 0;
  const looked = display.changes(places, now() + 2500);
  await pause(200); // the looker starts
  await order(`goto/${1 + (i % 2)}`);
  const changed = await looked;
  await pause(500);
  if (moments.length === 0 || !changed.every(Boolean)) console.log(`change ${i + 1} has not come to all in time`);
  else {
    rows.push(changed.map(({ time }) => time - moments[0]));
    doubts.push(...changed.map(({ doubt }) => doubt));
  }
}
const forChanges = (await browserTime()) - begun.browser - atRest * (now() - begun.time);
const cpu = (100 * ((jiffies() - begun.cpu) / 100)) / ((now() - begun.time) / 1000);
const errors = [];
for (const { page } of open) {
  errors.push(
    await page.evaluate(async () => {
      const from = document.querySelector("script[src]").src.replace("screen/screen.js", "core/");
      const { timeUntil } = await import(`${from}server_time.js`);
      return timeUntil(performance.timeOrigin + performance.now());
    }),
  );
}

const sorted = (list) => [...list].sort((a, b) => a - b);
const at = (list, share) => sorted(list)[Math.floor(share * (list.length - 1))].toFixed(1);
const told = (list) => `median ${at(list, 0.5)}, 95 % ${at(list, 0.95)}, max ${at(list, 1)} ms`;
const spreads = rows.map((row) => Math.max(...row) - Math.min(...row));
console.log(`${changes} changes, ${pages} pages, ${readers} readers; load ${loadavg()[0].toFixed(1)}`);
console.log(`  between the first and the last page: ${told(spreads)}`);
console.log(`  from the moment to the change of a page's pixel: min ${at(rows.flat(), 0)}, ${told(rows.flat())}`);
console.log(`  time between the looks at a pixel before and after its change: ${told(doubts)}`);
console.log(`  the pages' idea of the show's time is off by: ${told(errors.map(Math.abs))}`);
console.log(`  readers had it before the moment: min ${at(ahead, 0)}, median ${at(ahead, 0.5)} ms`);
console.log(`  a change took ${(forChanges / changes / pages).toFixed(1)} ms of a core for a page, of all that the browser does`);
console.log(`  the program took ${cpu.toFixed(1)} % of a core`);

for (const reader of asked) reader.destroy();
await browser.close();
display.stop();
show.kill();
rmSync(folder, { recursive: true, force: true });
