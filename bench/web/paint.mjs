// From the data to the glass: milliseconds from the rename of the departures' file to the paint on one
// screen, as screens report it, for changes at random moments. Then the program's CPU time while that file is
// renamed over and over, beside the time while nothing changes.
//   node bench/web/paint.mjs build/release/lumenfold [CHANGES [SECONDS]]

import { spawn } from "node:child_process";
import { cpSync, mkdtempSync, readFileSync, renameSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join, resolve } from "node:path";
import { createInterface } from "node:readline";
import { setTimeout as pause } from "node:timers/promises";
import { fileURLToPath } from "node:url";

const require = createRequire(new URL("../../tests/end_to_end/package.json", import.meta.url));
const { chromium } = require("playwright-core");
const [program, changes = "100", seconds = "20"] = process.argv.slice(2);

const folder = mkdtempSync(join(tmpdir(), "lumenfold-paint-"));
cpSync(fileURLToPath(new URL("../../samples/departures/", import.meta.url)), folder, { recursive: true });
const board = join(folder, "departures.txt");
const rows = readFileSync(board, "utf8").split("\n");

// Renames a board over the present one whose first flight goes from that gate.
function change(gate) {
  const fields = rows[1].split("\t");
  fields[3] = gate;
  writeFileSync(board + ".new", [rows[0], fields.join("\t"), ...rows.slice(2)].join("\n"));
  const moment = performance.timeOrigin + performance.now();
  renameSync(board + ".new", board);
  return moment;
}

const show = spawn(resolve(program), ["show", "departures.pptx", "--port", "0", "--slide", "1"], {
  cwd: folder,
  stdio: ["ignore", "pipe", "inherit"],
});
let url;
for await (const line of createInterface(show.stdout)) {
  url = line.match(/^Screen: +(\S+)$/)?.[1];
  if (url) break;
}

const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM || "/usr/bin/chromium",
  args: ["--no-sandbox", "--disable-gpu", "--disable-background-networking", "--no-first-run"],
});
const page = await browser.newPage({ viewport: { width: 1280, height: 720 } });
await page.goto(new URL("/?slide=1", url).href);
await page.waitForFunction(() => document.querySelectorAll(".s").length > 0);

// The moment of the paint after the text has come; the moment screens report (web/client/screen/reports.js).
const painted = (text) =>
  page.evaluate(
    (wanted) =>
      new Promise((resolve) => {
        const isThere = () => document.querySelector("section").textContent.includes(wanted);
        const watcher = new MutationObserver(() => {
          if (!isThere()) return;
          watcher.disconnect();
          requestAnimationFrame(() => setTimeout(() => resolve(performance.timeOrigin + performance.now())));
        });
        watcher.observe(document.body, { subtree: true, childList: true, characterData: true });
        window.watching = true;
      }),
    text,
  );

const delays = [];
for (let i = 0; i < Number(changes); ++i) {
  await pause(300 + Math.random() * 1000);
  const gate = `X${1000 + i}`;
  const paint = painted(gate);
  await page.waitForFunction(() => window.watching);
  await page.evaluate(() => (window.watching = false));
  const renamed = change(gate);
  delays.push((await paint) - renamed);
}
delays.sort((a, b) => a - b);
const at = (share) => delays[Math.floor(share * (delays.length - 1))].toFixed(0);
console.log(
  `${delays.length} changes on the glass after: median ${at(0.5)} ms, 95 % ${at(0.95)} ms, longest ${at(1)} ms`,
);

// The program's CPU time in milliseconds, of all its threads.
function cpuTime() {
  const ticks = readFileSync(`/proc/${show.pid}/stat`, "utf8").split(") ")[1].split(" ");
  return (Number(ticks[11]) + Number(ticks[12])) * 10;
}
// After some seconds of it: the first changes in quick succession are all looked at.
async function spent(during) {
  async function forSeconds(time) {
    const end = performance.now() + time * 1000;
    let count = 0;
    while (performance.now() < end) count += await during();
    return count;
  }
  await forSeconds(5);
  const before = cpuTime();
  const count = await forSeconds(Number(seconds));
  console.log(
    `${((cpuTime() - before) / Number(seconds)).toFixed(1)} ms of CPU time a second ` +
      `while the file changes ${(count / Number(seconds)).toFixed(0)} times a second`,
  );
}
let number = 0;
await spent(() => pause(100, 0));
for (const between of [100, 10, 0]) {
  await spent(async () => {
    change(`Y${1000 + (++number % 1000)}`);
    await pause(between);
    return 1;
  });
}

await browser.close();
show.kill();
rmSync(folder, { recursive: true });
