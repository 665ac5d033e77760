// Asks for the token, which stands behind # in the address that the program has printed.

import { ask } from "./dialogs.js";
import { h } from "./dom.js";

export async function askForToken(token) {
  const isForeign = Boolean(token.get());
  token.forget();
  const input = h("input", { type: "password", "aria-label": "Token", autocomplete: "off" });
  const given = await ask({
    caption: "Which token?",
    text: `${isForeign ? "This token is not this desk's. " : ""}It stands behind “#token=” in the address that the program printed when it was started.`,
    body: input,
    buttons: [{ caption: "Continue", value: () => input.value, isPrimary: true }],
  });
  const plain = (given ?? "").trim().replace(/^.*#token=/, "");
  if (plain) token.keep(plain);
  else await askForToken(token);
}
