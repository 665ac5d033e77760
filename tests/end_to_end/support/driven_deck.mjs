// Decks whose pictures and objects are driven by data and files.

import { mkdirSync, readFileSync, utimesSync } from "node:fs";
import { addPart, editPart, holdStill } from "./deck.mjs";
import { at, textSource, value } from "./value_deck.mjs";

const office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

export const svg = (colour) =>
  `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 9 9"><rect width="9" height="9" fill="${colour}"/></svg>`;

export const setPhotos = (sandbox, name) => sandbox.write("plant/photos.txt", [["File"], [name]]);

// The plant sample, whose picture "Site" on slide 2 shows the file of plant/photos that photos.txt names.
export function photoDeck(sandbox, name) {
  const deck = sandbox.bareSample("plant");
  setPhotos(sandbox, name);
  mkdirSync(sandbox.path("plant/photos"));
  sandbox.done("connection", deck, "add", ...textSource("Photos", "photos.txt"));
  sandbox.done("link", deck, ...at(2, "Site"), ...value(1, "File"), "--folder", "photos", "--extension", ".svg");
  return deck;
}

const outside = (id, kind, target) =>
  `<Relationship Id="${id}" Type="${office}/${kind}" Target="${target}" TargetMode="External"/></Relationships>`;

// The plant sample, unlinked, whose picture "Site" on slide 2 is linked to a file.
export function linkedPictureDeck(sandbox, file) {
  const deck = sandbox.bareSample("plant");
  holdStill(deck);
  editPart(deck, "ppt/slides/_rels/slide2.xml.rels", (xml) =>
    xml.replace("</Relationships>", outside("rIdFile", "image", `file://${file}`)),
  );
  editPart(deck, "ppt/slides/slide2.xml", (xml) => xml.replace(/<a:blip r:embed="[^"]*"/, '<a:blip r:link="rIdFile"'));
  utimesSync(file, 1e9, 1e9);
  sandbox.done("slide", deck, 2, "--refresh-linked-objects", "on");
  return deck;
}

export const sheetShape = 900;

// The shop sample with cells of its workbook linked into slide 1 as PowerPoint pastes them.
export function linkedSheetDeck(sandbox, item) {
  const deck = sandbox.sample("shop");
  holdStill(deck);
  const book = sandbox.path("shop/prices.xlsx");
  // Linked objects are told apart by the second of their files.
  utimesSync(book, 1e9, 1e9);
  const target = `file://${book}!${item}`;
  addPart(deck, "ppt/media/preview.png", readFileSync(sandbox.path("shop/pictures/flat-white.png")));
  editPart(deck, "ppt/slides/_rels/slide1.xml.rels", (xml) =>
    xml.replace(
      "</Relationships>",
      `<Relationship Id="rIdPreview" Type="${office}/image" Target="../media/preview.png"/>` +
        outside("rIdSheet", "oleObject", target),
    ),
  );
  const box = '<a:off x="4500000" y="1300000"/><a:ext cx="7000000" cy="2000000"/>';
  const place = (name) => `<${name}:xfrm>${box}</${name}:xfrm>`;
  const preview =
    `<p:pic><p:nvPicPr><p:cNvPr id="0" name=""/><p:cNvPicPr/><p:nvPr/></p:nvPicPr><p:blipFill>` +
    `<a:blip r:embed="rIdPreview"/><a:stretch><a:fillRect/></a:stretch></p:blipFill><p:spPr>${place("a")}` +
    `<a:prstGeom prst="rect"><a:avLst/></a:prstGeom></p:spPr></p:pic>`;
  const frame =
    `<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id="${sheetShape}" name="Sheet"/><p:cNvGraphicFramePr/><p:nvPr/>` +
    `</p:nvGraphicFramePr>${place("p")}<a:graphic>` +
    `<a:graphicData uri="http://schemas.openxmlformats.org/presentationml/2006/ole">` +
    `<p:oleObj name="Worksheet" r:id="rIdSheet" imgW="7000000" imgH="2000000" progId="Excel.Sheet.12">` +
    `<p:link updateAutomatic="1"/>${preview}</p:oleObj></a:graphicData></a:graphic></p:graphicFrame>`;
  editPart(deck, "ppt/slides/slide1.xml", (xml) => xml.replace("</p:spTree>", `${frame}</p:spTree>`));
  return deck;
}
