// A deck that another program wrote, damaged in one part after the other: it is shown as far as it can be read.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { copyFileSync } from "node:fs";
import { test } from "node:test";
import { addPart, parts } from "../support/deck.mjs";
import { linkWhole } from "../support/linked_whole.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { writtenAnew } from "../support/written_anew.mjs";

const content = (deck, part) => execFileSync("unzip", ["-p", deck, part.replace("[", "[[]")]);

// In turn, so that parts of one kind meet them all.
const damages = {
  "cut short": (deck, part) => {
    const whole = content(deck, part);
    addPart(deck, part, whole.subarray(0, whole.length / 2));
  },
  missing: (deck, part) => execFileSync("zip", ["-q", "-d", deck, part]),
  empty: (deck, part) => addPart(deck, part, ""),
  garbage: (deck, part) => addPart(deck, part, Buffer.alloc(content(deck, part).length, 7)),
  "other XML": (deck, part) => addPart(deck, part, "<other/>"),
};

// What the whole package hangs on.
const needed = /^\[Content_Types\]\.xml$|^_rels\/|^ppt\/(_rels\/)?presentation\.xml/;

async function showAll(show, slides) {
  for (let slide = 1; slide <= slides; ++slide) {
    await show.command(`goto/${slide}`);
    assert.match((await show.get("/")).text, new RegExp(`<section class="slide" id="s${slide}"`));
  }
  assert.deepEqual(await show.stop(), { code: 0, signal: null });
}

test("a deck of another program is shown whatever part of it is damaged", async (t) => {
  const sandbox = new Sandbox(t);
  sandbox.sample("shop");
  const deck = writtenAnew(sandbox, sandbox.sample("plant"));
  linkWhole(sandbox, deck);
  const { slideCount } = JSON.parse(sandbox.done("info", deck, "--json"));
  const kinds = Object.keys(damages);
  const cases = parts(deck)
    .filter((part) => !part.endsWith("/") && !needed.test(part))
    .map((part, i) => ({ part, kind: kinds[i % kinds.length] }));
  assert.ok(cases.length > 50, `only ${cases.length} parts`);
  const work = async (name) => {
    for (let next = cases.shift(); next; next = cases.shift()) {
      const damaged = sandbox.path(`${name}.pptx`);
      copyFileSync(deck, damaged);
      damages[next.kind](damaged, next.part);
      try {
        await showAll(await sandbox.show(damaged, "--no-reload"), slideCount);
      } catch (error) {
        throw new Error(`${next.part} ${next.kind}: ${error.message}`, { cause: error });
      }
    }
  };
  await Promise.all(["first", "second"].map(work));
});
