// A folder of its own for a test, with the program, its settings, its logs and
// copies of the sample decks in it.

import { spawnSync } from "node:child_process";
import {
  chmodSync,
  constants,
  copyFileSync,
  cpSync,
  existsSync,
  mkdirSync,
  mkdtempSync,
  readFileSync,
  rmSync,
  writeFileSync,
} from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { fileURLToPath } from "node:url";
import { Desk } from "./desk.mjs";
import { Player } from "./player.mjs";
import { Show } from "./show.mjs";
import { patience } from "./wait.mjs";

const samples = fileURLToPath(new URL("../../../samples/", import.meta.url));

// Before a command line: runs it as somebody whom permissions hold, as they do not hold root.
export const asNobody =
  process.getuid() === 0 ? ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"] : [];

function builtProgram() {
  const program = process.env.LUMENFOLD;
  if (!program || !existsSync(program)) {
    throw new Error(`LUMENFOLD names no program (${program}): build it and run the tests with ctest`);
  }
  return program;
}

export class Sandbox {
  // `t` is the context of the test that uses the sandbox; it is removed when the test ends.
  constructor(t) {
    const built = builtProgram();
    // A command line that runs shows.
    this.before = [];
    this.shows = [];
    this.folder = mkdtempSync(join(tmpdir(), "lumenfold-test-"));
    chmodSync(this.folder, 0o755);
    t.after(() => this.remove());
    // The program writes its logs into its own folder, which tests must not share.
    mkdirSync(this.path("program"));
    this.program = this.path("program/lumenfold");
    copyFileSync(built, this.program, constants.COPYFILE_FICLONE);
    for (const folder of ["home", "config", "state", "tmp", "bin"]) mkdirSync(this.path(folder));
    // What the program has opened for its user is noted only.
    this.write("bin/xdg-open", `#!/bin/sh\necho "$1" >> '${this.path("opened")}'\n`);
    chmodSync(this.path("bin/xdg-open"), 0o755);
    this.environment = {
      PATH: `${this.path("bin")}:${process.env.PATH}`,
      HOME: this.path("home"),
      XDG_CONFIG_HOME: this.path("config"),
      XDG_STATE_HOME: this.path("state"),
      TMPDIR: this.path("tmp"),
      LC_ALL: "C.UTF-8",
      TZ: "UTC",
    };
  }

  async remove() {
    await Promise.all(this.shows.map((show) => show.kill()));
    rmSync(this.folder, { recursive: true, force: true });
  }

  path(name) {
    return join(this.folder, name);
  }

  // Writes text, or rows of fields as the sample data are: TAB-delimited, quoted where need be.
  write(name, rows) {
    const quoted = (field) => (/^"|[\t\r\n]/.test(field) ? `"${field.replaceAll('"', '""')}"` : field);
    const line = (row) => row.map(quoted).join("\t") + "\n";
    const text = Array.isArray(rows) ? rows.map(line).join("") : rows;
    writeFileSync(this.path(name), text);
    return this.path(name);
  }

  // Copies a sample with its data and returns the path of its deck.
  sample(name) {
    cpSync(join(samples, name), this.path(name), { recursive: true });
    return this.path(`${name}/${name}.pptx`);
  }

  // As above, without the deck's links.
  bareSample(name) {
    const deck = this.sample(name);
    this.done("unlink", deck, "--all");
    return deck;
  }

  // Runs the program to its end: {code, out, error}.
  run(...args) {
    return this.runWith({}, ...args);
  }

  // `environment` adds to the program's own; `before` is a command line that runs it.
  runWith({ environment = {}, before = [], cwd = this.folder }, ...args) {
    const [command, ...rest] = [...before, this.program, ...args.map(String)];
    const options = { cwd, env: { ...this.environment, ...environment }, encoding: "utf8", timeout: patience };
    const { status, signal, stdout, stderr, error } = spawnSync(command, rest, options);
    if (error) throw error;
    return { code: status, signal, out: stdout, error: stderr };
  }

  // As run(), for what is expected to succeed; returns what was printed.
  done(...args) {
    const { code, out, error } = this.run(...args);
    if (code !== 0) throw new Error(`lumenfold ${args.join(" ")}: exit code ${code}: ${error}`);
    return out;
  }

  // Starts a show and waits until it serves. Without a port, it takes a free one.
  async show(deck, ...args) {
    const show = new Show(this, deck, args.map(String));
    this.shows.push(show);
    await show.started();
    return show;
  }

  // Starts a player of a folder, as above.
  async play(folder, ...args) {
    const player = new Player(this, folder, args.map(String));
    this.shows.push(player);
    await player.started();
    return player;
  }

  // Opens a deck for its author, on a free port unless one is given.
  async edit(deck, ...args) {
    const desk = new Desk(this, deck, args.map(String));
    this.shows.push(desk);
    await desk.started();
    return desk;
  }

  // The entries of the errors log; the text of one may run over several lines.
  errorLog() {
    const file = this.path("program/errors.txt");
    const text = existsSync(file) ? readFileSync(file, "utf8") : "";
    return text.split(/\r\n(?=\d+\/\d+\/\d+ |$)/).filter(Boolean);
  }
}
