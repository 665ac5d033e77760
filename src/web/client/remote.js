// The remote control: what is on show, and commands for it. Commands take the token,
// from the address (…/remote#token=…) or asked for once.

import { changeShapes, currentSlide, showPicture } from "./slides.js";
import { openStream } from "./stream.js";
import { thumbnails } from "./thumbnails.js";

const element = (id) => document.getElementById(id);
const page = document.documentElement;
const notice = element("notice");
const store = localStorage;

let clockAhead = 0;
let began = null;
let hidden = [];
let slideCount = 0;

const fromAddress = new URLSearchParams(location.hash.slice(1)).get("token");
if (fromAddress) {
  store.setItem("token", fromAddress);
  history.replaceState(null, "", location.pathname);
}

// Resolves when somebody has entered a token.
function askForToken() {
  const dialog = element("ask");
  element("token").value = "";
  dialog.showModal();
  return new Promise((resolve) => {
    dialog.onclose = () => {
      const token = element("token").value.trim();
      if (token) store.setItem("token", token);
      resolve(Boolean(token));
    };
  });
}

const post = (command, token) =>
  fetch(`/api/v1/${command}`, { method: "POST", headers: { Authorization: `Bearer ${token}` } });

let queue = Promise.resolve();
function send(command) {
  queue = queue.then(() => attempt(command)).catch(() => say("The show cannot be reached."));
}

async function attempt(command) {
  if (!store.getItem("token") && !(await askForToken())) return;
  const answer = await post(command, store.getItem("token"));
  if (answer.status === 401) {
    store.removeItem("token");
    say("This token is not the show's.");
  } else if (!answer.ok) {
    say((await answer.json().catch(() => ({}))).error ?? "The show did not do this.");
  } else {
    navigator.vibrate?.(10);
  }
}

let silence;
function say(text) {
  notice.textContent = text;
  clearTimeout(silence);
  silence = setTimeout(showState, 3000);
}

function showState() {
  const { blank } = page.dataset;
  notice.textContent = page.hasAttribute("data-ended")
    ? "End of slide show"
    : blank === "none"
      ? ""
      : `The screens are ${blank}.`;
}

const all = thumbnails(element("thumbnails"), (slide) => send(`goto/${slide}`));

function showPosition() {
  const slide = currentSlide();
  element("position").textContent = `${slide || "–"} / ${slideCount}`;
  all.mark(slide, hidden);
}

async function readHidden() {
  const answer = await fetch("/api/v1/state").catch(() => null);
  if (!answer?.ok) return;
  const { slides } = await answer.json();
  hidden = slides.filter((slide) => slide.hidden).map((slide) => slide.index);
  showPosition();
}

async function show(picture, _sequence, isNext) {
  await showPicture(picture, isNext && document.visibilityState === "visible");
  for (const side of ["width", "height"]) document.body.style.setProperty(`--slide-${side}`, `${picture[side]}px`);
  page.dataset.blank = picture.blank;
  page.toggleAttribute("data-ended", picture.ended);
  began = picture.began;
  slideCount = picture.slideCount;
  all.count(slideCount);
  for (const button of document.querySelectorAll("#blanks button")) {
    button.ariaPressed = button.dataset.blank === picture.blank;
  }
  showState();
  showPosition();
  showElapsed();
  readHidden();
}

function showElapsed() {
  const seconds = began === null ? 0 : Math.max(0, Math.floor((Date.now() + clockAhead - began) / 1000));
  const two = (number) => String(number).padStart(2, "0");
  const hours = Math.floor(seconds / 3600);
  const minutes = Math.floor(seconds / 60) % 60;
  element("elapsed").textContent = hours
    ? `${hours}:${two(minutes)}:${two(seconds % 60)}`
    : `${minutes}:${two(seconds % 60)}`;
}

element("previous").addEventListener("click", () => send("previous"));
element("next").addEventListener("click", () => send("next"));
for (const button of document.querySelectorAll("#blanks button")) {
  button.addEventListener("click", () => {
    send(`blank/${page.dataset.blank === button.dataset.blank ? "off" : button.dataset.blank}`);
  });
}
setInterval(showElapsed, 1000);
setInterval(() => document.visibilityState === "visible" && all.renew(), 5000);
// Browsers send no token with streams and pictures; the pass lets them in when all seats are taken.
async function askForPass() {
  const token = store.getItem("token");
  if (token) await post("pass", token).catch(() => {});
}

// One event after the other, also when one has to wait for a file.
let events = Promise.resolve();
function inTurn(handler) {
  return (...event) => (events = events.then(() => handler(...event)).catch((error) => console.error(error)));
}
openStream("/remote/events", {
  before: askForPass,
  hello: ({ now }) => (clockAhead = now - Date.now()),
  picture: inTurn(show),
  shapes: inTurn((changes) => changeShapes(changes, false)),
});
if (!store.getItem("token")) askForToken();
