// The screen: draws what the server's event stream says. It never shows an
// error; while the server is away, the last picture stands.

import { listenToKeys } from "./keys.js";
import { hidePointerWhenIdle } from "./pointer.js";
import { fitStage } from "./stage.js";
import { changeShapes, showPicture } from "./slides.js";
import { openStream } from "./stream.js";
import { commander, takeToken } from "./commands.js";

const page = document.documentElement;

function show(picture) {
  if (picture.version !== page.dataset.version) {
    reloadFor(picture.version);
    return;
  }
  if (document.title !== picture.title) document.title = picture.title;
  page.toggleAttribute("data-kiosk", picture.kiosk);
  page.toggleAttribute("data-ended", picture.ended);
  page.dataset.blank = picture.blank;
  showPicture(picture);
}

// The server has newer scripts than this page. It reloads once the new page can
// be had, and once only: should a cache still answer with the old page, the old
// page goes on as it is.
async function reloadFor(version) {
  if (sessionStorage.getItem("reloaded-for") === version) {
    page.dataset.version = version;
    return;
  }
  const answer = await fetch("/", { cache: "no-store" }).catch(() => null);
  if (!answer?.ok) return;
  sessionStorage.setItem("reloaded-for", version);
  location.reload();
}

fitStage();
hidePointerWhenIdle();
openStream("/screen/events", { picture: show, shapes: changeShapes });
listenToKeys({
  send: commander(takeToken()),
  isKiosk: () => page.hasAttribute("data-kiosk"),
  blank: () => page.dataset.blank,
});
