// Stands in for the service manager: hears what a show tells it.

import { spawn } from "node:child_process";
import { fileURLToPath } from "node:url";
import { until } from "./wait.mjs";

const script = fileURLToPath(new URL("./notify_socket.pl", import.meta.url));

export class ServiceManager {
  // `address` is a path, or with @ in front an abstract one.
  static async listening(t, address) {
    const manager = new ServiceManager(address);
    t.after(() => manager.process.kill());
    await until("the manager's socket", () => manager.text.startsWith("listening\n"));
    return manager;
  }

  constructor(address) {
    this.text = "";
    this.heard = Date.now();
    this.process = spawn("perl", [script, address], { stdio: ["ignore", "pipe", "inherit"] });
    this.process.stdout.setEncoding("utf8").on("data", (text) => {
      this.text += text;
      this.heard = Date.now();
    });
  }

  // Every line that was told, in its order, WATCHDOG=1 among them.
  get told() {
    return this.text.split("\n").slice(1, -1).flatMap((datagram) => datagram.split("\t"));
  }

  count(line) {
    return this.told.filter((each) => each === line).length;
  }

  // The newest of STATUS=.
  get status() {
    return this.told.findLast((line) => line.startsWith("STATUS="))?.slice("STATUS=".length);
  }

  // Milliseconds since it heard anything.
  silence() {
    return Date.now() - this.heard;
  }

  hears(what, line, times = 1) {
    return until(`${what}: ${line}`, () => this.count(line) >= times);
  }
}
