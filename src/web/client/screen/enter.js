// In place of any page that a browser may not see: lets it in by its token, and otherwise says what
// to do. It looks again from time to time, as an operator may let it in meanwhile.

import { askWhetherKnown, enterWith, forgetAddress, tokenInAddress } from "../core/admission.js";

const pause = 15000;
const quiet = 10000;
const isRemote = location.pathname === "/remote";
const store = isRemote ? localStorage : sessionStorage;
const why = document.getElementById("why");

function goOn() {
  forgetAddress();
  if (location.pathname === "/screen/enter") location.replace("/");
  else location.reload();
}

async function take(token) {
  const { isKnown, isLost, steers, others } = await enterWith(token);
  if (isKnown) {
    await others; // this page goes
    if (steers) store.setItem("token", token);
    sessionStorage.setItem("let-in", Date.now());
    goOn();
  } else if (isLost) {
    why.textContent = "The show cannot be reached; this page tries again.";
  } else {
    why.innerText =
      "The token is not known, or not any more. The operator makes a new one with: lumenfold screen add NAME";
  }
}

// What steers is kept by the page that it was given to, and lets it in again when the show has begun anew.
function keptToken() {
  // A browser that keeps no cookies would come back for ever.
  const isBack = Date.now() - Number(sessionStorage.getItem("let-in")) < quiet;
  return isBack ? null : store.getItem("token");
}

let given = tokenInAddress();

async function look() {
  const token = given ?? keptToken();
  if (token) await take(token);
  else if ((await askWhetherKnown()).isKnown) goOn();
}

addEventListener("hashchange", () => {
  given = tokenInAddress() ?? given;
  look();
});
document.querySelector("form").addEventListener("submit", (event) => {
  event.preventDefault();
  given = document.getElementById("token").value.trim() || given;
  look();
});
setInterval(look, pause);
look();
