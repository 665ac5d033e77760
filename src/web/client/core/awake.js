// Whether this page has been running all the time, or its machine or tab slept.

const beat = 1000;
const longestPause = 3000;
let seen = Date.now();
let wokeAt = 0;

function look() {
  const now = Date.now();
  if (now - seen > longestPause) wokeAt = now;
  seen = now;
}

setInterval(look, beat);

export function isAwake() {
  look();
  return document.visibilityState === "visible" && Date.now() - wokeAt > beat;
}
