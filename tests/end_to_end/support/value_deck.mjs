// A deck linked by the program's own verbs: the shop sample without its links,
// whose slide 1 shows the first rows of values.txt, at least three.

import { holdStill } from "./deck.mjs";

// The shapes in the order of the rows.
export const shapes = ["Item", "Note"].flatMap((column) =>
  [1, 2, 3, 4, 5, 6, 7].map((row) => `p${row} ${column}`),
);

export function setValues(sandbox, ...values) {
  sandbox.write("shop/values.txt", [["Value"], ...values.map((value) => [value])]);
}

export function makeValueDeck(sandbox, ...values) {
  const deck = sandbox.sample("shop");
  holdStill(deck);
  sandbox.done("unlink", deck, "--all");
  setValues(sandbox, ...values);
  sandbox.done(
    "connection",
    deck,
    "add",
    "--type",
    "text",
    "--description",
    "Values",
    "--file",
    "values.txt",
    "--header",
  );
  shapes.slice(0, Math.max(3, values.length)).forEach((shape, i) => {
    sandbox.done(
      "link",
      deck,
      "--slide",
      1,
      "--shape",
      shape,
      "--connection",
      "001",
      "--column",
      "Value",
      "--row",
      i + 1,
    );
  });
  return deck;
}
