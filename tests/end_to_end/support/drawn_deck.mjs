// Decks as other programs write them, with something of every kind that can be linked.

import { createRequire } from "node:module";

// Debian's Node takes its module for a script.
const PptxGenJS = createRequire(import.meta.url)("pptxgenjs");

const kinds = ["area", "bar", "bubble", "doughnut", "line", "pie", "radar", "scatter"];
const columns = { bar: { barDir: "bar" }, line: { lineDataSymbol: "none" }, doughnut: { holeSize: 50 } };

function series(kind) {
  if (kind === "scatter" || kind === "bubble") {
    const sizes = kind === "bubble" ? { sizes: [1, 2, 3] } : {};
    return [
      { name: "X", values: [1, 2, 3] },
      { name: "Y", values: [4, 6, 5], ...sizes },
    ];
  }
  const labels = ["North", "South", "West"];
  const first = { name: "First", labels, values: [4, 6, 5] };
  return kind === "pie" || kind === "doughnut" ? [first] : [first, { name: "Second", labels, values: [3, 2, 7] }];
}

// A picture's file goes into it.
export async function drawDeck(sandbox, picture) {
  const deck = new PptxGenJS();
  deck.layout = "LAYOUT_WIDE";
  const words = deck.addSlide();
  words.addText("A title", { objectName: "Title", x: 1, y: 0.3, w: 8, h: 0.8, fontSize: 32 });
  words.addText(
    [
      { text: "bold ", options: { bold: true } },
      { text: "and a link", options: { hyperlink: { url: "https://example.org/" } } },
      { text: "a point", options: { bullet: true, breakLine: true } },
      { text: "another", options: { bullet: { type: "number" } } },
    ],
    { objectName: "Runs", x: 1, y: 1.3, w: 5, h: 2 },
  );
  words.addShape("star5", { objectName: "Star", x: 7, y: 1.3, w: 2, h: 2, fill: { color: "FFC000" }, rotate: 15 });
  words.addText("09:30", { objectName: "Now", shape: "roundRect", x: 9.5, y: 1.3, w: 2, h: 1, line: { color: "0000FF" } });
  words.addImage({ objectName: "Photo", path: picture, x: 1, y: 4, w: 3, h: 2, hyperlink: { slide: 2 } });
  words.addImage({ objectName: "Round", path: picture, x: 5, y: 4, w: 2, h: 2, rounding: true });
  words.addTable([["a", "b"], ["1", "2"]], { objectName: "Table", x: 8, y: 4, w: 4 });
  words.addNotes("What the speaker says");
  for (const [i, kind] of kinds.entries()) {
    const slide = i % 4 === 0 ? deck.addSlide() : deck.slides.at(-1);
    const place = { x: 0.3 + (i % 2) * 6.5, y: 0.3 + Math.floor((i % 4) / 2) * 3.6, w: 6, h: 3.4 };
    slide.addChart(kind, series(kind), { objectName: `Chart ${kind}`, ...place, ...columns[kind] });
  }
  await deck.writeFile({ fileName: sandbox.path("drawn.pptx") });
  return sandbox.path("drawn.pptx");
}
