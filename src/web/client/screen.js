// The screen: draws what the server's event stream says. It never shows an
// error; while the server is away, the last picture stands.

import { isAwake } from "./awake.js";
import { commander, takeToken } from "./commands.js";
import { listenToKeys } from "./keys.js";
import { hidePointerWhenIdle } from "./pointer.js";
import { reporter } from "./reports.js";
import { changeShapes, currentSlide, showPicture } from "./slides.js";
import { fitStage } from "./stage.js";
import { openStream } from "./stream.js";
import { showProgress } from "./waiting.js";

const page = document.documentElement;
const reports = reporter();

// One event after the other, also when one has to wait for a file.
let queue = Promise.resolve();
function inTurn(handler) {
  return (data, sequence, isNext) => {
    queue = queue
      .then(() => handler(data, isNext))
      .then(() => reports.changed(currentSlide(), sequence))
      .catch((error) => console.error(error));
  };
}

// What this screen has asked for and has yet to come: a second key that is pressed in
// the meantime means the opposite of the first.
let askedBlank = null;
const command = commander(takeToken());
async function send(name) {
  const blank = name.match(/^blank\/(.*)/)?.[1].replace("off", "none");
  if (blank) askedBlank = blank;
  if (!(await command(name))) askedBlank = null;
}

async function show(picture, isNext) {
  if (picture.version !== page.dataset.version) reloadFor(picture.version);
  if (document.title !== picture.title) document.title = picture.title;
  await showPicture(picture, isNext && isAwake());
  showProgress(picture.progress);
  page.toggleAttribute("data-kiosk", picture.kiosk);
  page.toggleAttribute("data-ended", picture.ended);
  page.toggleAttribute("data-transparent", picture.transparent);
  page.dataset.blank = picture.blank;
  if (picture.blank === askedBlank) askedBlank = null;
}

// The server has newer scripts than this page. It reloads once the new page can
// be had, and once only: should a cache still answer with the old page, the old
// page goes on as it is.
async function reloadFor(version) {
  if (sessionStorage.getItem("reloaded-for") === version) return;
  const answer = await fetch("/", { cache: "no-store" }).catch(() => null);
  if (!answer?.ok) return;
  sessionStorage.setItem("reloaded-for", version);
  location.reload();
}

fitStage();
hidePointerWhenIdle();
openStream(`/screen/events${location.search}`, {
  hello: ({ screen }) => reports.named(screen),
  picture: inTurn(show),
  shapes: inTurn((changes) => changeShapes(changes, isAwake())),
});
listenToKeys({
  send,
  isKiosk: () => page.hasAttribute("data-kiosk"),
  blank: () => askedBlank ?? page.dataset.blank,
});
