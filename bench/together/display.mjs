// A virtual display whose pixels are looked at where the X server keeps them, so that looking takes nothing from
// the windows on it.

import { spawn } from "node:child_process";
import { closeSync, mkdtempSync, openSync, readSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { createInterface } from "node:readline";
import { Worker, isMainThread, parentPort, workerData } from "node:worker_threads";

const bytesOfPixel = 4;

// The X window dump that Xvfb's -fbdir keeps, of which the header says where the pixels begin.
class Dump {
  constructor(path) {
    this.file = openSync(path, "r");
    const header = Buffer.alloc(100);
    readSync(this.file, header, 0, header.length, 0);
    const field = (index) => header.readUInt32BE(4 * index);
    this.stride = field(12);
    this.begin = field(0) + 12 * field(19); // after a name and the colours
    this.pixel = Buffer.alloc(bytesOfPixel);
  }

  colour({ x, y }) {
    readSync(this.file, this.pixel, 0, bytesOfPixel, this.begin + y * this.stride + x * bytesOfPixel);
    return this.pixel.readUInt32LE() & 0xffffff;
  }
}

export async function startDisplay(width, height) {
  const folder = mkdtempSync(join(tmpdir(), "lumenfold-display-"));
  const args = ["-displayfd", "3", "-screen", "0", `${width}x${height}x24`, "-fbdir", folder, "-nolisten", "tcp"];
  const server = spawn("Xvfb", args, { stdio: ["ignore", "ignore", "ignore", "pipe"] });
  process.once("exit", () => server.kill());
  for await (const number of createInterface(server.stdio[3])) {
    const dump = new Dump(join(folder, "Xvfb_screen0"));
    return {
      name: `:${number}`,
      colour: (place) => dump.colour(place),
      // When each of the places changed its colour first, as ms since 1970, and how long before the look
      // before was; or undefined. From now on, until `end`.
      changes(places, end) {
        const looker = new Worker(new URL(import.meta.url), {
          workerData: { path: join(folder, "Xvfb_screen0"), places, end },
        });
        return new Promise((resolve) => looker.once("message", resolve));
      },
      stop() {
        closeSync(dump.file);
        server.kill();
        rmSync(folder, { recursive: true, force: true });
      },
    };
  }
  throw new Error("Xvfb does not start");
}

if (!isMainThread) {
  const { path, places, end } = workerData;
  const dump = new Dump(path);
  const now = () => performance.timeOrigin + performance.now();
  const before = places.map((place) => dump.colour(place));
  const changes = places.map(() => undefined);
  const rest = new Int32Array(new SharedArrayBuffer(4));
  for (let last = now(), time = last; time < end; last = time) {
    Atomics.wait(rest, 0, 0, 0.5);
    time = now();
    places.forEach((place, i) => {
      if (!changes[i] && dump.colour(place) !== before[i]) changes[i] = { time, doubt: time - last };
    });
  }
  closeSync(dump.file);
  parentPort.postMessage(changes);
}
