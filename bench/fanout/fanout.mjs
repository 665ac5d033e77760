// Many screens on two nodes of one Redis: how long a message takes to all of them, and what it costs.
//   LUMENFOLD=build/release/lumenfold node bench/fanout/fanout.mjs build/bench/bench/fanout/fanout_readers [SCREENS [OPTIONS]]
// with --bytes N (a message's size), --rate N (a second), --seconds N, --views N, --json.

import { spawn } from "node:child_process";
import { readdirSync, readFileSync } from "node:fs";
import { createInterface } from "node:readline";
import { setTimeout as pause } from "node:timers/promises";
import { parseArgs } from "node:util";
import { ask } from "../../tests/end_to_end/support/ask.mjs";
import { Node, Redis } from "../../tests/end_to_end/support/nginx_hub.mjs";
import { Sandbox } from "../../tests/end_to_end/support/sandbox.mjs";
import { until } from "../../tests/end_to_end/support/wait.mjs";

const number = (value) => ({ type: "string", default: String(value) });
const { values, positionals } = parseArgs({
  allowPositionals: true,
  options: { bytes: number(2000), rate: number(1), seconds: number(30), views: number(1), json: { type: "boolean" } },
});
const [readers, screens = "10000"] = positionals;
const [bytes, rate, seconds, views] = ["bytes", "rate", "seconds", "views"].map((name) => Number(values[name]));

const ends = [];
const t = { after: (end) => ends.unshift(end) };

// Of a process and all below it: seconds of CPU time, kB of memory that is its own.
function used(root) {
  const parents = new Map();
  for (const id of readdirSync("/proc").filter((name) => /^\d+$/.test(name))) {
    try {
      parents.set(Number(id), Number(readFileSync(`/proc/${id}/stat`, "utf8").replace(/.*\) /, "").split(" ")[1]));
    } catch {
      // It has ended meanwhile.
    }
  }
  const isBelow = (id) => id === root || (parents.has(id) && isBelow(parents.get(id)));
  let cpu = 0;
  let memory = 0;
  for (const id of [...parents.keys()].filter(isBelow)) {
    const fields = readFileSync(`/proc/${id}/stat`, "utf8").replace(/.*\) /, "").split(" ");
    cpu += (Number(fields[11]) + Number(fields[12])) / 100;
    memory += Number(readFileSync(`/proc/${id}/smaps_rollup`, "utf8").match(/^Pss: +(\d+)/m)[1]);
  }
  return { cpu, memory };
}

async function measure() {
  const sandbox = new Sandbox(t);
  const redis = new Redis(t, sandbox);
  await redis.start();
  const nodes = ["one", "two"].map((name) => {
    const args = ["--redis", `redis://127.0.0.1:${redis.port}`, "--show", "http://127.0.0.1:9"];
    return new Node(t, sandbox, name, [...args, "--connections", String(Number(screens) + 1000)]);
  });
  for (const node of nodes) await node.start();
  const text = "x".repeat(Math.max(0, bytes - 90));
  let sequence = 0;
  const publish = async (view) => {
    const body = `{"run":"bench","sequence":${++sequence},"event":"picture","data":{"sent":${process.hrtime.bigint()},"text":"${text}"}}`;
    return ask(nodes[0].publishing, "POST", `/publish/${view}`, { body, headers: { Accept: "text/json", "Content-Length": body.length } });
  };
  const ids = [];
  for (let view = 0; view < views; ++view) {
    const first = await until("the hub", async () => {
      const answer = await publish(`view-${view}`);
      return answer.status < 300 && JSON.parse(answer.text);
    });
    ids.push(first.last_message_id);
  }
  const memoryBefore = nodes.map((node) => used(node.process.pid).memory);

  const running = ids.map((id, view) => {
    const count = Math.round(Number(screens) / views);
    const each = spawn(readers, [count, `view-${view}`, id, ...nodes.map(({ port }) => port)].map(String), {
      stdio: ["pipe", "pipe", "inherit"],
    });
    t.after(() => each.kill());
    return { each, lines: createInterface(each.stdout)[Symbol.asyncIterator]() };
  });
  for (const { lines } of running) if ((await lines.next()).value !== "ready") throw new Error("readers do not come in");
  await pause(2000);
  const memory = nodes.reduce((sum, node, i) => sum + used(node.process.pid).memory - memoryBefore[i], 0);
  const parts = { nodes: () => nodes.reduce((sum, node) => sum + used(node.process.pid).cpu, 0), redis: () => used(redis.process.pid).cpu };
  const before = { nodes: parts.nodes(), redis: parts.redis() };
  const start = performance.now();
  for (let i = 0; i < seconds * rate; ++i) {
    await pause(Math.max(0, start + (1000 * i) / rate - performance.now()));
    sequence = i;
    for (let view = 0; view < views; ++view, --sequence) if ((await publish(`view-${view}`)).status >= 300) throw new Error("refused");
  }
  await pause(2000);
  const passed = (performance.now() - start) / 1000;
  const share = (part) => (100 * (parts[part]() - before[part])) / passed;
  const figures = { screens: Number(screens), bytes, rate, views, kBaScreen: memory / Number(screens), nodes: share("nodes"), redis: share("redis") };
  const results = [];
  for (const { each, lines } of running) {
    each.stdin.end();
    results.push(JSON.parse((await lines.next()).value));
  }
  for (const name of ["missing", "repeated", "lost", "incomplete"]) {
    figures[name] = results.reduce((sum, result) => sum + result[name], 0);
  }
  for (const name of ["median", "of99", "longest", "lastScreen"]) figures[name] = Math.max(...results.map((result) => result[name]));
  return figures;
}

try {
  const { loadavg } = await import("node:os");
  const load = loadavg()[0];
  const f = await measure();
  const round = (value, digits = 0) => Number(value.toFixed(digits));
  if (values.json) console.log(JSON.stringify({ ...f, load }));
  else {
    console.log(`${f.screens} screens, ${f.views} views, ${f.bytes} bytes, ${f.rate} a second, at load ${round(load, 1)}`);
    console.log(`median ${round(f.median)} ms, 99 % ${round(f.of99)}, longest ${round(f.longest)}; last screen ${round(f.lastScreen)}`);
    console.log(`nodes ${round(f.nodes, 1)} % of a core, Redis ${round(f.redis, 1)} %; ${round(f.kBaScreen, 1)} kB a screen`);
    console.log(`missing ${f.missing}, repeated ${f.repeated}, streams lost ${f.lost}, messages that not all have ${f.incomplete}`);
  }
} finally {
  for (const end of ends) await end();
}
process.exit();
