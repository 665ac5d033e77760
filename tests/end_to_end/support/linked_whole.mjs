// Links every shape of a deck that can be linked, each kind to data of its own.

import { cpSync, mkdirSync, writeFileSync } from "node:fs";
import { parts, readPart } from "./deck.mjs";
import { svg } from "./driven_deck.mjs";
import { at, textSource, value } from "./value_deck.mjs";

const plain = (name) =>
  name.replace(/&(?:lt|gt|quot|apos|amp|#(\d+));/g, (entity, code) =>
    code ? String.fromCodePoint(code) : { "&lt;": "<", "&gt;": ">", "&quot;": '"', "&apos;": "'", "&amp;": "&" }[entity],
  );

function kindOf(xml) {
  if (xml.startsWith("<p:pic>")) return "picture";
  if (xml.startsWith("<p:graphicFrame")) return /<a:graphicData uri="[^"]*\/chart"/.test(xml) ? "chart" : null;
  return xml.includes("<p:txBody>") ? "text" : null;
}

// {slide, name, kind} of the shapes whose names occur once on their slide. `slide` counts parts,
// which the generators number as they show them.
function shapes(deck) {
  const slides = parts(deck).filter((part) => /^ppt\/slides\/slide\d+\.xml$/.test(part));
  return slides.flatMap((part) => {
    const slide = Number(part.match(/\d+/)[0]);
    const elements = readPart(deck, part).matchAll(/<p:(sp|pic|graphicFrame)(?: [^>]*)?>.*?<\/p:\1>/gs);
    const all = [...elements].map(([xml]) => ({
      slide,
      name: plain(xml.match(/<p:cNvPr [^>]*?name="([^"]*)"/)[1]),
      kind: kindOf(xml),
    }));
    const isUnique = ({ name }) => name !== "" && all.filter((other) => other.name === name).length === 1;
    return all.filter((shape) => shape.kind && isUnique(shape));
  });
}

// Leaves the links in the deck and returns how many shapes of each kind are linked.
// The data lie in the sandbox's folder "data", beside the deck.
export function linkWhole(sandbox, deck) {
  const rows = [
    ["Text", "File"],
    ["Ωmega & <sons>", "flat-white.png"],
    [`"two\nlines"`, "drawn.svg"],
    ["", "apple-tart.png"],
  ];
  const numbers = [["X", "First", "Second"], ...[1, 2, 3, 4, 5, 6].map((x) => [x, x * 1.5, 9 - x])];
  mkdirSync(sandbox.path("data"));
  cpSync(sandbox.path("shop/pictures"), sandbox.path("data/pictures"), { recursive: true });
  writeFileSync(sandbox.path("data/pictures/drawn.svg"), svg("red"));
  sandbox.write("data/texts.txt", rows);
  sandbox.write("data/numbers.txt", numbers.map((row) => row.map(String)));
  const connect = (file) => {
    return sandbox.done("connection", deck, "add", ...textSource(file, sandbox.path(`data/${file}`))).trim();
  };
  const texts = connect("texts.txt");
  const chart = ["--connection", connect("numbers.txt"), "--chart"];
  const ways = {
    text: (i) => (i % 4 === 3 ? ["--clock", "hh:nn:ss"] : value((i % 3) + 1, "Text", texts)),
    picture: (i) => [...value((i % 3) + 1, "File", texts), "--folder", sandbox.path("data/pictures"), "--extension", ""],
    chart: () => chart,
  };
  const linked = { text: 0, picture: 0, chart: 0 };
  for (const { slide, name, kind } of shapes(deck)) {
    const { code } = sandbox.run("link", deck, ...at(slide, name), ...ways[kind](linked[kind]));
    if (code === 0) ++linked[kind];
  }
  return linked;
}
