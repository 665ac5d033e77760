// A deck linked by the program's own verbs: the shop sample without its links,
// whose slide 1 shows the first rows of values.txt.

import { holdStill } from "./deck.mjs";

export const shapes = ["p1 Item", "p2 Item", "p3 Item"];

// One value for each of `shapes`.
export function setValues(sandbox, ...values) {
  sandbox.write("shop/values.txt", [["Value"], ...values.map((value) => [value])]);
}

export function makeValueDeck(sandbox, ...values) {
  const deck = sandbox.sample("shop");
  holdStill(deck);
  sandbox.done("unlink", deck, "--all");
  setValues(sandbox, ...values);
  sandbox.done("connection", deck, "add", "--type", "text", "--description", "Values", "--file", "values.txt", "--header");
  shapes.forEach((shape, i) => {
    sandbox.done("link", deck, "--slide", 1, "--shape", shape, "--connection", "001", "--column", "Value", "--row", i + 1);
  });
  return deck;
}
