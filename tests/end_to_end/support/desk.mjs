// A running desk: its process and its HTTP interface, which takes the token.

import { DeskWindow } from "./desk_window.mjs";
import { until } from "./wait.mjs";
import { Show } from "./show.mjs";

export class Desk extends Show {
  static verb = "edit";

  async started() {
    let over = null;
    this.ended.then((end) => (over = end));
    await until("the desk's address", () => {
      if (over) throw new Error(`the desk ended with ${JSON.stringify(over)}: ${this.error}`);
      return /^Desk: .*\n/m.test(this.out);
    });
    // With the token behind "#token=".
    this.url = this.out.match(/^Desk: +(\S+)$/m)[1];
    this.token = this.url.split("#token=")[1];
    this.port = Number(new URL(this.url).port);
  }

  get(path, headers = {}) {
    return super.get(`/api/v1/desk/${path}`, { Authorization: `Bearer ${this.token}`, ...headers });
  }

  // {status, headers, text, json}; `body` is sent as JSON unless it is bytes.
  async post(path, body, headers = {}) {
    const answer = await fetch(`http://127.0.0.1:${this.port}/api/v1/desk/${path}`, {
      method: "POST",
      headers: { Authorization: `Bearer ${this.token}`, ...headers },
      body: Buffer.isBuffer(body) ? body : JSON.stringify(body),
    });
    const text = await answer.text();
    return { status: answer.status, headers: answer.headers, text, json: JSON.parse(text) };
  }

  // Waits for its first state.
  async openWindow(name = "abcdefghijklmnop") {
    const window = new DeskWindow(this, name);
    await window.until("the state", ({ slides }) => slides);
    return window;
  }
}
