// The events of a show's stream, as they arrive.

import { request } from "node:http";
import { fieldOf, readBlocks } from "./event_stream.mjs";
import { until } from "./wait.mjs";

export class EventLog {
  constructor(port, path) {
    this.all = [];
    this.isOver = false;
    this.asked = request({ host: "127.0.0.1", port, path, agent: false }, (response) => {
      readBlocks(response, (block) => this.#take(block));
      response.on("close", () => (this.isOver = true));
    });
    this.asked.on("error", () => (this.isOver = true));
    this.asked.end();
  }

  #take(block) {
    const event = fieldOf(block, "event");
    if (!event) return; // a comment, to keep the connection alive
    this.all.push({ event, id: Number(fieldOf(block, "id")), data: JSON.parse(fieldOf(block, "data")) });
  }

  // The first event that fits.
  next(what, fits, milliseconds) {
    return until(what, () => this.all.find(fits), milliseconds);
  }

  close() {
    this.asked.destroy();
  }
}
