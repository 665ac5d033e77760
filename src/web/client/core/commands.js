// What whoever holds the token may ask of the server.

// The token as it was given in the page's address, http://…/#token=…, and is kept from then
// on: in sessionStorage for this tab, in localStorage for this browser.
export function keptToken(store) {
  const given = new URLSearchParams(location.hash.slice(1)).get("token");
  if (given) {
    store.setItem("token", given);
    history.replaceState(null, "", location.pathname + location.search);
  }
  return {
    get: () => store.getItem("token"),
    keep: (token) => store.setItem("token", token),
    forget: () => store.removeItem("token"),
  };
}

// Resolves to what became of a command: {isDone: true}, or {isDone: false} with isForeign where
// the token is not the show's, with isLost where the show cannot be reached, or with why, in the
// show's words.
export async function order(command, token) {
  const answer = await fetch(`/api/v1/${command}`, {
    method: "POST",
    headers: { Authorization: `Bearer ${token}` },
  }).catch(() => null);
  if (!answer) return { isDone: false, isLost: true };
  if (answer.ok) return { isDone: true };
  if (answer.status === 401) return { isDone: false, isForeign: true };
  const { error } = await answer.json().catch(() => ({}));
  return { isDone: false, why: error ?? "The show did not do this." };
}

// A function that sends commands one after the other, in their order, and resolves to what became
// of each. `token` gives the token, or a promise of it; without one nothing is sent.
export function commander(token) {
  let queue = Promise.resolve();
  return (command) => {
    queue = queue.then(async () => {
      const held = await token();
      return held ? order(command, held) : { isDone: false };
    });
    return queue;
  };
}
