// How far apart screens change: pages in Chromium and plain readers follow one show with --synchronous, and
// each page tells when its slide changed, by the one clock of this machine.
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

const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM || "/usr/bin/chromium",
  args: ["--no-sandbox", "--disable-gpu", "--disable-background-networking", "--no-first-run"],
});
const open = [];
for (let i = 0; i < Number(pages); ++i) {
  const page = await (await browser.newContext({ viewport: { width: 640, height: 360 } })).newPage();
  await page.goto(`${seen}?part=2x1/${1 + (i % 2)}`);
  await page.evaluate(() => {
    window.changes = [];
    let shown;
    new MutationObserver(() => {
      const slide = document.querySelector(".frame.current > .slide")?.id;
      if (slide !== shown) changes.push(performance.timeOrigin + performance.now());
      shown = slide;
    }).observe(document.getElementById("stage"), { attributeFilter: ["class"], subtree: true });
  });
  open.push(page);
}
await pause(5000); // the first exchanges

const order = (command) =>
  fetch(new URL(`/api/v1/${command}`, url), { method: "POST", headers: { Authorization: "Bearer bench" } });
const begun = { cpu: jiffies(), time: now() };
const rows = [];
for (let i = 0; i < Number(changes); ++i) {
  moments.length = 0;
  for (const page of open) await page.evaluate(() => (window.changes = []));
  await order(i % 2 ? "goto/1" : "goto/2");
  await pause(3000);
  const times = [];
  for (const page of open) times.push(await page.evaluate(() => window.changes[0]));
  if (moments.length === 0 || times.some((time) => !time)) console.log(`change ${i + 1} has not come to all in time`);
  else rows.push(times.map((time) => time - moments[0]));
}
const cpu = (100 * ((jiffies() - begun.cpu) / 100)) / ((now() - begun.time) / 1000);
const errors = [];
for (const page of open) {
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
console.log(`  from the moment to the change of a page: min ${at(rows.flat(), 0)}, ${told(rows.flat())}`);
console.log(`  the pages' idea of the show's time is off by: ${told(errors.map(Math.abs))}`);
console.log(`  readers had it before the moment: min ${at(ahead, 0)}, median ${at(ahead, 0.5)} ms`);
console.log(`  the program took ${cpu.toFixed(1)} % of a core`);

for (const reader of asked) reader.destroy();
await browser.close();
show.kill();
rmSync(folder, { recursive: true, force: true });
