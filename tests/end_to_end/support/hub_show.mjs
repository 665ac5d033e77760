// A show that publishes what a test tells it to, message by message, as docs/hubs.md says.

import { createServer } from "node:http";
import { ask } from "./ask.mjs";

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

export class StandInShow {
  constructor(t, run) {
    this.begin(run);
    this.knownCookies = new Set();
    this.asked = []; // "GET /screen/state/show"
    this.server = createServer((request, response) => this.#answer(request, response));
    t.after(() => this.close());
  }

  // Another run: numbers begin anew.
  begin(run) {
    this.run = run;
    this.views = new Map();
  }

  async open(port = 0) {
    await new Promise((resolve) => this.server.listen(port, "127.0.0.1", resolve));
    this.port = this.server.address().port;
  }

  close() {
    this.server.closeAllConnections();
    return new Promise((resolve) => this.server.close(resolve));
  }

  #view(name) {
    if (!this.views.has(name)) this.views.set(name, { sequence: 0, id: null, text: "", queue: Promise.resolve() });
    return this.views.get(name);
  }

  // Goes to the nodes in turn until one has taken it; those of a view in their order.
  publish(text, nodes, view = "show") {
    const { run } = this;
    const state = this.#view(view);
    const sequence = ++state.sequence;
    state.text = text;
    const body = JSON.stringify({ run, sequence, event: "picture", data: { text } });
    const headers = { "Content-Type": "application/json", Accept: "text/json", "Content-Length": Buffer.byteLength(body) };
    const taken = async () => {
      for (let turn = 0; !this.isClosed; ++turn) {
        const node = nodes[turn % nodes.length];
        const asked = ask(node.publishing, "POST", `/publish/${view}`, { headers, body, timeout: 4000 });
        const answer = await asked.catch(() => ({ status: 0 }));
        if (answer.status >= 200 && answer.status < 300) {
          state.id = JSON.parse(answer.text).last_message_id;
          return;
        }
        await pause(50);
      }
    };
    return (state.queue = state.queue.then(taken));
  }

  #answer(request, response) {
    this.asked.push(`${request.method} ${request.url}`);
    const cookie = request.headers.cookie ?? "";
    const view = request.url.match(/^\/screen\/state\/(.+)$/)?.[1];
    if (request.url === "/screen/check") {
      // Who steers may look as well.
      const mayLook = /pass-1=x/.test(cookie) || this.knownCookies.has(cookie.split("lumenfold_screen=")[1]);
      response.writeHead(mayLook ? 204 : 401).end();
    } else if (view) {
      const { sequence, id, text } = this.#view(view);
      const state = { run: this.run, sequence, hub: { id }, hubs: [], picture: { text } };
      response.writeHead(200, { "Content-Type": "application/json", "Cache-Control": "no-store" });
      response.end(JSON.stringify(state));
    } else if (request.url === "/") {
      response.writeHead(200, { "Content-Type": "text/html", "Cache-Control": "no-store" });
      response.end("the slide");
    } else if (request.url === "/screen/enter") {
      response.writeHead(200, { "Content-Type": "text/html" }).end("who are you?");
    } else {
      request.resume().on("end", () => response.writeHead(200).end(request.headers.origin ?? "no origin"));
    }
  }
}
