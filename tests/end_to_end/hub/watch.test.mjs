// The watcher that comes with hubs cuts readers that stand still, and them alone.

import assert from "node:assert/strict";
import { spawn, spawnSync } from "node:child_process";
import { connect, createServer } from "node:net";
import { test } from "node:test";
import { fileURLToPath } from "node:url";
import { until, within } from "../support/wait.mjs";

const watcher = fileURLToPath(new URL("../../../contrib/hub/lumenfold-hub-watch", import.meta.url));

test("wrong ports are told", () => {
  for (const args of [[], ["80;"], ["http"]]) assert.equal(spawnSync(watcher, args).status, 2);
});

// Ending others' sockets is root's alone.
test("a reader that stands still is cut", { skip: process.getuid() !== 0 && "needs root" }, async (t) => {
  const server = createServer();
  await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
  const { port } = server.address();
  t.after(() => server.close());
  const open = async () => {
    const accepted = new Promise((resolve) => server.once("connection", resolve));
    const reader = connect(port, "127.0.0.1");
    const sender = await accepted;
    sender.on("error", () => {});
    reader.on("error", () => {});
    t.after(() => [reader, sender].forEach((end) => end.destroy()));
    return { reader, sender };
  };
  const stuck = await open();
  const well = await open();
  stuck.reader.pause();
  well.reader.resume();
  const piece = Buffer.alloc(8 << 20);
  for (const { sender } of [stuck, well]) sender.write(piece);
  const isOver = new Promise((resolve) => stuck.sender.once("close", resolve));
  await until("the other to have read all", () => well.reader.bytesRead === piece.length);

  const running = spawn(watcher, [String(port)], { env: { ...process.env, PAUSE: "0.2" }, detached: true });
  t.after(() => process.kill(-running.pid, "SIGKILL"));
  let told = "";
  running.stdout.setEncoding("utf8").on("data", (text) => (told += text));
  await within("the end of the reader", isOver);
  await until("a word of it", () => /127\.0\.0\.1:\d+ has not read for .* and was cut/.test(told));
  assert.equal(told.trim().split("\n").length, 1, told);
  assert.equal(well.sender.destroyed, false);
});
