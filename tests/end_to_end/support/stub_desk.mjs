// A desk's server that does what a test tells it: the page is the real one, the answers are the test's.

import { createServer } from "node:http";
import { readFileSync } from "node:fs";
import { fileURLToPath } from "node:url";
import { until } from "./wait.mjs";

const client = fileURLToPath(new URL("../../../src/web/client/", import.meta.url));
const types = { css: "text/css", js: "text/javascript", html: "text/html" };
const api = "/api/v1/desk/";

export const control = (kind, properties = {}) => ({ kind, Enabled: true, Visible: true, ...properties });

// A docked page with a text field and a button, as the system describes one.
export const docked = (id, more = {}) => ({
  id,
  name: "frmDataField",
  caption: "Data field",
  subject: "Price",
  width: "narrow",
  placement: "docked",
  ack: 0,
  rows: [
    { label: "&Row", controls: ["txtRow"], group: "", isButtons: false },
    { label: "", controls: ["cmdUnlink"], group: "", isButtons: true },
  ],
  default: "cmdUnlink",
  cancel: "",
  controls: {
    txtRow: control("TextBox", { Text: "7", Lines: 1 }),
    cmdUnlink: control("CommandButton", { Caption: "&Unlink" }),
  },
  ...more,
});

export const shape = (id, name, left, top, more = {}) => ({
  ...{ id, name, kind: "text box", left, top, width: 100, height: 30, rotation: 0, group: 0, shows: "text" },
  ...{ whyNot: "", isHidden: false, isFilled: true, isDouble: false, text: "", link: null, ...more },
});

export class StubDesk {
  #server;
  #streams = new Set();
  #number = 0;

  constructor(state) {
    this.key = "one";
    this.asked = []; // [path, body] of all that was asked of the window
    this.answers = []; // [pattern of the path, (body) => answer, perhaps later]
    this.state = {
      version: "test",
      deck: {
        name: "test.pptx",
        folder: "/decks",
        unsaved: 0,
        undo: null,
        redo: null,
        isReadOnly: null,
        isEmpty: false,
      },
      styles: "",
      size: { width: 800, height: 450 },
      slides: [{ id: 256, index: 1, links: 0, problems: 0, hides: null, scrolls: false, isHidden: false, drawn: 1 }],
      slide: { id: 256, index: 1, html: '<section class="slide" id="s1"></section>', shapes: [], why: [], hides: null },
      selection: { slide: 256, shapes: [] },
      bars: [],
      commands: {},
      displayType: 1,
      preview: "today",
      ...{
        connections: [],
        data: {},
        used: {},
        nearby: [],
        findings: null,
        forms: [],
        jobs: [],
        notices: [],
        others: [],
      },
      ...state,
    };
  }

  async start(t) {
    this.#server = createServer((request, response) => this.#answer(request, response));
    await new Promise((resolve) => this.#server.listen(this.port ?? 0, "127.0.0.1", resolve));
    this.port = this.#server.address().port;
    t?.after(() => this.stop());
    return `http://127.0.0.1:${this.port}/#token=secret`;
  }

  async stop() {
    this.#server.closeAllConnections();
    this.#streams.clear();
    await new Promise((resolve) => this.#server.close(resolve));
  }

  // Another program under the same address, which knows nothing of the one before.
  async startAnew(state) {
    this.key += "x";
    Object.assign(this.state, state);
    await this.start();
  }

  tell(event, data) {
    if (event === "state") Object.assign(this.state, data);
    const text = `id: ${++this.#number}\nevent: ${event}\ndata: ${JSON.stringify(data)}\n\n`;
    for (const stream of this.#streams) stream.write(text);
  }

  // Leaves out an event's number, as when a reader has fallen behind.
  skip() {
    ++this.#number;
  }

  // Waits for the first request, or the one after those before, of which the path fits.
  request(pattern, place = 0) {
    return until(`a request ${pattern}`, () => this.asked.filter(([path]) => pattern.test(path))[place]);
  }

  async #answer(request, response) {
    const { pathname } = new URL(request.url, "http://desk");
    const json = (answer, status = 200) => {
      response.writeHead(status, { "Content-Type": "application/json" });
      response.end(JSON.stringify(answer));
    };
    if (pathname === "/") {
      response.writeHead(200, {
        "Content-Type": "text/html",
        "Content-Security-Policy":
          "default-src 'self'; img-src 'self' data:; style-src 'self' 'unsafe-inline'; " +
          "require-trusted-types-for 'script'; trusted-types slides charts default",
      });
      return response.end(readFileSync(`${client}desk/desk.html`, "utf8").replaceAll("{{version}}", "test"));
    }
    if (pathname.startsWith("/client/test/")) {
      response.writeHead(200, { "Content-Type": types[pathname.split(".").at(-1)] });
      return response.end(readFileSync(client + pathname.slice("/client/test/".length)));
    }
    if (!pathname.startsWith(api)) return json({ error: "There is nothing here." }, 404);
    if (request.headers.authorization !== "Bearer secret") return json({ error: "Another token." }, 401);
    const path = pathname.slice(api.length).replace(/^windows\/\w{16,64}\//, "");
    if (path === "events") {
      response.writeHead(200, { "Content-Type": "text/event-stream" });
      response.write(
        `id: ${this.#number}\nevent: state\ndata: ${JSON.stringify({ ...this.state, assets: `assets/${this.key}/` })}\n\n`,
      );
      this.#streams.add(response);
      return response.on("close", () => this.#streams.delete(response));
    }
    let text = "";
    for await (const part of request) text += part;
    const body = text ? JSON.parse(text) : undefined;
    this.asked.push([path, body]);
    const form = path.match(/^forms\/(\d+)\//)?.[1];
    if (form && !this.state.forms.some(({ id }) => id === Number(form)))
      return json({ error: "There is no such form." }, 404);
    const found = this.answers.find(([pattern]) => pattern.test(path));
    const answer = found
      ? await found[1](body, path)
      : path.startsWith("slides/")
        ? { html: '<section class="slide"></section>' }
        : { ok: true };
    return answer.error ? json(answer, answer.status) : json(answer);
  }
}
