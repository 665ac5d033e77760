// Hubs as administrators run them: nginx nodes with the program's own configuration, and a Redis.

import { spawn } from "node:child_process";
import { mkdirSync, rmSync, writeFileSync } from "node:fs";
import { ask } from "./ask.mjs";
import { freePort } from "./hub.mjs";
import { until } from "./wait.mjs";

// A program with all that it starts.
class Group {
  start(command, args) {
    this.said = "";
    this.process = spawn(command, args, { detached: true, stdio: ["ignore", "pipe", "pipe"] });
    this.over = new Promise((resolve) => this.process.on("close", resolve));
    for (const stream of [this.process.stdout, this.process.stderr]) {
      stream.setEncoding("utf8").on("data", (text) => (this.said += text));
    }
  }

  async kill() {
    if (this.process && this.process.exitCode === null && this.process.signalCode === null) {
      process.kill(-this.process.pid, "SIGKILL");
    }
    await this.over;
  }
}

export class Redis extends Group {
  constructor(t, sandbox) {
    super();
    this.folder = sandbox.path("redis");
    mkdirSync(this.folder, { recursive: true });
    t.after(() => this.kill());
  }

  async start() {
    this.port ??= await freePort();
    const args = ["--port", this.port, "--bind", "127.0.0.1", "--save", "", "--dir", this.folder];
    super.start("redis-server", args.map(String));
    await until("the Redis", () => /Ready to accept/.test(this.said));
  }
}

export class Node extends Group {
  // `args` are those of hub-config.
  constructor(t, sandbox, name, args) {
    super();
    this.sandbox = sandbox;
    this.name = name;
    this.args = args;
    this.host = "127.0.0.1";
    this.folder = sandbox.path(name);
    this.publishing = { socketPath: `${this.folder}/publish.sock` };
    mkdirSync(this.folder);
    t.after(() => this.kill());
  }

  get url() {
    return `http://${this.host}:${this.port}`;
  }

  async start() {
    this.port ??= await freePort();
    this.where = { host: "127.0.0.1", port: this.port };
    const isPlain = this.args.includes("--plain");
    const place = isPlain ? [] : ["--publish", `unix:${this.publishing.socketPath}`];
    const folders = ["--run-folder", this.folder, "--cache-folder", `${this.folder}/cache`];
    mkdirSync(`${this.folder}/cache`, { recursive: true });
    const ports = ["--listen", `127.0.0.1:${this.port}`];
    const file = `${this.folder}/hub.conf`;
    writeFileSync(file, this.sandbox.done("hub-config", "--site", this.name, ...place, ...folders, ...ports, ...this.args));
    // As the unit does before each start.
    rmSync(this.publishing.socketPath, { force: true });
    super.start("nginx", ["-p", this.folder, "-c", file, "-g", "daemon off;"]);
    await until("the node", async () => {
      if (this.process.exitCode !== null) throw new Error(this.said);
      return (await ask(this.where, "GET", "/healthz")).status === 200;
    });
  }
}
