// Where a screen streams from: the show, or a hub between, which says so when it is asked for the state.

import { openStream } from "../core/stream.js";
import { askForState, openHubStream } from "./hub_stream.js";

const firstPause = 500;
const longestPause = 15000;

// `handlers` as openStream takes them; `atHub` is called when it is a hub.
export async function openWay(view, { atHub, ...handlers }) {
  for (let failures = 0; ; failures++) {
    await handlers.before?.();
    const answer = await askForState(view);
    if (answer && !answer.headers.has("Lumenfold-Hub")) {
      answer.body.cancel(); // the show's own stream begins with it
      openStream(`/screen/events${location.search}`, handlers);
      return;
    }
    const state = answer && (await answer.json().catch(() => null));
    if (state) {
      atHub();
      openHubStream(view, state, handlers);
      return;
    }
    const pause = Math.min(longestPause, firstPause * 2 ** failures);
    await new Promise((resolve) => setTimeout(resolve, pause * (0.5 + Math.random() / 2)));
  }
}
