// New versions of a deck that is being shown.

import { copyFileSync, readFileSync, renameSync, writeFileSync } from "node:fs";
import { editPart } from "./deck.mjs";

// Longest time from a whole file to the screens: two seconds, and what a machine with more to do takes.
export const takeUp = 8000;

// Replaces the deck as most programs save: a new file takes the name of the old one. `change` alters the new
// one, given its path.
export function replaceDeck(deck, change) {
  const fresh = `${deck}.new`;
  copyFileSync(deck, fresh);
  change(fresh);
  renameSync(fresh, deck);
}

// Writes the bytes of another file over the deck, in pieces with pauses between them.
export async function writeInPieces(deck, from, pieces, pause) {
  const bytes = readFileSync(from);
  const size = Math.ceil(bytes.length / pieces);
  for (let at = 0; at < bytes.length; at += size) {
    writeFileSync(deck, bytes.subarray(at, at + size), { flag: at === 0 ? "w" : "a" });
    await new Promise((resolve) => setTimeout(resolve, pause));
  }
}

// Puts the slides into this order, by their present numbers; those left out are gone.
export function orderSlides(deck, order) {
  editPart(deck, "ppt/presentation.xml", (xml) => {
    const slides = xml.match(/<p:sldId [^>]*>/g);
    return xml.replace(/(<p:sldIdLst>).*(<\/p:sldIdLst>)/, (_, open, close) => {
      return open + order.map((slide) => slides[slide - 1]).join("") + close;
    });
  });
}

// Replaces a text that stands on a slide as it is.
export function replaceText(deck, slide, from, to) {
  editPart(deck, `ppt/slides/slide${slide}.xml`, (xml) => xml.replace(`>${from}<`, `>${to}<`));
}
