// The screen: draws what the server's event stream says. It never shows an
// error; while the server is away, what it shows stands.

import { askWhetherKnown, enterWith, forgetAddress, tokenInAddress } from "../core/admission.js";
import { commander, keptToken } from "../core/commands.js";
import { followShow } from "../core/live.js";
import { currentSlide } from "../core/slides.js";
import { listenToKeys } from "./keys.js";
import { hidePointerWhenIdle } from "./pointer.js";
import { reporter } from "./reports.js";
import { fitStage } from "./stage.js";
import { showProgress } from "./waiting.js";
import { openWay } from "./way.js";

const page = document.documentElement;
const reports = reporter(() => location.reload());

// Where screens are known, an address may bring this one a token of its own, which is none for steering.
async function takeToken() {
  const token = tokenInAddress();
  if (!token) return;
  const { isKnown, steers } = await enterWith(token);
  if (isKnown && !steers) forgetAddress();
}

// A screen that may not look any more loses its picture: the page that comes instead says what to do.
let isFirst = true;
async function lookWhetherKnown() {
  if (!isFirst && (await askWhetherKnown()).isForeign) location.reload();
  isFirst = false;
}

const isKnown = page.hasAttribute("data-known");
if (isKnown) await takeToken();

// What this screen has asked for and has yet to come: a second key that is pressed in
// the meantime means the opposite of the first.
let askedBlank = null;
const command = commander(keptToken(sessionStorage).get);
async function send(name) {
  const blank = name.match(/^blank\/(.*)/)?.[1].replace("off", "none");
  if (blank) askedBlank = blank;
  const { isDone } = await command(name);
  if (!isDone) askedBlank = null;
}

function show(state) {
  showProgress(state.progress);
  page.toggleAttribute("data-kiosk", state.kiosk);
  page.toggleAttribute("data-transparent", state.transparent);
  if (state.blank === askedBlank) askedBlank = null;
}

fitStage();
hidePointerWhenIdle();
const { view } = page.dataset;
followShow((handlers) => openWay(view, handlers), {
  before: isKnown ? lookWhetherKnown : undefined,
  hello: ({ screen }) => reports.named(screen),
  atHub: () => reports.atHub(view),
  state: show,
  changed: (number, run) => reports.changed(currentSlide(), number, run),
});
listenToKeys({
  send,
  isKiosk: () => page.hasAttribute("data-kiosk"),
  blank: () => askedBlank ?? page.dataset.blank,
});
