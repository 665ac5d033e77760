// A small stand-in for a hub: nodes that share their messages, as docs/hubs.md tells. It can lose messages,
// refuse them, and go.

import { createServer, request } from "node:http";
import { createServer as createNetServer } from "node:net";

const token = "hub-token";

// A port that is free at the moment.
export async function freePort() {
  const server = createNetServer();
  await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
  const { port } = server.address();
  await new Promise((resolve) => server.close(resolve));
  return port;
}

// What all nodes of a hub know.
export class Bus {
  messages = new Map(); // by view, with their ids
  streams = new Map();
  loses = () => false;
  count = 0;

  publish(view, body) {
    const id = `17:${++this.count}`;
    const list = this.messages.get(view) ?? [];
    this.messages.set(view, list);
    if (this.loses(JSON.parse(body))) return id;
    list.push({ id, body });
    for (const stream of this.streams.get(view) ?? []) send(stream, { id, body });
    return id;
  }

  follow(view, id, stream) {
    const list = this.messages.get(view) ?? [];
    for (const message of list.slice(list.findIndex((each) => each.id === id) + 1)) send(stream, message);
    const all = this.streams.get(view) ?? new Set();
    this.streams.set(view, all.add(stream));
    stream.on("close", () => all.delete(stream));
  }
}

const send = (stream, { id, body }) => stream.write(`id: ${id}\ndata: ${body}\n\n`);

export class Hub {
  asked = []; // methods and paths, in their order
  refuses = false;
  kept = []; // pages that a cache gives out before it asks the show again

  // `hubs` are the origins whose pages may look at the state.
  static async start(t, bus, hubs = []) {
    const hub = new Hub();
    hub.bus = bus;
    hub.hubs = hubs;
    hub.server = createServer((asked, answer) => hub.#answer(asked, answer));
    await new Promise((resolve) => hub.server.listen(0, "127.0.0.1", resolve));
    hub.origin = `http://127.0.0.1:${hub.server.address().port}`;
    hub.publish = `${hub.origin}/publish`;
    t.after(() => hub.stop());
    return hub;
  }

  stop() {
    this.server.close();
    this.server.closeAllConnections();
  }

  paths() {
    return this.asked.map(({ path }) => path);
  }

  #answer(asked, answer) {
    const { pathname: path, searchParams } = new URL(asked.url, this.origin);
    this.asked.push({ method: asked.method, path });
    const view = path.split("/")[path.startsWith("/publish/") ? 2 : 3];
    if (path.startsWith("/publish/")) this.#take(asked, answer, view);
    else if (path.startsWith("/screen/hub/")) this.#stream(asked, answer, view, searchParams);
    else if (path === "/" && this.kept.length > 0) answer.end(this.kept.shift());
    else this.#pass(asked, answer, path);
  }

  #take(asked, answer, view) {
    let body = "";
    asked.setEncoding("utf8").on("data", (text) => (body += text));
    asked.on("end", () => {
      const isKnown = asked.headers.authorization === `Bearer ${token}`;
      const status = !isKnown ? 401 : this.refuses ? 503 : 202;
      answer.writeHead(status, { "Content-Type": "text/json" });
      answer.end(status === 202 ? JSON.stringify({ last_message_id: this.bus.publish(view, body) }) : "{}");
    });
  }

  #stream(asked, answer, view, query) {
    answer.writeHead(200, { "Content-Type": "text/event-stream" });
    answer.write(": hi\n\n");
    this.bus.follow(view, asked.headers["last-event-id"] ?? query.get("last_event_id"), answer);
  }

  // To the show, which is called by the name that the browser used.
  #pass(asked, answer, path) {
    const isState = path.startsWith("/screen/state/");
    const { method, url, headers } = asked;
    const passed = request({ host: "127.0.0.1", port: this.port, method, path: url, headers }, (got) => {
      const own = isState ? { "lumenfold-hub": "test" } : {};
      if (isState && this.hubs.includes(headers.origin)) {
        own["access-control-allow-origin"] = headers.origin;
        own["access-control-allow-credentials"] = "true";
      }
      answer.writeHead(got.statusCode, { ...got.headers, ...own });
      got.on("error", () => answer.destroy());
      got.pipe(answer);
    });
    passed.on("error", () => answer.writeHead(502).end());
    asked.pipe(passed);
  }
}

// Options of the show for these hubs. Its token lies in the sandbox.
export function publishTo(sandbox, hubs, ...others) {
  const file = sandbox.write("hub-token", [[token]]);
  return [
    ...hubs.flatMap((hub) => ["--publish", hub.publish]),
    ...["--publish-token-file", file],
    ...[...hubs.map(({ origin }) => origin), ...others].flatMap((origin) => ["--hub", origin]),
  ];
}
