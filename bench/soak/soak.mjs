// A show among accidents: its data are rewritten ten times a second, and files, databases,
// workbooks and the deck itself suffer whatever files suffer. Prints what the program takes
// from its machine, and fails when that does not stay level or the show has not lived through.
// Needs what the tests need (scripts/setup.sh --tests).
//   LUMENFOLD=build/release/lumenfold node bench/soak/soak.mjs [MINUTES]

import { chmodSync, cpSync, writeFileSync } from "node:fs";
import { Sandbox, asNobody } from "../../tests/end_to_end/support/sandbox.mjs";
import { setTimings } from "../../tests/end_to_end/support/deck.mjs";
import { accidentsOf, replace, savingsOf } from "./accidents.mjs";
import { Figure, lookAt } from "./figures.mjs";

const minutes = Number(process.argv[2] ?? 30);
const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));
const endings = [];
const sandbox = new Sandbox({ after: (action) => endings.push(action) });

// The shop sample with texts of four files, a database and a workbook, a picture and a clock.
function makeDeck() {
  const deck = sandbox.sample("shop");
  sandbox.sample("plant");
  cpSync(sandbox.path("plant/plant.db"), sandbox.path("shop/plant.db"));
  sandbox.done("unlink", deck, "--all");
  setTimings(deck, 1500);
  const rows = [["Value"], ...[1, 2, 3, 4].map((i) => [`row ${i}`])];
  const links = ["busy", "one", "two"].map((name, i) => {
    sandbox.write(`shop/${name}.txt`, rows);
    const source = ["--type", "text", "--description", name, "--file", `${name}.txt`, "--header"];
    return { source, column: "Value", shapes: [`p${2 * i + 1} Item`, `p${2 * i + 1} Note`] };
  });
  const sql = "SELECT Product FROM plant ORDER BY Line";
  const database = ["--type", "database", "--description", "Lines", "--sql", sql];
  const string = "Provider=SQLite;Data Source=plant.db";
  links.push({ source: [...database, "--connection-string", string], column: "Product", shapes: ["p2 Item", "p4 Item"] });
  const sheet = ["--sheet", "Prices", "--range", "A:D", "--header"];
  const book = ["--type", "excel", "--description", "Prices", "--file", "prices.xlsx", ...sheet];
  links.push({ source: book, column: "Note", shapes: ["p6 Item", "p7 Item"] });
  for (const { source, column, shapes } of links) {
    const connection = sandbox.done("connection", deck, "add", ...source).trim();
    shapes.forEach((shape, i) => {
      const place = ["--slide", 1, "--shape", shape];
      sandbox.done("link", deck, ...place, "--connection", connection, "--column", column, "--row", i + 1);
    });
  }
  sandbox.write("shop/photo.txt", [["File"], ["walnut-loaf"]]);
  const photo = ["--type", "text", "--description", "Photo", "--file", "photo.txt", "--header"];
  const connection = sandbox.done("connection", deck, "add", ...photo).trim();
  const picture = ["--slide", 3, "--shape", "Offer Picture", "--folder", "pictures", "--extension", "png"];
  sandbox.done("link", deck, ...picture, "--connection", connection, "--column", "File", "--row", 1);
  for (const slide of [1, 2]) sandbox.done("link", deck, "--slide", slide, "--shape", "Clock", "--clock", "hh:nn:ss");
  return deck;
}

const deck = makeDeck();
// Permissions hold nobody who is root.
sandbox.before = asNobody;
for (const folder of ["program", "state", "tmp", "home", "config"]) chmodSync(sandbox.path(folder), 0o777);
const show = await sandbox.show(deck);
const { pid } = show.process;
let end = null;
show.ended.then((how) => (end = how));

const figures = {
  memory: new Figure("memory", "MiB", { growth: 16 }),
  descriptors: new Figure("descriptors", "", { growth: 2, most: 200 }),
  threads: new Figure("threads", "", { growth: 1, most: 40 }),
  health: new Figure("/healthz", "ms", { most: 10000 }),
  state: new Figure("/api/v1/state", "ms", { most: 10000 }),
};
const counts = { writes: 0, accidents: 0, savings: 0, clocks: new Set() };
const until = Date.now() + minutes * 60000;
const isOver = () => end !== null || Date.now() > until;

async function rewrite() {
  for (; !isOver(); await pause(100)) {
    const rows = `Value\n${++counts.writes}\n${counts.writes / 7}\n`;
    if (counts.writes % 2 === 0) replace(sandbox.path("shop/busy.txt"), rows);
    else writeFileSync(sandbox.path("shop/busy.txt"), rows);
  }
}

async function suffer(name, milliseconds) {
  for (const { happen } of accidentsOf(sandbox.path(`shop/${name}`))) {
    if (isOver()) return;
    const heal = happen();
    ++counts.accidents;
    await pause(milliseconds);
    heal();
    await pause(milliseconds / 2);
  }
}

async function save() {
  for (const saving of savingsOf(deck, sandbox)) {
    for (let waited = 0; waited < 20000 && !isOver(); waited += 500) await pause(500);
    if (isOver()) return;
    await saving();
    ++counts.savings;
  }
}

async function watch() {
  const timed = async (figure, path) => {
    const began = performance.now();
    const answer = await show.get(path);
    figure.take(performance.now() - began);
    if (answer.status !== 200) throw new Error(`${path}: ${answer.status}`);
    return answer;
  };
  for (let looks = 1; !isOver(); ++looks, await pause(500)) {
    await timed(figures.health, "/healthz");
    const { json } = await timed(figures.state, "/api/v1/state");
    counts.clocks.add(json.slides[0].shapes.find(({ name }) => name === "Clock")?.text);
    const { memory, descriptors, threads } = lookAt(pid);
    figures.memory.take(memory);
    figures.descriptors.take(descriptors);
    figures.threads.take(threads);
    if (looks % 120 === 0) {
      const left = Math.round((until - Date.now()) / 60000);
      console.log(`${left} min left: ${memory.toFixed(0)} MiB, ${descriptors} descriptors, ${threads} threads`);
    }
  }
}

const files = { "one.txt": 1500, "two.txt": 700, "plant.db": 2500, "prices.xlsx": 2000, "photo.txt": 1100 };
files["pictures/walnut-loaf.png"] = 1300;
const work = [rewrite(), save(), watch(), ...Object.entries(files).map(([name, time]) => suffer(name, time))];
let failure = null;
await Promise.all(work).catch((error) => (failure = error));
if (end === null) {
  await show.stop();
  if (end?.code !== 0) failure ??= new Error(`the show ended with ${JSON.stringify(end)}`);
} else {
  failure ??= new Error(`the show ended by itself: ${JSON.stringify(end)}: ${show.error}`);
}
const { writes, accidents, savings, clocks } = counts;
console.log(`${writes} writes, ${accidents} accidents, ${savings} savings of the deck; ${clocks.size} seconds were seen`);
const summaries = Object.values(figures).map((figure) => figure.summary());
for (const { line } of summaries) console.log(line);
const log = sandbox.errorLog();
console.log(`${log.length} entries in the errors log`);
for (const action of endings) await action();
if (failure) console.error(`FAILED: ${failure.message}`);
process.exit(failure || summaries.some(({ isLevel }) => !isLevel) ? 1 : 0);
