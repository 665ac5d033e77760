// The remote control: what is on show, and commands for it. Commands take the token,
// from the address (…/remote#token=…) or asked for once.

import { commander, keptToken, order } from "../core/commands.js";
import { followShow } from "../core/live.js";
import { currentSlide } from "../core/slides.js";
import { openStream } from "../core/stream.js";
import { thumbnails } from "./thumbnails.js";

const longestWait = 3000; // for the pass, which most streams do without
const element = (id) => document.getElementById(id);
const page = document.documentElement;
const notice = element("notice");
const token = keptToken(localStorage);

let clockAhead = 0;
let began = null;
let hidden = [];
let slideCount = 0;

// Resolves to the token that somebody enters; null when nobody does.
function askForToken() {
  const dialog = element("ask");
  element("token").value = "";
  dialog.showModal();
  return new Promise((resolve) => {
    dialog.onclose = () => {
      const entered = element("token").value.trim();
      if (entered) token.keep(entered);
      resolve(entered || null);
    };
  });
}

const command = commander(() => token.get() ?? askForToken());
async function send(name) {
  const { isDone, isForeign, isLost, why } = await command(name);
  if (isForeign) token.forget();
  if (isDone) navigator.vibrate?.(10);
  else if (isForeign) say("This token is not the show's.");
  else if (isLost) say("The show cannot be reached.");
  else if (why) say(why);
}

let silence;
function say(text) {
  notice.textContent = text;
  clearTimeout(silence);
  silence = setTimeout(showNotice, 3000);
}

function showNotice() {
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

function show(state) {
  element("title").textContent = state.title;
  for (const side of ["width", "height"]) document.body.style.setProperty(`--slide-${side}`, `${state[side]}px`);
  began = state.began;
  slideCount = state.slideCount;
  all.count(slideCount);
  for (const button of document.querySelectorAll("#blanks button")) {
    button.ariaPressed = button.dataset.blank === state.blank;
  }
  showNotice();
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

// A browser sends no token with streams and pictures; the pass lets it in when all seats are taken.
function askForPass() {
  if (!token.get()) return;
  const wait = new Promise((resolve) => setTimeout(resolve, longestWait));
  return Promise.race([order("pass", token.get()), wait]);
}

followShow((handlers) => openStream("/remote/events", handlers), {
  before: askForPass,
  hello: ({ now }) => (clockAhead = now - Date.now()),
  state: show,
});
if (!token.get()) askForToken();
