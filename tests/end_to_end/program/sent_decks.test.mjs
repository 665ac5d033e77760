// Decks on their way from the sender to the screens of players.

import assert from "node:assert/strict";
import { mkdirSync, renameSync, rmSync, symlinkSync } from "node:fs";
import { describe, it } from "node:test";
import { FolderServer } from "../support/folder_server.mjs";
import { setValues, valueDeck } from "../support/value_deck.mjs";
import { orderSlides } from "../support/versions.mjs";
import { until } from "../support/wait.mjs";

// A deck of one slide, and an empty folder to send it into. `send` sends it frozen, with this value on it.
function prepared(t) {
  const { sandbox, deck } = valueDeck(t, "first-value");
  orderSlides(deck, [1]);
  const folder = sandbox.path("out");
  mkdirSync(folder);
  const distribute = (...args) => sandbox.done("distribute", deck, "--folder", folder, ...args);
  const send = (value, ...args) => {
    setValues(sandbox, value);
    return distribute("--way", "frozen", ...args);
  };
  const why = (...args) => {
    const { code, out, error } = sandbox.run("play", folder, "--why", "shop", ...args);
    assert.equal(code === 0, out !== "", error);
    return out + error;
  };
  return { sandbox, deck, folder, distribute, send, why };
}

const shows = (player, value) =>
  until(`${value} on the screen`, async () => (await player.get("/")).text.includes(value));
const isBare = (player) => until("a plain ground", async () => (await player.state()).deck === null);
const hinders = (player, pattern) =>
  until(`${pattern}`, async () => pattern.test((await player.folder()).decks.find(({ name }) => name === "shop")?.why));

describe("a deck that was sent", { concurrency: 2 }, () => {
  it("comes to its computers, is replaced, taken back and sent again", async (t) => {
    const { sandbox, folder, distribute, send, why } = prepared(t);
    const mount = sandbox.path("mount");
    symlinkSync(folder, mount);
    send("first-value", "--computer", "HALL", "--computer", "GATE");
    const hall = await sandbox.play(folder, "--computer", "HALL");
    const gate = await sandbox.play(mount, "--computer", "GATE");
    for (const player of [hall, gate]) await shows(player, "first-value");
    assert.match(why("--computer", "HALL"), /^shop is shown\.\n$/);
    assert.match(why("--computer", "SHED"), /shop is not shown: It is for other computers: HALL, GATE\./);

    // One of them loses its folder.
    rmSync(mount);
    await until("the trouble", async () => (await gate.folder()).problem !== "");
    send("second-value");
    await shows(hall, "second-value");
    await shows(gate, "first-value");
    symlinkSync(folder, mount);
    await shows(gate, "second-value");

    distribute("--withdraw");
    for (const player of [hall, gate]) await isBare(player);
    assert.match(why("--computer", "HALL"), /shop is not shown: It was withdrawn\./);
    send("third-value", "--start", "2020-01-01", "--stop", "2999-01-01");
    for (const player of [hall, gate]) await shows(player, "third-value");
    assert.match(why("--computer", "HALL"), /^shop is shown until 2999-01-01 00:00:00\./);
    send("fourth-value", "--stop", "2021-01-01");
    await isBare(hall);
    assert.match(why("--computer", "HALL"), /shop is not shown: Its time ended at /);
  });

  it("is shown without what it was made of, frozen or with its files", async (t) => {
    const { sandbox, folder, distribute, send } = prepared(t);
    const player = await sandbox.play(folder);
    send("frozen-value");
    renameSync(sandbox.path("shop"), sandbox.path("elsewhere"));
    await shows(player, "frozen-value");
    renameSync(sandbox.path("elsewhere"), sandbox.path("shop"));
    setValues(sandbox, "packed-value");
    distribute("--way", "files");
    renameSync(sandbox.path("shop"), sandbox.path("elsewhere"));
    await player.shows(1, "p1 Item", "packed-value");
    assert.deepEqual(await player.stop(), { code: 0, signal: null });
    assert.deepEqual(sandbox.errorLog(), []);
  });

  it("comes over HTTP, and stays while the server is away", async (t) => {
    const { sandbox, folder, send, why } = prepared(t);
    const server = new FolderServer(t, folder);
    await server.start();
    send("first-value");
    const player = await sandbox.play(server.url, "--computer", "HALL");
    await shows(player, "first-value");

    await server.stop();
    await until("the trouble", async () => (await player.folder()).problem !== "");
    assert.deepEqual(await player.stop(), { code: 0, signal: null });
    const { code, out } = sandbox.run("play", server.url, "--computer", "HALL", "--why", "shop");
    assert.match(out, /^shop is shown\.\n.*cannot be read/s);
    assert.equal(code, 0);
    const again = await sandbox.play(server.url, "--computer", "HALL");
    await shows(again, "first-value");

    send("second-value");
    await server.start();
    await shows(again, "second-value");
    await until("no trouble", async () => (await again.folder()).problem === "");
    assert.match(why(), /^shop is shown\./);
  });

  it("is refused when it is not signed with the player's key, and the last good one stays", async (t) => {
    const { sandbox, folder, send, distribute, why } = prepared(t);
    const [key, other] = ["sender.key", "other.key"].map((name) => sandbox.path(name));
    for (const file of [key, other]) sandbox.done("key", "new", file);
    const trust = ["--trust", `${key}.pub`];
    send("good-value", "--key", key);
    const player = await sandbox.play(folder, ...trust);
    await shows(player, "good-value");
    for (const [said, ...signed] of [[/not signed/], [/signed with another key/, "--key", other]]) {
      send("bad-value", ...signed);
      await hinders(player, said);
      await shows(player, "good-value");
      assert.match(why(...trust), said);
    }
    send("newer-value", "--key", key);
    await shows(player, "newer-value");
    distribute("--withdraw", "--key", key);
    await isBare(player);
    const log = sandbox.errorLog().join("\n");
    for (const said of [/not signed/, /another key/]) assert.match(log, said);
  });
});
