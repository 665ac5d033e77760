// A window of a desk as a page has it: its state, kept by its stream, and what it asks for. No browser.

import { request } from "node:http";
import { fieldOf, readBlocks } from "./event_stream.mjs";
import { until } from "./wait.mjs";

export class DeskWindow {
  constructor(desk, name) {
    this.desk = desk;
    this.name = name;
    this.state = {};
    this.events = [];
    this.connect();
  }

  connect() {
    const path = `/api/v1/desk/windows/${this.name}/events`;
    const headers = { Authorization: `Bearer ${this.desk.token}` };
    this.asked = request({ host: "127.0.0.1", port: this.desk.port, path, headers, agent: false }, (response) => {
      readBlocks(response, (block) => this.#take(block));
    });
    this.asked.on("error", () => {});
    this.asked.end();
    this.desk.logs.push(this);
  }

  #take(block) {
    const event = fieldOf(block, "event");
    if (!event) return;
    const data = JSON.parse(fieldOf(block, "data"));
    this.events.push({ event, data });
    if (event === "state") {
      // The markup comes when it is another; else the page keeps what stands.
      const html = data.slide?.html ?? (data.slide?.id === this.state.slide?.id ? this.state.slide?.html : undefined);
      Object.assign(this.state, data);
      if (this.state.slide) this.state.slide.html = html;
    } else if (event === "form") {
      const form = this.state.forms.find(({ id }) => id === data.form);
      for (const [name, properties] of Object.entries(data.patch)) Object.assign(form?.controls[name] ?? {}, properties);
    }
  }

  close() {
    this.asked.destroy();
  }

  // {status, json}
  post(path, body = {}) {
    return this.desk.post(`windows/${this.name}/${path}`, body);
  }

  // Fails when it is refused.
  async do(path, body) {
    const { status, json } = await this.post(path, body);
    if (status !== 200) throw new Error(`${path}: ${status} ${JSON.stringify(json)}`);
    return json;
  }

  until(what, probe) {
    return until(`${what}; the state is ${JSON.stringify(this.state).slice(0, 300)}`, () => probe(this.state));
  }

  form(name) {
    return this.until(name, ({ forms }) => forms?.find((form) => form.name === name));
  }

  // What the user does on a form.
  raise(form, ...events) {
    form.seq = (form.seq ?? form.ack) + 1;
    return this.post(`forms/${form.id}/events`, { seq: form.seq, events });
  }

  shape(name) {
    return this.state.slide.shapes.find((shape) => shape.name === name);
  }
}
