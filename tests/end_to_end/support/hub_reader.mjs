// A screen without a picture: what docs/hubs.md says of the state, the stream and their numbers, and notes of it.

import { Agent, get } from "node:http";
import { fieldOf, readBlocks } from "./event_stream.mjs";

const manyAtOnce = new Agent({ maxSockets: Infinity });

export class Reader {
  // `nodes` are where it looks in turn.
  constructor(nodes, view = "show", headers = {}) {
    Object.assign(this, { nodes, view, headers, turn: 0, states: 0, streams: 0, taken: [] });
  }

  static async open(t, nodes, count, ...rest) {
    const readers = Array.from({ length: count }, (_, i) => new Reader([nodes[i % nodes.length]], ...rest));
    t.after(() => readers.forEach((reader) => reader.leave()));
    await Promise.all(readers.map((reader) => reader.come()));
    return readers;
  }

  get node() {
    return this.nodes[this.turn % this.nodes.length];
  }

  async come() {
    this.isGone = false;
    await this.#fetchState();
    await this.#follow();
  }

  // Comes back with the id of its last message.
  async comeBack() {
    this.isGone = false;
    await this.#follow();
  }

  leave() {
    this.isGone = true;
    this.stream?.destroy();
  }

  #get(path, headers) {
    return new Promise((resolve, reject) => {
      const options = { ...this.node.where, path, headers: { ...this.headers, ...headers }, agent: manyAtOnce };
      get(options, resolve).on("error", reject);
    });
  }

  async #fetchState() {
    for (let wait = 50; !this.isGone; wait = Math.min(2 * wait, 1000)) {
      try {
        const response = await this.#get(`/screen/state/${this.view}`);
        let body = "";
        for await (const piece of response) body += piece;
        if (response.statusCode !== 200) throw new Error(`state: ${response.statusCode}`);
        const state = JSON.parse(body);
        if (state.run === this.run && state.sequence < this.sequence) throw new Error("an old state");
        ++this.states;
        Object.assign(this, { run: state.run, sequence: state.sequence, text: state.picture.text, id: state.hub.id ?? "" });
        return;
      } catch {
        await new Promise((resolve) => setTimeout(resolve, wait * (0.5 + Math.random())));
      }
    }
  }

  async #follow() {
    for (let wait = 50; !this.isGone; wait = Math.min(2 * wait, 1000)) {
      try {
        const path = `/screen/hub/${this.view}?last_event_id=${this.id}`;
        const response = await this.#get(path, { Accept: "text/event-stream" });
        if (response.statusCode !== 200) {
          response.resume();
          throw new Error(`stream: ${response.statusCode}`);
        }
        ++this.streams;
        this.stream = response;
        this.#read(response);
        return;
      } catch {
        await new Promise((resolve) => setTimeout(resolve, wait * (0.5 + Math.random())));
      }
    }
  }

  #read(response) {
    readBlocks(response, (block) => this.#take(block));
    response.on("close", () => {
      if (!this.isGone && this.stream === response) this.#follow();
    });
  }

  #take(block) {
    const data = fieldOf(block, "data");
    if (!data) return; // a ping
    this.id = fieldOf(block, "id");
    const { run, sequence, data: picture } = JSON.parse(data);
    if (run !== this.run || sequence > this.sequence + 1) return this.#beginAnew();
    if (sequence <= this.sequence) return;
    this.sequence = sequence;
    this.text = picture.text;
    this.taken.push(sequence);
  }

  #beginAnew() {
    this.anew ??= new Promise((resolve) => setTimeout(resolve, 1000 * Math.random()))
      .then(() => this.#fetchState())
      .then(() => {
        this.anew = undefined;
        this.stream.destroy();
      });
  }
}
