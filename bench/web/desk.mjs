// The desk of a deck as an author waits for it, in milliseconds: from the start of the program until the page
// can be used, from a click on a shape to its property page, and from a link to the value on the slide.
//   make_linked_deck 100 20 FOLDER && node bench/web/desk.mjs build/release/lumenfold FOLDER/deck.pptx [TIMES]

import { spawn } from "node:child_process";
import { mkdtempSync, rmSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join, resolve } from "node:path";
import { createInterface } from "node:readline";
import { fileURLToPath } from "node:url";

const require = createRequire(fileURLToPath(new URL("../../tests/end_to_end/package.json", import.meta.url)));
const { chromium } = require("playwright-core");
const [program, deck, times = "20"] = process.argv.slice(2);

const state = mkdtempSync(join(tmpdir(), "lumenfold-desk-"));
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM || "/usr/bin/chromium",
  args: ["--no-sandbox", "--disable-gpu", "--disable-background-networking", "--no-first-run"],
});
const page = await browser.newPage({ viewport: { width: 1280, height: 720 } });

const begun = performance.now();
const desk = spawn(resolve(program), ["edit", resolve(deck), "--port", "0"], {
  env: { ...process.env, XDG_STATE_HOME: state },
  stdio: ["ignore", "pipe", "inherit"],
});
let url;
for await (const line of createInterface(desk.stdout)) {
  url = line.match(/^Desk: +(\S+)$/)?.[1];
  if (url) break;
}
const listening = performance.now();
await page.goto(url);
const options = page.getByRole("listbox", { name: "Slide 1", exact: true }).getByRole("option");
await options.first().waitFor();
const usable = performance.now();
console.log(`address ${(listening - begun).toFixed(0)} ms, page usable ${(usable - begun).toFixed(0)} ms`);

const told = (name, delays) => {
  delays.sort((a, b) => a - b);
  const at = (part) => delays[Math.min(delays.length - 1, Math.floor(part * delays.length))].toFixed(0);
  console.log(`${name}: median ${at(0.5)} ms, worst of ${delays.length} ${at(1)} ms`);
};

// In the page, from the pointer's event to the property page about that shape. Shapes are of one kind, so its
// page is there as soon as the form is another one.
const names = await options.evaluateAll((all) => all.map((each) => each.firstElementChild.textContent));
const selecting = [];
for (let i = 0; i < Number(times); ++i) {
  const option = options.nth(i % names.length);
  selecting.push(
    await option.evaluate(
      (element) =>
        new Promise((resolve) => {
          const properties = document.getElementById("properties");
          const from = performance.now();
          const watcher = new MutationObserver(() => {
            watcher.disconnect();
            requestAnimationFrame(() => resolve(performance.now() - from));
          });
          watcher.observe(properties, { subtree: true, childList: true, characterData: true, attributes: true });
          const { left, top, width, height } = element.getBoundingClientRect();
          const at = { bubbles: true, clientX: left + width / 2, clientY: top + height / 2, pointerId: 1, button: 0 };
          element.dispatchEvent(new PointerEvent("pointerdown", { ...at, buttons: 1 }));
          element.dispatchEvent(new PointerEvent("pointerup", at));
          element.dispatchEvent(new MouseEvent("click", at));
        }),
    ),
  );
}
told("selection to page", selecting);

// A link as the page asks for one, until the slide shows the value of another row.
const api = new URL("/api/v1/desk/", url).href;
const headers = { Authorization: `Bearer ${url.split("#token=")[1]}` };
const window = await page.evaluate(() => sessionStorage.getItem("window"));
const linking = [];
const ask = async (path, body) => {
  const answer = await fetch(`${api}windows/${window}/${path}`, { method: "POST", headers, body: JSON.stringify(body) });
  if (!answer.ok) throw new Error(`${path}: ${answer.status} ${await answer.text()}`);
};
const { columns, rows } = await (await fetch(`${api}data/001?count=500`, { headers })).json();
const column = columns.findIndex((name, i) => new Set(rows.map((cells) => cells[i])).size > Number(times));
if (column < 0) throw new Error(`No column of the first connection has more than ${times} values.`);
const { shapes, id: slide } = await page.evaluate(async ({ api, headers, own }) => {
  const reader = (await fetch(`${api}windows/${own}/events`, { headers })).body.getReader();
  let text = "";
  while (!text.includes("\n\n")) text += new TextDecoder().decode((await reader.read()).value, { stream: true });
  reader.cancel();
  return JSON.parse(text.match(/^data: (.*)$/m)[1]).slide;
}, { api, headers, own: "benchmarkbenchmark" });
const shape = shapes.find(({ link }) => link?.type === "field").id;
for (let i = 0; i < Number(times); ++i) {
  const row = (i % rows.length) + 1;
  const wanted = rows[row - 1][column];
  const painted = page.evaluate(
    ({ wanted, shape }) =>
      new Promise((resolve) => {
        const isThere = () => document.getElementById(`s1-sh${shape}`)?.textContent === wanted;
        const done = () => requestAnimationFrame(() => resolve(performance.timeOrigin + performance.now()));
        if (isThere()) return done();
        const watcher = new MutationObserver(() => {
          if (!isThere()) return;
          watcher.disconnect();
          done();
        });
        watcher.observe(document.body, { subtree: true, childList: true, characterData: true });
      }),
    { wanted, shape },
  );
  const from = performance.timeOrigin + performance.now();
  await ask("link", { connection: "001", column: columns[column], row, shapes: [shape], slide });
  linking.push((await painted) - from);
}
told("link to value on the slide", linking);

await browser.close();
desk.kill();
rmSync(state, { recursive: true, force: true });
