// A deck with a table on slide 1: the shop sample, unlinked, with data beside it.

import { editPart, holdStill, readPart } from "./deck.mjs";
import { textSource } from "./value_deck.mjs";

const uri = "http://schemas.openxmlformats.org/drawingml/2006/table";
const slide = "ppt/slides/slide1.xml";
export const tableShape = 900;

const cell = (text) =>
  `<a:tc><a:txBody><a:bodyPr/><a:lstStyle/><a:p><a:r><a:rPr lang="en-GB" b="1"/><a:t>${text}</a:t></a:r>` +
  `<a:endParaRPr lang="en-GB"/></a:p></a:txBody><a:tcPr/></a:tc>`;
const row = (cells) => `<a:tr h="370840">${cells.map(cell).join("")}</a:tr>`;

const frame = (rows) =>
  `<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id="${tableShape}" name="Departures"/><p:cNvGraphicFramePr/><p:nvPr/>` +
  `</p:nvGraphicFramePr><p:xfrm><a:off x="0" y="0"/><a:ext cx="6000000" cy="1483360"/></p:xfrm><a:graphic>` +
  `<a:graphicData uri="${uri}"><a:tbl><a:tblPr firstRow="1" bandRow="1"/><a:tblGrid>` +
  `${rows[0].map(() => '<a:gridCol w="2000000"/>').join("")}</a:tblGrid>${rows.map(row).join("")}</a:tbl>` +
  `</a:graphicData></a:graphic></p:graphicFrame>`;

// `rows` are what the author typed, the first of them the header.
export function makeTableDeck(sandbox, rows) {
  const deck = sandbox.bareSample("shop");
  holdStill(deck);
  editPart(deck, slide, (xml) => xml.replace("</p:spTree>", `${frame(rows)}</p:spTree>`));
  return deck;
}

export const setTrains = (sandbox, ...rows) => sandbox.write("shop/trains.txt", [["Zeit", "Zug", "Nach"], ...rows]);

// As above, and linked.
export function makeLinkedTable(sandbox, rows) {
  const deck = makeTableDeck(sandbox, rows);
  sandbox.done("connection", deck, "add", ...textSource("Trains", "trains.txt"));
  sandbox.done("link", deck, "--slide", 1, "--shape", "Departures", "--connection", "001", "--table");
  return deck;
}

// The table as the deck's file holds it.
export const tableInFile = (deck) => readPart(deck, slide).match(/<a:tbl>.*<\/a:tbl>/s)[0];
