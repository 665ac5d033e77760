// What the page asks of its server, and the stream of what the server tells.

const api = "/api/v1/desk/";
const firstPause = 400;
const longestPause = 8000;
const longestSilence = 45000;

// What the server did not do; `status` is 0 when it could not be reached.
export class Refusal extends Error {
  constructor(status, text) {
    super(text);
    this.status = status;
  }
}

// The window's name is this tab's, and a copy of the tab gets another.
async function windowName() {
  const fresh = () =>
    Array.from(crypto.getRandomValues(new Uint8Array(16)), (byte) => byte.toString(16).padStart(2, "0")).join("");
  const kept = sessionStorage.getItem("window");
  let name = kept ?? fresh();
  const hold = (wanted) =>
    new Promise((resolve) => {
      navigator.locks.request(`window ${wanted}`, { ifAvailable: true }, (lock) => {
        resolve(Boolean(lock));
        return lock ? new Promise(() => {}) : undefined;
      });
    });
  if (navigator.locks) {
    const held = hold(name); // a name that is new is nobody else's, and not waited for
    if (kept && !(await held)) {
      name = fresh();
      hold(name);
    }
  }
  sessionStorage.setItem("window", name);
  return name;
}

// Server-sent events from a body: {event, id, data}.
async function* eventsOf(body) {
  const reader = body.pipeThrough(new TextDecoderStream()).getReader();
  let rest = "";
  let event = {};
  for (;;) {
    const { value, done } = await reader.read();
    if (done) return;
    rest += value;
    const lines = rest.split(/\r?\n/);
    rest = lines.pop();
    for (const line of lines) {
      if (line === "") {
        if (event.data !== undefined) yield event;
        event = {};
        continue;
      }
      const [, field, text] = line.match(/^([^:]*):? ?(.*)$/s);
      if (field === "data") event.data = event.data === undefined ? text : `${event.data}\n${text}`;
      else if (field) event[field] = text;
    }
  }
}

// `token` as keptToken() of core/commands.js gives it.
export async function createServer(token) {
  const name = await windowName();

  async function ask(method, path, { body, json, signal } = {}) {
    const answer = await fetch(api + path, {
      method,
      body: json === undefined ? body : JSON.stringify(json),
      headers: {
        Authorization: `Bearer ${token.get()}`,
        ...(json === undefined ? {} : { "Content-Type": "application/json" }),
      },
      cache: "no-store",
      signal,
    }).catch((error) => {
      if (error.name === "AbortError") throw error;
      throw new Refusal(0, "The desk does not answer.");
    });
    if (answer.ok) return answer;
    const { error } = await answer.json().catch(() => ({}));
    throw new Refusal(answer.status, error ?? `The desk refused this (${answer.status}).`);
  }

  // Follows the window's events from now on. `taken(event, data, isFirst)` hears each; `lost` and `denied` that there
  // is nothing to hear, for want of the server or of the right token. After denied() go() starts it again.
  function follow({ taken, lost, denied }) {
    let failures = 0;

    async function listen() {
      const leave = new AbortController();
      let silence;
      const heard = () => {
        clearTimeout(silence);
        silence = setTimeout(() => leave.abort(), longestSilence);
      };
      heard();
      try {
        const answer = await ask("GET", `windows/${name}/events`, { signal: leave.signal });
        let number;
        let isFirst = true;
        for await (const { event, id, data } of eventsOf(answer.body)) {
          heard();
          failures = 0;
          if (event === "beat") continue;
          if (id !== undefined) {
            if (number !== undefined && Number(id) !== number + 1) return; // something is missing: begin anew
            number = Number(id);
          }
          taken(event, JSON.parse(data), isFirst);
          isFirst = false;
        }
      } finally {
        clearTimeout(silence);
        leave.abort();
      }
    }

    async function go() {
      for (;;) {
        try {
          await listen();
        } catch (error) {
          if (error.status === 401) return denied();
          if (!(error instanceof Refusal) && error.name !== "AbortError" && error.name !== "TypeError")
            reportError(error);
        }
        lost();
        const pause = Math.min(longestPause, firstPause * 2 ** failures++);
        await new Promise((resolve) => setTimeout(resolve, pause * (0.5 + Math.random() / 2)));
      }
    }
    return go;
  }

  // What was asked for last, as long as a dialog may come of it: [path, body].
  let opening = null;

  return {
    ask,
    opening: () => opening,
    follow,
    get: async (path) => (await ask("GET", path)).json(),
    // Of this window.
    async post(path, json = {}) {
      opening = /^(connect$|press\/)/.test(path) ? [path, json] : null;
      return (await ask("POST", `windows/${name}/${path}`, { json })).json();
    },
  };
}
