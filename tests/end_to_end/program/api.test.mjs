// What programs ask a running show, and who may steer it.

import assert from "node:assert/strict";
import { test } from "node:test";
import { holdStill, setTimings } from "../support/deck.mjs";
import { at, sampleDeck, setValues, showValues, valueDeck } from "../support/value_deck.mjs";
import { refresh, until } from "../support/wait.mjs";

test("the state tells deck, position and every linked shape", async (t) => {
  const { sandbox, deck } = valueDeck(t, "one", "<b>two</b>");
  sandbox.done("link", deck, ...at(2, "Clock"), "--clock", "yyyy");
  const show = await sandbox.show(deck, "--slide", 2);
  const state = await show.state();
  const year = state.slides[1].shapes[0].text;
  assert.match(year, /^20\d\d$/);
  const shape = (name, row, text) => ({ name, sourceType: 2, connection: "001", column: "Value", row, text });
  const values = [shape("p1 Item", 1, "one"), shape("p2 Item", 2, "<b>two</b>"), shape("p3 Item", 3, null)];
  const clock = { name: "Clock", sourceType: 1, connection: "", column: "", row: 0, text: year };
  assert.deepEqual(state, {
    deck,
    running: true,
    position: 2,
    slideCount: 3,
    slides: [
      { index: 1, hidden: false, shapes: values },
      { index: 2, hidden: false, shapes: [clock] },
      { index: 3, hidden: false, shapes: [] },
    ],
  });
});

test("commands move the show, and events tell of it one by one", async (t) => {
  const { sandbox, show } = await showValues(t, ["one", "two"]);
  const events = show.events();
  await events.next("the state", ({ event }) => event === "state");
  assert.equal(events.all[0].data.slideCount, 3);

  const positions = { next: 2, "goto/3": 3, previous: 2, last: 3, first: 1 };
  for (const [command, position] of Object.entries(positions)) {
    const seen = events.all.length;
    await show.command(command);
    const moved = await events.next(command, ({ event }, i) => event === "position" && i >= seen);
    assert.deepEqual(moved.data, { position, slideCount: 3, blank: "none", ended: false }, command);
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
  const { sandbox, deck, show } = await showValues(t, ["a"], "--name", "board.example");
  const bearer = { Authorization: `Bearer ${show.token}` };
  const cases = [
    ["GET", "/", { Host: `board.example:${show.port}` }, 200],
    ["GET", "/", { Host: "evil.example" }, 403],
    ["POST", "/api/v1/next", {}, 401],
    ["POST", "/api/v1/next", { Authorization: `Bearer ${show.token.slice(1)}0` }, 401],
    ["POST", `/api/v1/next?token=${show.token}`, {}, 401],
    ["POST", "/api/v1/next", { ...bearer, Origin: `http://127.0.0.1:${show.port + 1}` }, 403],
    ["POST", "/api/v1/goto/4", bearer, 409],
    ["GET", "/shop.pptx", {}, 404],
    ["GET", "/values.txt", {}, 404],
  ];
  for (const [method, path, headers, status] of cases) {
    const answer = await show.ask(method, path, headers);
    const told = `${method} ${path} ${JSON.stringify(headers)}: ${answer.text.slice(0, 200)}`;
    assert.equal(answer.status, status, told);
    assert.ok(!answer.text.includes(show.token), told);
  }
  assert.equal((await show.state()).position, 1, "nothing of that moved the show");
  await show.command("next");
  assert.equal((await show.state()).position, 2);
  await show.stop();

  // From a file or the environment, it is not printed.
  sandbox.write("token", "from-the-file\n");
  const empty = sandbox.run("show", deck, "--port", 0, "--token-file", sandbox.write("empty", "\n"));
  assert.match(empty.error, /empty: the token file holds no token/);
  sandbox.environment.LUMENFOLD_TOKEN = "from-the-environment";
  for (const [line, token] of [
    [[], "from-the-environment"],
    [["--token-file", "token"], "from-the-file"],
  ]) {
    const given = await sandbox.show(deck, ...line);
    assert.ok(!given.out.includes(token));
    given.token = token;
    await given.command("next");
  }
});

test("slides move on by their timings or the one given for all, and a looping show begins anew", async (t) => {
  const { sandbox, deck } = sampleDeck(t, "shop");
  const moves = async (...options) => {
    const show = await sandbox.show(deck, ...options);
    const events = show.events();
    const positions = () => events.all.filter(({ event }) => event === "position").map(({ data }) => data.position);
    await until("five slides", () => positions().length >= 5);
    const seen = positions().slice(0, 5);
    assert.deepEqual(seen, seen.map((_, i) => ((seen[0] - 1 + i) % 3) + 1));
    await show.stop();
    assert.equal(show.error, "");
  };
  setTimings(deck, 600);
  await moves();
  holdStill(deck);
  await moves("--kiosk", "--seconds", 0.6);
  const still = await sandbox.show(deck, "--kiosk");
  await still.stop();
  assert.match(still.error, /^lumenfold: The show loops, but no slide goes on by itself, so it stays on its first one/);
});
