// 500 screens on two nodes of one Redis, and what may happen to them: no message is lost or taken twice, order is
// kept, and in the end everybody shows the last one.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { before, test } from "node:test";
import { ask } from "../support/ask.mjs";
import { Line } from "../support/line.mjs";
import { Node, Redis } from "../support/nginx_hub.mjs";
import { Reader } from "../support/hub_reader.mjs";
import { StandInShow } from "../support/hub_show.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { patience, until } from "../support/wait.mjs";

const rising = (numbers) => numbers.every((number, i) => i === 0 || number > numbers[i - 1]);
const next = (numbers) => numbers.every((number, i) => i === 0 || number === numbers[i - 1] + 1);

async function hub(t) {
  const sandbox = new Sandbox(t);
  const redis = new Redis(t, sandbox);
  await redis.start();
  const line = new Line(t, redis.port);
  await line.open();
  const show = new StandInShow(t, "first");
  await show.open();
  const node = (name, port) =>
    new Node(t, sandbox, name, ["--show", `http://127.0.0.1:${show.port}`, "--redis", `redis://127.0.0.1:${port}`]);
  const nodes = [node("near", redis.port), node("far", line.port)];
  for (const each of nodes) await each.start();
  await taking(nodes);
  return { redis, line, show, nodes };
}

// Both nodes have found the Redis.
async function taking(nodes) {
  for (const { publishing } of nodes) {
    await until("a message to be taken", async () => (await ask(publishing, "POST", "/publish/probe")).status < 300);
  }
}

test("screens over two nodes", async (t) => {
  const { redis, line, show, nodes } = await hub(t);
  let number = 0;
  const tell = (count, to = nodes) => Promise.all(Array.from({ length: count }, () => show.publish(`text ${++number}`, to)));
  const allShow = (readers, what) =>
    until(what, () => readers.every(({ text, anew }) => text === `text ${number}` && !anew), 2 * patience).catch((error) => {
      const wrong = readers.filter(({ text }) => text !== `text ${number}`);
      throw new Error(`${error.message}; ${wrong.length} of ${readers.length}, the first has "${wrong[0]?.text}"`);
    });
  await tell(1);
  const readers = await Reader.open(t, nodes, 500);
  // Each has taken every message since it came, once, without asking for the state again.
  const nothingIsMissing = () => {
    for (const { taken, states } of readers) {
      assert.ok(next(taken), `${taken}`);
      assert.equal(states, 1);
    }
  };

  await t.test("get every message, newcomers as well", async () => {
    const told = tell(60);
    const late = await Reader.open(t, nodes, 60);
    await told;
    await allShow([...readers, ...late], "the last message");
    nothingIsMissing();
    for (const { taken, states } of late) assert.ok(next(taken) && states === 1, `${states} states, ${taken}`);
    assert.ok(show.asked.filter((line) => line.includes("/screen/state/")).length < 60, "the nodes keep no state");
    late.forEach((each) => each.leave());
  });

  await t.test("that were away for a while catch up", async () => {
    const away = readers.slice(0, 100);
    away.forEach((each) => each.leave());
    await tell(30);
    await Promise.all(away.map((each) => each.comeBack()));
    await allShow(readers, "those who were away");
    nothingIsMissing();
  });

  await t.test("outlive the end of a node", async () => {
    await nodes[0].kill();
    await tell(20);
    await nodes[0].start();
    await tell(5);
    await allShow(readers, "those of the node that was killed");
    nothingIsMissing();
  });

  await t.test("outlive another configuration, and the end of a node's process", async () => {
    const looked = ["-P", String(nodes[0].process.pid), "-xf", "nginx: worker process"];
    const worker = () => execFileSync("pgrep", looked, { encoding: "utf8" }).trim();
    const before = worker();
    process.kill(nodes[0].process.pid, "SIGHUP");
    await tell(10);
    await until("another process", () => /^\d+$/.test(worker()) && worker() !== before);
    process.kill(Number(worker()), "SIGKILL");
    await tell(10);
    await allShow(readers, "those of the node's new process");
    nothingIsMissing();
  });

  await t.test("outlive a line that swallows everything, and one that is cut", async () => {
    line.swallow();
    await tell(20, [nodes[0]]);
    await allShow(readers.filter(({ node }) => node === nodes[0]), "those whose line is whole");
    assert.ok(readers.some(({ text }) => text !== `text ${number}`), "the line swallows nothing");
    await until("the far node to miss its Redis", async () => (await ask(nodes[1].publishing, "POST", "/publish/probe")).status === 503);
    line.heal();
    await allShow(readers, "those behind the line");
    line.cut();
    await tell(20);
    await allShow(readers, "those behind the line that was cut");
    nothingIsMissing();
  });

  await t.test("outlive the end of the Redis", async () => {
    await redis.kill();
    const told = tell(20);
    await until("a node that takes nothing", async () => (await ask(nodes[0].publishing, "POST", "/publish/probe")).status === 503);
    await redis.start();
    await told;
    await allShow(readers, "all after the Redis is back");
    nothingIsMissing();
    const late = await Reader.open(t, nodes, 20);
    await tell(1);
    await allShow(late, "newcomers of the new Redis");
  });

  await t.test("follow a show that begins anew", async () => {
    show.begin("second");
    for (const reader of readers) reader.taken = [];
    number = 1000;
    await tell(20);
    await allShow(readers, "the new run");
    for (const { run, taken } of readers) assert.ok(run === "second" && rising(taken), `${run}: ${taken}`);
  });

  await t.test("come while the show is away", async () => {
    const { port } = show;
    await show.close();
    const late = await Reader.open(t, nodes, 20);
    await allShow(late, "newcomers without a show");
    await show.open(port);
  });
});
