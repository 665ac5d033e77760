// The events of a show's stream, as they arrive.

import { request } from "node:http";
import { until } from "./wait.mjs";

export class EventLog {
  constructor(port, path) {
    this.all = [];
    this.isOver = false;
    let rest = "";
    this.asked = request({ host: "127.0.0.1", port, path, agent: false }, (response) => {
      response.setEncoding("utf8").on("data", (text) => {
        const blocks = (rest + text).split("\n\n");
        rest = blocks.pop();
        for (const block of blocks) this.#take(block);
      });
      response.on("error", () => {});
      response.on("close", () => (this.isOver = true));
    });
    this.asked.on("error", () => (this.isOver = true));
    this.asked.end();
  }

  #take(block) {
    const field = (name) => block.match(new RegExp(`^${name}: (.*)$`, "m"))?.[1];
    if (!field("event")) return; // a comment, to keep the connection alive
    this.all.push({
      event: field("event"),
      id: Number(field("id")),
      data: JSON.parse(field("data")),
      time: Date.now(),
    });
  }

  // The first event that fits.
  next(what, fits, milliseconds) {
    return until(what, () => this.all.find(fits), milliseconds);
  }

  close() {
    this.asked.destroy();
  }
}
