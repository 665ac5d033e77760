// Looks into decks, and changes them behind the program's back.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { copyFileSync, mkdirSync, mkdtempSync, readFileSync, renameSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { basename, dirname, join } from "node:path";
import { createHash } from "node:crypto";

const large = { encoding: "utf8", maxBuffer: 64 * 1024 * 1024 };

export function readPart(deck, part) {
  return execFileSync("unzip", ["-p", deck, part], large);
}

export function parts(deck) {
  return execFileSync("unzip", ["-Z1", deck], large).trim().split("\n");
}

// All the XML of a deck in one text.
export function allXml(deck) {
  return execFileSync("unzip", ["-p", deck, "*.xml"], large);
}

// Replaces a part by what `change` makes of it; `change` must change something.
export function editPart(deck, part, change) {
  const old = readPart(deck, part);
  const fresh = change(old);
  if (fresh === old) throw new Error(`${part} of ${deck} is not as the test expects it`);
  addPart(deck, part, fresh);
}

// Adds a part, or replaces it.
export function addPart(deck, part, content) {
  const folder = mkdtempSync(join(tmpdir(), "lumenfold-part-"));
  try {
    mkdirSync(join(folder, dirname(part)), { recursive: true });
    writeFileSync(join(folder, part), content);
    // In one step, as a show may be looking: zip takes the old file away first.
    const fresh = join(dirname(deck), `.${basename(deck)}.new`);
    copyFileSync(deck, fresh);
    execFileSync("zip", ["-q", "-X", fresh, part], { cwd: folder });
    renameSync(fresh, deck);
  } finally {
    rmSync(folder, { recursive: true });
  }
}

function slides(deck) {
  return parts(deck).filter((part) => /^ppt\/slides\/slide\d+\.xml$/.test(part));
}

// No timings, no beginning anew, no kiosk: the show moves only when told to.
export function holdStill(deck) {
  for (const slide of slides(deck)) editPart(deck, slide, (xml) => xml.replace(/ advTm="\d+"/g, ""));
  editPart(deck, "ppt/presProps.xml", (xml) =>
    xml.replace(/ loop="1"/, "").replace("<p:kiosk/>", "<p:present/>"),
  );
}

export function setTimings(deck, milliseconds) {
  for (const slide of slides(deck)) {
    editPart(deck, slide, (xml) => xml.replace(/ advTm="\d+"/g, ` advTm="${milliseconds}"`));
  }
}

export function renameShape(deck, slide, from, to) {
  const escaped = to.replace(/&/g, "&amp;").replace(/</g, "&lt;").replace(/"/g, "&quot;");
  editPart(deck, `ppt/slides/slide${slide}.xml`, (xml) =>
    xml.replace(`name="${from}"`, () => `name="${escaped}"`),
  );
}

// The id of a shape's element on a screen.
export function elementId(deck, slide, shape) {
  const id = readPart(deck, `ppt/slides/slide${slide}.xml`).match(`<p:cNvPr id="(\\d+)" name="${shape}"`)[1];
  return `s${slide}-sh${id}`;
}

// The text of a shape as its part holds it, paragraphs as lines.
export function textInFile(deck, slide, shape) {
  const xml = readPart(deck, `ppt/slides/slide${slide}.xml`);
  const body = xml.split("<p:sp>").find((sp) => sp.includes(`name="${shape}"`));
  return body
    .split("</a:p>")
    .slice(0, -1)
    .map((paragraph) =>
      [...paragraph.matchAll(/<a:t(?: [^>]*)?>([^<]*)<\/a:t>/g)].map((match) => match[1]).join(""),
    )
    .join("\n")
    .replace(/&#(\d+);/g, (_, code) => String.fromCodePoint(code))
    .replace(/&lt;/g, "<")
    .replace(/&gt;/g, ">")
    .replace(/&quot;/g, '"')
    .replace(/&apos;/g, "'")
    .replace(/&amp;/g, "&");
}

export function digest(file) {
  return createHash("sha256").update(readFileSync(file)).digest("hex");
}

// Nothing in it tells of links, nor of these words.
export function assertFree(deck, ...words) {
  const everything = allXml(deck) + parts(deck).filter((part) => part.endsWith(".rels")).map((part) => readPart(deck, part)).join("");
  for (const word of ["CORVANE", "/tags/", "custDataLst", "[Row not", "[Empty]", ...words]) {
    assert.ok(!everything.includes(word), word);
  }
}
