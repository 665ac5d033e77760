// Screens that are known: a token from the page's address, http://…/#token=…, is shown to the server
// once, which has the browser keep it where no script sees it.

export function tokenInAddress() {
  return new URLSearchParams(location.hash.slice(1)).get("token");
}

export function forgetAddress() {
  history.replaceState(null, "", location.pathname + location.search);
}

// Resolves to {isKnown: true, steers} (a token for steering is no screen's), or to {isKnown: false} with isLost
// where the show cannot be reached.
export async function enterWith(token) {
  const answer = await fetch("/screen/enter", {
    method: "POST",
    headers: { "Content-Type": "application/json" },
    body: JSON.stringify({ token }),
  }).catch(() => null);
  if (answer?.ok) {
    const { steers } = await answer.json();
    return { isKnown: true, steers };
  }
  return { isKnown: false, isLost: answer?.status !== 401 };
}

// Whether the server says that this browser may look, and that it may not (any more); neither where it says nothing.
export async function askWhetherKnown() {
  const answer = await fetch("/screen/check", { cache: "no-store" }).catch(() => null);
  return { isKnown: answer?.status === 204, isForeign: answer?.status === 401 };
}
