// The stream of a hub: from a state on, with its own way of coming back, and of leaving a hub that
// is gone for another one.

import { hubOrder } from "./hub_order.js";

const firstPause = 500;
const longestPause = 15000;
const longestAnswer = 8000;
const failuresBeforeOthers = 3;
const tries = 4; // until a state comes from no cache

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));
const pauseAfter = (failures) =>
  pause(Math.min(longestPause, firstPause * 2 ** failures) * (0.5 + Math.random() / 2));

// The answer with the state of a view; null when there is none. `origin` is this page's when empty.
export async function askForState(view, origin = "") {
  const answer = await fetch(`${origin}/screen/state/${view}`, {
    cache: "no-store",
    credentials: origin ? "include" : "same-origin",
    signal: AbortSignal.timeout(longestAnswer),
  }).catch(() => null);
  return answer?.ok ? answer : null;
}

async function stateOf(view) {
  const answer = await askForState(view);
  return answer && answer.json().catch(() => null);
}

// Goes over to the first hub that answers, if there is one: its page is the same.
async function leaveFor(hubs, view) {
  for (const hub of hubs) {
    if (hub === location.origin || !(await askForState(view, hub))) continue;
    location.replace(hub + location.pathname + location.search);
    return;
  }
}

// `state` is the first one. `before` is awaited whenever something is about to be asked for; `picture` and
// `shapes` as in openStream, with the run behind.
export function openHubStream(view, state, { before, picture, shapes }) {
  let source;
  let silence;
  let failures = 0;
  let { hubs } = state;
  let id = state.hub.id;
  let longestSilence = 3 * state.picture.heartbeat;
  let isFetching = false;

  const order = hubOrder({
    picture: (data, number, isNext) => {
      longestSilence = 3 * data.heartbeat;
      picture(data, number, isNext, order.run);
    },
    shapes: (data, number, isNext) => shapes(data, number, isNext, order.run),
    need: catchUp,
  });

  function close() {
    source?.close();
    clearTimeout(silence);
  }

  // A hub goes on with signs of life of its own when the show is dead: those of the show alone count.
  function heard() {
    clearTimeout(silence);
    silence = setTimeout(beginAnew, longestSilence);
  }

  async function connect() {
    close();
    await before?.();
    const from = id === null ? "" : `?last_event_id=${encodeURIComponent(id)}`;
    source = new EventSource(`/screen/hub/${view}${from}`);
    source.onerror = comeBack;
    source.onmessage = (event) => {
      id = event.lastEventId || id;
      failures = 0;
      heard();
      order.take(JSON.parse(event.data));
    };
    heard();
  }

  async function comeBack() {
    close();
    failures++;
    await pauseAfter(failures - 1);
    if (failures >= failuresBeforeOthers && !(await askForState(view))) await leaveFor(hubs, view);
    connect();
  }

  // The show was not heard of for too long.
  async function beginAnew() {
    close();
    for (let fresh; ; failures++) {
      await pauseAfter(failures);
      await before?.();
      fresh = await stateOf(view);
      if (fresh) {
        id = fresh.hub.id;
        ({ hubs } = fresh);
        order.begin(fresh, true);
        break;
      }
      if (failures + 1 >= failuresBeforeOthers) await leaveFor(hubs, view);
    }
    connect();
  }

  // Something is missing, while the stream goes on. Many screens miss it at once.
  async function catchUp() {
    if (isFetching) return;
    isFetching = true;
    await pause(Math.random() * 1000);
    for (let i = 1; order.isWaiting; i++) {
      const fresh = await stateOf(view);
      if (fresh) {
        ({ hubs } = fresh);
        order.begin(fresh, i >= tries);
      }
      if (order.isWaiting) await (fresh ? pause(1000 + Math.random() * 1000) : pauseAfter(i));
    }
    isFetching = false;
  }

  order.begin(state);
  connect();
}
