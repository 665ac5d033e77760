// Screens that are known: a token from the page's address, http://…/#token=…, is shown to the server
// once, which has the browser keep it where no script sees it.

export function tokenInAddress() {
  return new URLSearchParams(location.hash.slice(1)).get("token");
}

export function forgetAddress() {
  history.replaceState(null, "", location.pathname + location.search);
}

const longestAnswer = 5000;

// Without a Content-Type of its own it is a request that browsers make to another hub unasked.
function enterAt(origin, token) {
  return fetch(`${origin}/screen/enter`, {
    method: "POST",
    credentials: "include",
    body: JSON.stringify({ token }),
    signal: AbortSignal.timeout(longestAnswer),
  }).catch(() => null);
}

// Resolves to {isKnown: true, steers} (a token for steering is no screen's), or to {isKnown: false} with isLost
// where the show cannot be reached. A screen is set up at all hubs of the show, for the day when its own is gone: nobody
// has the token then. Browsers keep what hubs of the same domain set. `others` resolves when they have answered.
export async function enterWith(token) {
  const answer = await enterAt("", token);
  if (!answer?.ok) return { isKnown: false, isLost: answer?.status !== 401 };
  const { steers, hubs } = await answer.json();
  const otherHubs = steers ? [] : hubs.filter((hub) => hub !== location.origin);
  return { isKnown: true, steers, others: Promise.all(otherHubs.map((hub) => enterAt(hub, token))) };
}

// Whether the server says that this browser may look, and that it may not (any more); neither where it says nothing.
export async function askWhetherKnown() {
  const answer = await fetch("/screen/check", { cache: "no-store" }).catch(() => null);
  return { isKnown: answer?.status === 204, isForeign: answer?.status === 401 };
}
