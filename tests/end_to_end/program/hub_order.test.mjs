// What a screen makes of a hub's messages when some are missing, come again, or are of another run.

import assert from "node:assert/strict";
import { test } from "node:test";
import { hubOrder } from "../../../src/web/client/screen/hub_order.js";

// `told` gathers what comes onto the stage: pictures as "P3", shapes as "4", with "!" where they do not follow.
function screen() {
  const told = [];
  let needs = 0;
  const order = hubOrder({
    picture: (data, number, isNext) => told.push(`P${number}${isNext ? "" : "!"}`),
    shapes: (data, number) => told.push(`${number}`),
    need: () => needs++,
  });
  const take = (sequence, event = "shapes", run = "a") => order.take({ run, sequence, event, data: {} });
  const state = (sequence, { run = "a", isNewest } = {}) => order.begin({ run, sequence, picture: {} }, isNewest);
  const heard = () => told.splice(0).join(" ");
  state(10);
  assert.equal(heard(), "P10!");
  return { order, take, state, heard, needs: () => needs };
}

test("messages come in order, each once", () => {
  const { take, heard, needs } = screen();
  for (const number of [9, 10, 11, 11, 12]) take(number);
  take(12, "beat");
  take(11, "beat");
  take(12, "fetch");
  take(13, "picture");
  assert.equal(heard(), "11 12 P13");
  take(20, "picture");
  assert.equal(heard(), "P20!", "a picture says everything");
  assert.equal(needs(), 0);
});

for (const [what, sequence, event, least, after] of [
  ["a missing message", 13, "shapes", 12, "P12! 13 14"],
  ["a beat with a higher number", 12, "beat", 12, "P12! 13 14"],
  ["a message that is told by number", 12, "fetch", 12, "P12! 13 14"],
]) {
  test(`${what} is made up for by a state that is new enough, and what came meanwhile`, () => {
    const { order, take, state, heard, needs } = screen();
    take(sequence, event);
    if (event !== "shapes") take(13);
    take(14);
    take(14, "beat");
    assert.equal(needs(), 1);
    state(least - 1); // of a cache
    assert.ok(order.isWaiting);
    assert.equal(heard(), "");
    state(least);
    assert.ok(!order.isWaiting);
    assert.equal(heard(), after);
  });
}

test("another run is begun by its state, also when a cache still has one of the run before", () => {
  const { order, take, state, heard } = screen();
  take(0, "beat", "b");
  take(1, "shapes", "b");
  state(10);
  assert.ok(order.isWaiting, "the state may be older than the message");
  state(0, { run: "b" });
  assert.equal(heard(), "P0! 1");
  take(11);
  take(2, "shapes", "b");
  assert.equal(heard(), "2", "the run before is over");
  assert.ok(!order.isWaiting);
});

test("messages of a run that is over do not hold up the one that goes on", () => {
  const { order, take, state, heard } = screen();
  take(70, "shapes", "old");
  take(71, "shapes", "old");
  take(11);
  state(10, { isNewest: true });
  assert.ok(!order.isWaiting);
  take(72, "shapes", "old");
  take(12);
  assert.equal(heard(), "11 12");
});

test("two runs at once come to rest with the newer one", () => {
  const { order, take, state, heard, needs } = screen();
  take(5, "shapes", "b");
  take(0, "beat", "c");
  take(1, "shapes", "c");
  state(1, { run: "c", isNewest: true });
  assert.equal(heard(), "P1!");
  assert.ok(!order.isWaiting);
  take(2, "shapes", "c");
  assert.equal(heard(), "2");
  assert.equal(needs(), 1);
});

test("a flood while the state cannot be had stays bounded, and ends with a newer state", () => {
  const { order, take, state, heard } = screen();
  for (let number = 13; number < 2013; number++) take(number);
  state(12);
  assert.ok(order.isWaiting, "what followed has been dropped");
  state(2012);
  assert.equal(heard(), "P2012!");
  assert.ok(!order.isWaiting);
});
