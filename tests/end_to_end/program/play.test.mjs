// Players of a distribution folder, and what becomes of their decks.

import assert from "node:assert/strict";
import { copyFileSync, renameSync, rmSync, writeFileSync } from "node:fs";
import { describe, it } from "node:test";
import { editPart } from "../support/deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeValueDeck, setValues } from "../support/value_deck.mjs";
import { orderSlides, replaceDeck } from "../support/versions.mjs";
import { until } from "../support/wait.mjs";

// A folder with the decks One and Two, of two and one slides that show values.txt beside them.
function makeFolder(sandbox) {
  const deck = makeValueDeck(sandbox, "a");
  const folder = sandbox.path("shop");
  orderSlides(deck, [1, 2]);
  renameSync(deck, `${folder}/One.pptx`);
  copyFileSync(`${folder}/One.pptx`, `${folder}/Two.pptx`);
  replaceDeck(`${folder}/Two.pptx`, (fresh) => orderSlides(fresh, [1]));
  return folder;
}

const quickly = ["--seconds", "0.3"];
const shows = (player, name) => until(`${name} on show`, async () => (await player.deck()) === name);
const has = (player, name, state) => until(`${name} ${state}`, async () => (await player.stateOf(name)) === state);

describe("players of a folder", { concurrency: 2 }, () => {
  it("show its decks by turns, and take up what becomes of them", async (t) => {
    const sandbox = new Sandbox(t);
    const folder = makeFolder(sandbox);
    const player = await sandbox.play(folder, ...quickly);
    await shows(player, "Two");
    await shows(player, "One");
    setValues(sandbox, "b");
    await until("its data", async () => (await player.deck()) === "Two" && (await player.text(1, "p1 Item")) === "b");
    assert.equal((await player.get("/readyz")).status, 200);

    writeFileSync(`${folder}/Three.pptx`, "no deck at all");
    await has(player, "Three", "refused");
    const why = sandbox.run("play", folder, "--why", "three.pptx");
    assert.equal(why.code, 1);
    assert.match(why.error, /Three is not shown: /);
    assert.match(sandbox.done("play", folder, "--why", "One"), /^One is shown\.$/m);
    assert.match(sandbox.run("play", folder, "--why", "Four").error, /there is no such deck/);
    const before = (await player.folder()).changes;
    await until("the others", async () => (await player.folder()).changes > before + 2);
    const status = (await player.get("/api/v1/status")).json;
    const levels = status.decks.map(({ name, level }) => [name, level === "good"]);
    assert.deepEqual(levels.sort(), [["One", true], ["Three", false], ["Two", true]]);
    assert.match((await player.get("/metrics")).text, /^lumenfold_decks\{state="refused"\} 1$/m);

    rmSync(`${folder}/One.pptx`);
    await has(player, "One", undefined);
    await shows(player, "Two");
    replaceDeck(`${folder}/Two.pptx`, (fresh) => editPart(fresh, "ppt/presentation.xml", (xml) => xml.replace(/<p:sldSz [^>]*>/, '<p:sldSz cx="9144000" cy="9144000"/>')));
    const isSquare = async () => (await player.get("/")).text.match(/--slide-height: *960px/);
    await until("the new version", isSquare);
    rmSync(`${folder}/Two.pptx`);
    await until("a plain ground", async () => (await player.state()).deck === null);
    assert.equal((await player.get("/readyz")).status, 200);
    assert.deepEqual(await player.stop(), { code: 0, signal: null });
  });

  it("go on while the folder is away, also after a restart", async (t) => {
    const sandbox = new Sandbox(t);
    const folder = makeFolder(sandbox);
    const players = [];
    for (const name of ["HALL", "GATE"]) players.push(await sandbox.play(folder, ...quickly, "--computer", name));
    for (const player of players) await shows(player, "Two");
    renameSync(folder, sandbox.path("away"));
    for (const player of players) {
      await until("the trouble", async () => (await player.folder()).problem !== "");
      const { changes } = await player.folder();
      await until("more turns", async () => (await player.folder()).changes > changes + 2);
    }
    assert.deepEqual(await players[0].stop(), { code: 0, signal: null });
    const again = await sandbox.play(folder, ...quickly, "--computer", "HALL");
    assert.notEqual((await again.state()).deck, null, "its first picture is there when it answers");
    await shows(again, "Two");
    await shows(again, "One");

    renameSync(sandbox.path("away"), folder);
    rmSync(`${folder}/One.pptx`);
    for (const player of [again, players[1]]) {
      await has(player, "One", undefined);
      await until("no trouble", async () => (await player.folder()).problem === "");
      await shows(player, "Two");
    }
  });

  it("stand where the clock says when they are synchronous", async (t) => {
    const sandbox = new Sandbox(t);
    const folder = makeFolder(sandbox);
    // One has two slides, Two one.
    const places = ["One 1", "One 2", "Two 1"];
    const minute = 60000;
    const players = [];
    for (const name of ["HALL", "GATE"]) {
      players.push(await sandbox.play(folder, "--synchronous", "--seconds", 60, "--computer", name));
    }
    for (const player of players) {
      await until("its place", async () => {
        const { position } = await player.state();
        return `${await player.deck()} ${position}` === places[Math.floor(Date.now() / minute) % 3];
      });
      await assert.rejects(player.command("next"), /409 .*follows the clock/);
    }
  });
});

it("a deck without data leaves its turn to the others", async (t) => {
  const sandbox = new Sandbox(t);
  const folder = makeFolder(sandbox);
  sandbox.done("slide", `${folder}/Two.pptx`, 1, "--hide-when-no-data", "on");
  const player = await sandbox.play(folder, ...quickly);
  await shows(player, "Two");
  writeFileSync(`${folder}/values.txt`, "Value\n");
  await shows(player, "One");
  await until("it was passed over", async () => {
    const { decks } = await player.folder();
    return /are hidden/.test(decks.find(({ name }) => name === "Two").why);
  });
  assert.equal(await player.deck(), "One");
  setValues(sandbox, "c");
  await shows(player, "Two");
});
