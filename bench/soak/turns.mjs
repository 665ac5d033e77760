// A player whose decks take turns a thousand times, with a screen that follows: prints what it takes from its
// machine, how long a change of decks and the take-up of another version last, and fails when memory grows.
// Needs what the tests need (scripts/setup.sh --tests).
//   LUMENFOLD=build/release/lumenfold node bench/soak/turns.mjs [CHANGES]

import { cpSync, renameSync } from "node:fs";
import { editPart } from "../../tests/end_to_end/support/deck.mjs";
import { Sandbox } from "../../tests/end_to_end/support/sandbox.mjs";
import { makeValueDeck } from "../../tests/end_to_end/support/value_deck.mjs";
import { orderSlides, replaceDeck } from "../../tests/end_to_end/support/versions.mjs";
import { Figure, lookAt } from "./figures.mjs";

const wanted = Number(process.argv[2] ?? 1000);
const seconds = 0.1;
const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));
const endings = [];
const sandbox = new Sandbox({ after: (action) => endings.push(action) });
const deck = makeValueDeck(sandbox, "a", "b", "c");
const folder = sandbox.path("shop");
orderSlides(deck, [1]);
renameSync(deck, `${folder}/One.pptx`);
cpSync(`${folder}/One.pptx`, `${folder}/Two.pptx`);
const player = await sandbox.play(folder, "--seconds", seconds);
const events = player.events("/screen/events");
const { pid } = player.process;
const figures = {
  memory: new Figure("memory", "MiB", { growth: 4 }),
  descriptors: new Figure("descriptors", "", { growth: 2 }),
  threads: new Figure("threads", "", { growth: 2 }),
};
const began = performance.now();
let changes = 0;
for (; changes < wanted; await pause(250)) {
  ({ changes } = await player.folder());
  for (const [name, value] of Object.entries(lookAt(pid))) figures[name].take(value);
}
const each = (performance.now() - began) / changes;
console.log(`${changes} changes, one every ${each.toFixed(0)} ms where slides stay ${seconds * 1000} ms`);

const setSize = (file, size) =>
  editPart(file, "ppt/presentation.xml", (xml) => xml.replace(/<p:sldSz [^>]*>/, `<p:sldSz ${size}/>`));

const isTaken = (height) => events.all.at(-1)?.data?.height === height;
const times = [];
for (let i = 0; i < 10; ++i) {
  const height = i % 2 ? 540 : 960;
  const size = i % 2 ? 'cx="9144000" cy="5143500"' : 'cx="9144000" cy="9144000"';
  for (const name of ["One", "Two"]) {
    replaceDeck(`${folder}/${name}.pptx`, (fresh) => setSize(fresh, size));
  }
  const written = performance.now();
  while (!isTaken(height)) await pause(5);
  times.push(performance.now() - written);
}
times.sort((a, b) => a - b);
console.log(`taken up after ${times[times.length >> 1].toFixed(0)} ms, at most ${times.at(-1).toFixed(0)} ms`);
await player.stop();
const summaries = Object.values(figures).map((figure) => figure.summary());
for (const { line } of summaries) console.log(line);
for (const end of endings) await end();
process.exitCode = summaries.every(({ isLevel }) => isLevel) ? 0 : 1;
