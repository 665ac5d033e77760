// What stands in contrib/ for Prometheus and Grafana: it is well formed, and asks for what a show tells.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdirSync, readFileSync } from "node:fs";
import { test } from "node:test";
import { fileURLToPath } from "node:url";
import { Sandbox } from "../support/sandbox.mjs";
import { sampleDeck } from "../support/value_deck.mjs";

const contributed = (name) => fileURLToPath(new URL(`../../../contrib/${name}`, import.meta.url));
const rules = contributed("prometheus/lumenfold.rules.yml");
const dashboard = JSON.parse(readFileSync(contributed("grafana/lumenfold.json"), "utf8"));
const expressions = dashboard.panels.flatMap(({ targets }) => targets.map(({ expr }) => expr));

const promtool = (...args) => execFileSync("promtool", args, { encoding: "utf8" });

// The families that a program tells, histograms with all that they consist of.
function families(metrics) {
  const parts = { histogram: ["_bucket", "_sum", "_count"] };
  return [...metrics.matchAll(/^# TYPE (\S+) (\S+)$/gm)].flatMap(([, name, type]) =>
    (parts[type] ?? [""]).map((part) => name + part),
  );
}

test("alerts are raised when they should be", () => {
  promtool("check", "rules", rules);
  promtool("test", "rules", contributed("prometheus/lumenfold.rules.test.yml"));
});

test("every metric that is asked for is one that a show or a player tells, and is what Prometheus reads", async (t) => {
  const { sandbox, deck } = sampleDeck(t, "shop");
  // Nobody is there, which the show has to live with.
  const hub = ["--publish", "http://127.0.0.1:1/publish"];
  const known = sandbox.path("screens.txt");
  sandbox.done("screen", "add", "HALL1", "--screens", known);
  const show = await sandbox.show(deck, ...hub, "--screens", known);
  mkdirSync(sandbox.path("empty"));
  const player = await sandbox.play(sandbox.path("empty"));
  const told = [];
  for (const { port } of [show, player]) {
    const metrics = await (await fetch(`http://127.0.0.1:${port}/metrics`)).text();
    execFileSync("promtool", ["check", "metrics"], { input: metrics });
    told.push(...families(metrics));
  }
  const asked = new Set([readFileSync(rules, "utf8"), ...expressions].join("\n").match(/\blumenfold_[a-z_]+/g));
  assert.deepEqual([...asked].filter((name) => !told.includes(name)), []);
});

test("every expression of the dashboard is one, and its panels do not overlap", (t) => {
  const sandbox = new Sandbox(t);
  const record = (expr, i) => {
    const plain = expr.replaceAll("$__rate_interval", "5m").replaceAll("$instance", ".*");
    return `    - {record: "panel:${i}", expr: ${JSON.stringify(plain)}}`;
  };
  const file = sandbox.write("panels.yml", `groups:\n- name: panels\n  rules:\n${expressions.map(record).join("\n")}\n`);
  promtool("check", "rules", file);

  const cells = dashboard.panels.flatMap(({ gridPos: { x, y, w, h } }) =>
    Array.from({ length: w * h }, (_, i) => `${x + (i % w)},${y + Math.floor(i / w)}`),
  );
  assert.equal(new Set(cells).size, cells.length);
  assert.ok(dashboard.panels.every(({ gridPos: { x, w } }) => x + w <= 24));
});
