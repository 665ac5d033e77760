// A running show: its process and its HTTP interface.

import { spawn } from "node:child_process";
import { ask } from "./ask.mjs";
import { EventLog } from "./events.mjs";
import { until, within } from "./wait.mjs";

export class Show {
  static verb = "show";

  constructor(sandbox, deck, args) {
    const port = args.includes("--port") ? [] : ["--port", "0"];
    const [command, ...line] = [...sandbox.before, sandbox.program, this.constructor.verb, deck, ...port, ...args];
    this.out = "";
    this.error = "";
    this.process = spawn(command, line, {
      cwd: sandbox.folder,
      env: sandbox.environment,
      stdio: ["ignore", "pipe", "pipe"],
    });
    this.process.stdout.setEncoding("utf8").on("data", (text) => (this.out += text));
    this.process.stderr.setEncoding("utf8").on("data", (text) => (this.error += text));
    this.ended = new Promise((resolve) => {
      this.process.on("close", (code, signal) => resolve({ code, signal }));
    });
    this.logs = [];
  }

  async started() {
    let over = null;
    this.ended.then((end) => (over = end));
    await until("the show's address", () => {
      if (over) throw new Error(`the show ended with ${JSON.stringify(over)}: ${this.error}`);
      return /^Screen: .*\n/m.test(this.out);
    });
    this.url = this.out.match(/^Screen: +(\S+)$/m)[1];
    this.operatorUrl = this.out.match(/^Operator: +(\S+)$/m)?.[1];
    this.token = this.operatorUrl?.split("#token=")[1];
    this.port = Number(new URL(this.url).port);
  }

  // Sends a signal and waits for the end: {code, signal}.
  async stop(signal = "SIGTERM") {
    this.process.kill(signal);
    return within("the end of the show", this.ended);
  }

  async kill() {
    for (const log of this.logs) log.close();
    if (this.process.exitCode === null && this.process.signalCode === null) await this.stop("SIGKILL");
  }

  // {status, headers, text, json}
  ask(method, path, headers = {}) {
    return ask({ host: "127.0.0.1", port: this.port }, method, path, { headers });
  }

  get(path, headers) {
    return this.ask("GET", path, headers);
  }

  // A command with the token; fails when it is refused.
  async command(name) {
    const answer = await this.ask("POST", `/api/v1/${name}`, { Authorization: `Bearer ${this.token}` });
    if (answer.status >= 300) throw new Error(`${name}: ${answer.status} ${answer.text}`);
  }

  async state() {
    return (await this.get("/api/v1/state")).json;
  }

  async text(slide, shape) {
    const { slides } = await this.state();
    return slides[slide - 1].shapes.find(({ name }) => name === shape)?.text;
  }

  shows(slide, shape, text) {
    return until(`'${text}' in ${shape}`, async () => (await this.text(slide, shape)) === text);
  }

  async health() {
    return (await this.get("/api/v1/health")).json;
  }

  // Follows the events for programs, or those of a screen.
  events(path = "/api/v1/events") {
    const log = new EventLog(this.port, path);
    this.logs.push(log);
    return log;
  }
}
