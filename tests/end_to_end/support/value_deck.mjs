// A deck linked by the program's own verbs: the shop sample without its links,
// whose slide 1 shows the first rows of a source.

import { holdStill } from "./deck.mjs";
import { Sandbox } from "./sandbox.mjs";

// The shapes in the order of the rows.
export const shapes = ["Item", "Note"].flatMap((column) =>
  [1, 2, 3, 4, 5, 6, 7].map((row) => `p${row} ${column}`),
);

// What is said of a text file with names of columns, of a shape's place, and of the value that it shows.
export const textSource = (description, file) => ["--type", "text", "--description", description, "--file", file, "--header"];
export const at = (slide, shape) => ["--slide", slide, "--shape", shape];
export const value = (row, column = "Value", connection = "001") => ["--connection", connection, "--column", column, "--row", row];

// A deck whose first shapes show rows of column Value. `source` describes the
// connection, as `connection add` takes it.
export function makeLinkedDeck(sandbox, source, rows) {
  const deck = sandbox.bareSample("shop");
  holdStill(deck);
  sandbox.done("connection", deck, "add", ...source);
  shapes.slice(0, rows).forEach((shape, i) => sandbox.done("link", deck, ...at(1, shape), ...value(i + 1)));
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
  return makeLinkedDeck(sandbox, textSource("Values", "values.txt"), Math.max(3, values.length));
}

// Such a deck, and a sample, in a sandbox of its own: {sandbox, deck}.
export function valueDeck(t, ...values) {
  const sandbox = new Sandbox(t);
  return { sandbox, deck: makeValueDeck(sandbox, ...values) };
}
export function sampleDeck(t, name) {
  const sandbox = new Sandbox(t);
  return { sandbox, deck: sandbox.sample(name) };
}
// The sample without its links.
export function bareDeck(t, name) {
  const sandbox = new Sandbox(t);
  return { sandbox, deck: sandbox.bareSample(name) };
}

// A show of these values: {sandbox, deck, show}.
export async function showValues(t, values, ...options) {
  const { sandbox, deck } = valueDeck(t, ...values);
  return { sandbox, deck, show: await sandbox.show(deck, ...options) };
}

export function makeDatabaseDeck(sandbox, connectionString, sql, rows = 1) {
  const source = ["--type", "database", "--description", "Values", "--connection-string", connectionString];
  return makeLinkedDeck(sandbox, [...source, "--sql", sql], rows);
}
