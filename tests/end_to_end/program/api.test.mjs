// What programs ask a running show, and who may steer it.

import assert from "node:assert/strict";
import { test } from "node:test";
import { holdStill, setTimings } from "../support/deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeValueDeck, setValues } from "../support/value_deck.mjs";
import { refresh, until } from "../support/wait.mjs";

test("the state tells deck, position and every linked shape", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "one", "<b>two</b>");
  sandbox.done("link", deck, "--slide", 2, "--shape", "Clock", "--clock", "yyyy");
  const show = await sandbox.show(deck, "--slide", 2);
  const state = await show.state();
  const year = state.slides[1].shapes[0].text;
  assert.match(year, /^20\d\d$/);
  const shape = (name, row, text) => ({ name, sourceType: 2, connection: "001", column: "Value", row, text });
  assert.deepEqual(state, {
    deck,
    running: true,
    position: 2,
    slideCount: 3,
    slides: [
      {
        index: 1,
        hidden: false,
        shapes: [shape("p1 Item", 1, "one"), shape("p2 Item", 2, "<b>two</b>"), shape("p3 Item", 3, null)],
      },
      {
        index: 2,
        hidden: false,
        shapes: [{ name: "Clock", sourceType: 1, connection: "", column: "", row: 0, text: year }],
      },
      { index: 3, hidden: false, shapes: [] },
    ],
  });
});

test("commands move the show, and events tell of it one by one", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "one", "two");
  const show = await sandbox.show(deck);
  const events = show.events();
  await events.next("the state", ({ event }) => event === "state");
  assert.equal(events.all[0].data.slideCount, 3);

  const moves = [
    ["next", 2],
    ["goto/3", 3],
    ["previous", 2],
    ["first", 1],
    ["last", 3],
    ["goto/1", 1],
  ];
  for (const [command, position] of moves) {
    const seen = events.all.length;
    await show.command(command);
    const moved = await events.next(command, ({ event }, i) => event === "position" && i >= seen);
    assert.deepEqual(moved.data, { position, slideCount: 3, blank: "none", ended: false }, command);
    assert.equal((await show.state()).position, position, command);
  }
  setValues(sandbox, "one", "changed");
  const { data } = await events.next("the new value", ({ event }) => event === "values", refresh);
  assert.deepEqual(data, [{ slide: 1, shapes: [{ name: "p2 Item", text: "changed" }] }]);
  const seen = events.all.length;
  setValues(sandbox, "one");
  const gone = await events.next("its end", ({ event }, i) => event === "values" && i >= seen, refresh);
  assert.deepEqual(gone.data, [{ slide: 1, shapes: [{ name: "p2 Item", text: null }] }]);

  await show.command("end");
  await until("the end of the stream", () => events.isOver);
  assert.deepEqual(
    events.all.filter(({ event }) => event === "end").map((end) => end.data.reason),
    ["show", "server"],
  );
  const first = events.all[0].id;
  assert.deepEqual(
    events.all.map(({ id }) => id),
    events.all.map((_, i) => first + i),
  );
  assert.deepEqual(await show.ended, { code: 0, signal: null });
});

test("only who has the token steers, and only pages of the show's own name ask", async (t) => {
  const sandbox = new Sandbox(t);
  const show = await sandbox.show(makeValueDeck(sandbox, "a"), "--name", "board.example");
  const bearer = { Authorization: `Bearer ${show.token}` };
  const own = `127.0.0.1:${show.port}`;
  const cases = [
    ["GET", "/api/v1/state", {}, 200],
    ["GET", "/", { Host: `board.example:${show.port}` }, 200],
    ["GET", "/", { Host: "evil.example" }, 403],
    ["POST", "/api/v1/next", {}, 401],
    ["POST", "/api/v1/next", { Authorization: `Bearer ${show.token.slice(1)}0` }, 401],
    ["POST", `/api/v1/next?token=${show.token}`, {}, 401],
    ["POST", "/api/v1/next", { ...bearer, Origin: `http://127.0.0.1:${show.port + 1}` }, 403],
    ["POST", "/api/v1/goto/4", bearer, 409],
    ["GET", "/assets/../../../etc/passwd", {}, 404],
    ["GET", "/shop.pptx", {}, 404],
    ["GET", "/values.txt", {}, 404],
  ];
  for (const [method, path, headers, status] of cases) {
    const answer = await show.ask(method, path, headers);
    const told = `${method} ${path} ${JSON.stringify(headers)}: ${answer.text.slice(0, 200)}`;
    assert.equal(answer.status, status, told);
    assert.ok(!answer.text.includes(show.token), told);
    if (status >= 400) assert.ok(answer.json.error, told);
  }
  assert.equal((await show.state()).position, 1, "nothing of that moved the show");
  const allowed = await show.ask("POST", "/api/v1/next", { ...bearer, Origin: `http://${own}` });
  assert.ok(allowed.status < 300, allowed.text);
  assert.equal((await show.state()).position, 2);
});

test("the token may come from a file or the environment, and is then not printed", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeValueDeck(sandbox, "a");
  sandbox.write("token", "from-the-file\n");
  const empty = sandbox.run("show", deck, "--port", 0, "--token-file", sandbox.write("empty", "\n"));
  assert.equal(empty.code, 1);
  assert.match(empty.error, /empty: the token file holds no token/);

  sandbox.environment.LUMENFOLD_TOKEN = "from-the-environment";
  for (const [line, token] of [
    [[], "from-the-environment"],
    [["--token-file", "token"], "from-the-file"],
  ]) {
    const show = await sandbox.show(deck, ...line);
    assert.equal(show.token, undefined, show.out);
    assert.ok(!show.out.includes(token));
    const answer = await show.ask("POST", "/api/v1/next", { Authorization: `Bearer ${token}` });
    assert.ok(answer.status < 300, token);
    await show.stop();
  }
});

test("slides move on by their timings, and a looping show begins anew", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("shop");
  setTimings(deck, 600);
  const began = Date.now();
  const show = await sandbox.show(deck);
  const events = show.events();
  const positions = () => events.all.filter(({ event }) => event === "position");
  await until("five slides", () => positions().length >= 5);
  const numbers = positions()
    .slice(0, 5)
    .map(({ data }) => data.position);
  const expected = numbers.map((_, i) => ((numbers[0] - 1 + i) % 3) + 1);
  assert.deepEqual(numbers, expected);
  // A busy machine hears of them late, never early.
  const passed = positions()[4].time - began;
  assert.ok(passed >= 5 * 600, `five slides of 600 ms stood ${passed}`);
});

test("a show without loop ends black, and ends for good one step later", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("plant");
  holdStill(deck);
  const show = await sandbox.show(deck);
  const events = show.events();
  await events.next("the state", ({ event }) => event === "state");
  await show.command("last");
  await show.command("next");
  const { data } = await events.next(
    "the end slide",
    ({ event, data }) => event === "position" && data.ended,
  );
  assert.deepEqual(data, { position: 0, slideCount: 3, blank: "none", ended: true });
  await show.command("previous");
  await until("the last slide again", async () => (await show.state()).position === 3);
  await show.command("next");
  await show.command("next");
  assert.deepEqual(await show.ended, { code: 0, signal: null });
});
