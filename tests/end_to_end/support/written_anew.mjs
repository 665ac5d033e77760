// Decks as LibreOffice writes them.

import { execFileSync } from "node:child_process";
import { mkdirSync } from "node:fs";
import { basename, join } from "node:path";

// Returns the path of the deck that it makes of another.
export function writtenAnew(sandbox, deck) {
  const folder = sandbox.path("anew");
  mkdirSync(folder, { recursive: true });
  const line = ["--headless", "--convert-to", "pptx", "--outdir", folder, deck];
  execFileSync("soffice", line, { env: sandbox.environment, stdio: "pipe" });
  return join(folder, basename(deck));
}
