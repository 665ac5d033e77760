// A page that follows the show: what the event stream says comes onto the stage in its
// order, and a page that is older than the server's gives way to the newer one.

import { isAwake } from "./awake.js";
import { renewFor } from "./renewal.js";
import { changeShapes, showState } from "./slides.js";
import { measureServerTime } from "./server_time.js";

const page = document.documentElement;

// `open` begins the stream, with handlers as openStream takes them. `state` is called with each state once it
// stands on the stage; `changed` with the number of each event, and its run where there is one, when the page
// has taken it up; `others` are handlers of the stream besides.
export function followShow(open, { state, changed, ...others }) {
  // One event after the other, also when one has to wait for a file.
  let queue = Promise.resolve();
  const inTurn = (handler) => (data, number, isNext, run) => {
    queue = queue
      .then(() => handler(data, isNext))
      .then(() => changed?.(number, run))
      .catch((error) => console.error(error));
  };
  open({
    ...others,
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
