// How the show does, for people: asked for every few seconds while somebody looks.

import { renewFor } from "../core/renewal.js";

const pause = 2000;
const longestAnswer = 8000;
const element = (id) => document.getElementById(id);

const lasting = (seconds) => {
  if (seconds < 1) return "less than a second";
  if (seconds < 90) return `${Math.round(seconds)} s`;
  if (seconds < 90 * 60) return `${Math.round(seconds / 60)} min`;
  if (seconds < 36 * 3600) return `${Math.round(seconds / 3600)} h`;
  return `${Math.round(seconds / 86400)} days`;
};
const ago = (seconds) => (seconds < 1 ? "just now" : `${lasting(seconds)} ago`);
const several = (count, one, many) => `${count.toLocaleString()} ${count === 1 ? one : many}`;
const sentence = (...parts) => parts.filter(Boolean).join(" · ");

const showWords = {
  opening: "The show is being opened",
  black: "The screens are black",
  white: "The screens are white",
  empty: "Every slide is hidden, for want of data or by its author",
  ended: "The show has ended",
  waiting: "No deck is due now",
};
const deckWords = {
  "on show": "on the screens",
  "in turn": "comes in its turn",
  "not now": "not to be shown now",
  refused: "cannot be shown",
};
const connectionWords = {
  fresh: "up to date",
  waiting: "has not delivered yet",
  failing: "reading fails",
  stale: "no new data",
  resting: "not needed now",
};
const screenWords = {
  current: "up to date",
  new: "has just come",
  behind: "is behind",
  silent: "paints nothing",
  missing: "is not there",
};

function connectionRow({ connection, description, level, state, rows, interval, age, error }) {
  return {
    level,
    name: `${connection} ${description}`,
    state: connectionWords[state],
    details: sentence(several(rows, "row", "rows"), interval > 0 && `every ${lasting(interval)}`),
    age: age === null ? "never read" : `read ${ago(age)}`,
    problem: error && `Failed ${ago(error.age)}: ${error.text}`,
  };
}

function deckRow({ name, level, state, until, problem }) {
  return { level, name, state: deckWords[state], details: until ? `until ${until}` : "", age: "", problem };
}

function slideRow({ slide, level, age, error }) {
  return {
    level,
    name: `Slide ${slide}`,
    state: "shows old values",
    details: "cannot be refreshed",
    age: `for ${lasting(age)}`,
    problem: error,
  };
}

const nodeWords = {
  taking: "takes the show's messages",
  away: "takes no messages",
  waiting: "has not been asked yet",
};

function nodeRow({ address, level, state, since, problem }) {
  return {
    level,
    name: address,
    state: nodeWords[state],
    details: since === null ? "" : `for ${lasting(since)}`,
    age: "",
    problem,
  };
}

function viewName({ kind, slide }) {
  if (kind === "slide") return `keeps to slide ${slide}`;
  if (kind === "shape") return `one shape of slide ${slide}`;
  return "the show";
}

function screenRow({ screen, name, level, state, view, hub, connected, painted, away }) {
  if (away !== undefined) {
    return { level, name, state: screenWords[state], details: "", age: `for ${lasting(away)}`, problem: "" };
  }
  const delay = painted?.delay ?? null;
  return {
    level,
    name: name ?? `Screen ${screen}`,
    state: screenWords[state],
    details: sentence(
      viewName(view),
      hub && "over a hub",
      painted && (painted.slide ? `painted slide ${painted.slide}` : "painted no slide"),
      delay !== null && `${Math.round(delay * 1000)} ms after the data`,
    ),
    age: painted ? ago(painted.age) : "",
    problem: level === "good" ? "" : `Connected for ${lasting(connected)}.`,
  };
}

function fill(list, rows, none = "") {
  const items = rows.map(({ level, ...texts }) => {
    const item = element("row").content.firstElementChild.cloneNode(true);
    item.dataset.level = level;
    for (const [name, text] of Object.entries(texts)) item.querySelector(`.${name}`).textContent = text ?? "";
    return item;
  });
  if (items.length === 0) {
    const item = document.createElement("li");
    item.append(Object.assign(document.createElement("span"), { className: "none", textContent: none }));
    items.push(item);
  }
  list.replaceChildren(...items);
}

function verdict({ show, decks = [], folder, connections, slides, screens, hub }) {
  const troubled = (list) => list.filter(({ level }) => level === "warning" || level === "bad").length;
  const [sources, viewers] = [troubled(connections), troubled(screens)];
  const parts = [
    showWords[show.state],
    folder && "The folder of decks needs a look",
    troubled(decks) > 0 && several(troubled(decks), "deck needs", "decks need") + " a look",
    sources > 0 && several(sources, "connection needs", "connections need") + " a look",
    slides.length > 0 && several(slides.length, "slide shows", "slides show") + " old values",
    viewers > 0 && several(viewers, "screen needs", "screens need") + " a look",
    hub?.some(({ state }) => state === "away") && "A node of the hub takes no messages",
    screens.every(({ away }) => away !== undefined) && show.state !== "ended" && "No screen is connected",
  ];
  return parts.filter(Boolean).join(". ") || "Everything is well";
}

function showStatus(status) {
  const { show, decks, folder, connections, slides, screens, screenCount, hub } = status;
  renewFor(status.version);
  document.title = `${status.title} – status`;
  document.documentElement.removeAttribute("data-lost");
  document.querySelector("header").dataset.level = status.level;
  element("title").textContent = status.title;
  element("verdict").textContent = verdict(status);
  element("on").textContent = sentence(
    show.slide > 0 && `Slide ${show.slide} of ${show.slideCount}`,
    show.running !== null && `running for ${lasting(show.running)}`,
  );
  element("player").hidden = !decks;
  if (decks) fill(element("decks"), decks.map(deckRow), "The folder has no decks.");
  element("folder").textContent = folder ?? "";
  fill(element("connections"), connections.map(connectionRow), "The deck has no connections.");
  element("standing").hidden = slides.length === 0;
  fill(element("slides"), slides.map(slideRow));
  fill(element("screens"), screens.map(screenRow), "No screen is connected.");
  element("count").textContent =
    screenCount > screens.length ? `${screenCount.toLocaleString()} screens, of which ${screens.length} stand here.` : "";
  element("hub").hidden = !hub;
  if (hub) fill(element("nodes"), hub.map(nodeRow));
}

let heard = Date.now();

function showLoss() {
  document.documentElement.toggleAttribute("data-lost", true);
  document.querySelector("header").dataset.level = "bad";
  element("verdict").textContent = `The show does not answer, for ${lasting((Date.now() - heard) / 1000)}`;
}

async function look() {
  const signal = AbortSignal.timeout(longestAnswer);
  const answer = await fetch("/api/v1/status", { cache: "no-store", signal }).catch(() => null);
  const status = answer?.ok ? await answer.json().catch(() => null) : null;
  if (!status) return showLoss();
  heard = Date.now();
  showStatus(status);
}

// Nobody looks at a hidden page; one that comes back looks at once.
let timer;
async function goOn() {
  clearTimeout(timer);
  if (document.visibilityState === "visible") await look();
  clearTimeout(timer);
  timer = setTimeout(goOn, pause);
}
document.addEventListener("visibilitychange", () => document.visibilityState === "visible" && goOn());
goOn();
