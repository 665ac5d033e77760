// A page that follows the show: what the event stream says comes onto the stage in its
// order, and a page that is older than the server's gives way to the newer one.

import { isAwake } from "./awake.js";
import { renewFor } from "./renewal.js";
import { changeShapes, showState } from "./slides.js";
import { measureServerTime } from "./server_time.js";
import { openStream } from "./stream.js";

const page = document.documentElement;

// `state` is called with each state once it stands on the stage; `changed` with the number
// of each event when the page has taken it up; `hello` and `before` as in openStream.
export function followShow(url, { before, hello, state, changed }) {
  // One event after the other, also when one has to wait for a file.
  let queue = Promise.resolve();
  const inTurn = (handler) => (data, number, isNext) => {
    queue = queue
      .then(() => handler(data, isNext))
      .then(() => changed?.(number))
      .catch((error) => console.error(error));
  };
  openStream(url, {
    before,
    hello,
    picture: inTurn(async (fresh, isNext) => {
      if (fresh.at !== null && !isNext) measureServerTime();
      renewFor(fresh.version);
      if (document.title !== fresh.title) document.title = fresh.title;
      await showState(fresh, isNext && isAwake());
      page.toggleAttribute("data-ended", fresh.ended);
      page.dataset.blank = fresh.blank;
      state(fresh);
    }),
    shapes: inTurn((changes) => changeShapes(changes, isAwake())),
  });
}
