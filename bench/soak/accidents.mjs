// What happens to files while a show lives from them. Each accident does something to a
// file and returns what heals it.

import { execFileSync, spawn } from "node:child_process";
import {
  chmodSync,
  closeSync,
  copyFileSync,
  ftruncateSync,
  mkdirSync,
  openSync,
  readFileSync,
  renameSync,
  rmSync,
  symlinkSync,
  truncateSync,
  writeFileSync,
} from "node:fs";

const gone = (file) => rmSync(file, { recursive: true, force: true });

function sparse(file, gigabytes) {
  const descriptor = openSync(file, "w");
  ftruncateSync(descriptor, gigabytes * 1e9);
  closeSync(descriptor);
}

// Anew beside the file and then in its place, as most programs write.
export function replace(file, content) {
  writeFileSync(`${file}.new`, content);
  renameSync(`${file}.new`, file);
}

// `good` is the file's content.
const forFiles = {
  "cut in the midst": (file, good) => truncateSync(file, good.length >> 1),
  emptied: (file) => truncateSync(file, 0),
  deleted: gone,
  "a folder": (file) => (gone(file), mkdirSync(file)),
  "a FIFO": (file) => (gone(file), execFileSync("mkfifo", [file])),
  "a device": (file) => (gone(file), symlinkSync("/dev/zero", file)),
  "a link to itself": (file) => (gone(file), symlinkSync(file, file)),
  unreadable: (file) => chmodSync(file, 0),
  "bytes of no kind": (file) => replace(file, Buffer.from(Array.from({ length: 5000 }, (_, i) => (i * 7919) & 255))),
  "1 GB": (file) => (gone(file), sparse(file, 1)),
  "3.9 GB": (file) => (gone(file), sparse(file, 3.9)),
};

const forDatabases = {
  locked: (file) => {
    const holder = spawn("sqlite3", [file], { stdio: ["pipe", "ignore", "ignore"] });
    holder.stdin.write("BEGIN EXCLUSIVE;\n");
    return () => holder.kill();
  },
};

// Beginning anew with every kind of accident that fits the file.
export function* accidentsOf(file) {
  const good = readFileSync(file);
  const all = { ...forFiles, ...(file.endsWith(".db") ? forDatabases : {}) };
  for (;;) {
    for (const [name, happen] of Object.entries(all)) {
      yield {
        name,
        happen: () => {
          const release = happen(file, good);
          return () => {
            if (typeof release === "function") return release();
            gone(file);
            replace(file, good);
          };
        },
      };
    }
  }
}

// Its data may be in any state, which may take it a while and keep it from saving.
function saved(deck, display, { program, environment }) {
  const saver = spawn(program, ["display", deck, String(display)], { env: environment, stdio: "ignore" });
  return new Promise((resolve) => saver.on("close", resolve));
}

// A deck is saved by the program itself, copied in pieces, or broken for a while.
export function* savingsOf(deck, sandbox) {
  const good = `${deck}.good`;
  copyFileSync(deck, good);
  for (let round = 0; ; ++round) {
    yield () => saved(deck, 1 + (round % 3), sandbox);
    yield () => replace(deck, readFileSync(good));
    yield async () => {
      const bytes = readFileSync(good);
      for (let part = 1; part <= 5; ++part) {
        writeFileSync(deck, bytes.subarray(0, (bytes.length * part) / 5));
        await new Promise((resolve) => setTimeout(resolve, 300));
      }
    };
    yield async () => {
      truncateSync(deck, 20000);
      await new Promise((resolve) => setTimeout(resolve, 4000));
      replace(deck, readFileSync(good));
    };
  }
}
