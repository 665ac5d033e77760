// A PostgreSQL server in a folder of its own, reached by a socket there.

import { execFileSync, spawn, spawnSync } from "node:child_process";
import {
  chownSync,
  closeSync,
  existsSync,
  mkdtempSync,
  openSync,
  readFileSync,
  readdirSync,
  rmSync,
  writeFileSync,
} from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { asNobody } from "./sandbox.mjs";
import { until, within } from "./wait.mjs";

// The characters that connection strings have to quote.
const password = `s3;c}r{e't"=`;

function newestPrograms() {
  const parent = "/usr/lib/postgresql";
  const versions = existsSync(parent) ? readdirSync(parent).sort((a, b) => a - b) : [];
  if (versions.length === 0) throw new Error("postgresql is missing: run scripts/setup.sh --tests");
  return join(parent, versions.at(-1), "bin");
}

export class Postgres {
  constructor() {
    this.programs = newestPrograms();
    this.password = password;
    this.folder = mkdtempSync(join(tmpdir(), "lumenfold-postgres-"));
    writeFileSync(join(this.folder, "password"), `${password}\n`);
    writeFileSync(join(this.folder, "log"), "");
    // It does not run as root.
    if (asNobody.length > 0) {
      for (const name of ["", "password", "log"]) chownSync(join(this.folder, name), 65534, 65534);
    }
    const options = ["-A", "scram-sha-256", "-N", "-U", "lumen", "--locale=C.UTF-8"];
    const line = [join(this.programs, "initdb"), "-D", this.#data(), "--pwfile", join(this.folder, "password")];
    const [command, ...rest] = [...asNobody, ...line, ...options];
    execFileSync(command, rest, { cwd: this.folder, stdio: "pipe" });
  }

  async start() {
    const settings = ["-c", "listen_addresses=", "-F", "-c", "shared_buffers=16MB"];
    const line = [join(this.programs, "postgres"), "-D", this.#data(), "-k", this.folder, ...settings];
    // It does not outlive a test that was killed.
    const holder = ["setpriv", "--pdeathsig", "INT", ...asNobody.slice(1)];
    const [command, ...rest] = [...holder, ...line];
    const log = openSync(join(this.folder, "log"), "a");
    this.process = spawn(command, rest, { cwd: this.folder, stdio: ["ignore", log, log] });
    closeSync(log);
    this.ended = new Promise((resolve) => this.process.on("close", resolve));
    await until(
      "the server to answer",
      () => {
        if (this.process.exitCode !== null) throw new Error(readFileSync(join(this.folder, "log"), "utf8"));
        return this.#psql("SELECT 1").status === 0;
      },
    );
  }

  // At once, whoever is connected.
  async stop() {
    this.process.kill("SIGINT");
    await within("the end of the server", this.ended);
  }

  async remove() {
    if (this.process?.exitCode === null) await this.stop();
    rmSync(this.folder, { recursive: true, force: true });
  }

  // Runs statements and returns what they print.
  run(sql) {
    const { status, stdout, stderr } = this.#psql(sql);
    if (status !== 0) throw new Error(`${sql}: ${stderr}`);
    return stdout.trim();
  }

  // As an author writes it.
  connectionString(secret = password) {
    const quoted = `"${secret.replaceAll('"', '""')}"`;
    return `Provider=PostgreSQL;Data Source=${this.folder};Initial Catalog=postgres;User ID=lumen;Password=${quoted}`;
  }

  #psql(sql) {
    const line = ["-X", "-q", "-A", "-t", "-v", "ON_ERROR_STOP=1", "-h", this.folder, "-U", "lumen", "-c", sql];
    const options = { encoding: "utf8", env: { ...process.env, PGPASSWORD: password } };
    return spawnSync("psql", [...line, "postgres"], options);
  }

  #data() {
    return join(this.folder, "data");
  }
}
