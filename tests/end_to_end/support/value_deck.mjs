// A deck linked by the program's own verbs: the shop sample without its links,
// whose slide 1 shows the first rows of a source.

import { holdStill } from "./deck.mjs";

// The shapes in the order of the rows.
export const shapes = ["Item", "Note"].flatMap((column) =>
  [1, 2, 3, 4, 5, 6, 7].map((row) => `p${row} ${column}`),
);

// A deck whose first shapes show rows of column Value. `source` describes the
// connection, as `connection add` takes it.
export function makeLinkedDeck(sandbox, source, rows) {
  const deck = sandbox.sample("shop");
  holdStill(deck);
  sandbox.done("unlink", deck, "--all");
  sandbox.done("connection", deck, "add", ...source);
  shapes.slice(0, rows).forEach((shape, i) => {
    const value = ["--connection", "001", "--column", "Value", "--row", i + 1];
    sandbox.done("link", deck, "--slide", 1, "--shape", shape, ...value);
  });
  return deck;
}

// The values of the decks below, in values.txt.
export function setValues(sandbox, ...values) {
  sandbox.write("shop/values.txt", [["Value"], ...values.map((value) => [value])]);
}

// With at least three rows linked.
export function makeValueDeck(sandbox, ...values) {
  sandbox.sample("shop");
  setValues(sandbox, ...values);
  const source = ["--type", "text", "--description", "Values", "--file", "values.txt", "--header"];
  return makeLinkedDeck(sandbox, source, Math.max(3, values.length));
}

export function makeDatabaseDeck(sandbox, connectionString, sql, rows = 1) {
  const source = ["--type", "database", "--description", "Values", "--connection-string", connectionString];
  return makeLinkedDeck(sandbox, [...source, "--sql", sql], rows);
}
