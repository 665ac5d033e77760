// Waits for the moment at which all screens change.

import { timeUntil } from "./server_time.js";

const longestWait = 3000; // nobody is asked to wait longer: a clock was set
const headStart = 60; // enough for a few frames before
const patience = 100;
const longestFrame = 50;

// Whether there is something to wait for.
export function isAhead(moment) {
  const left = timeUntil(moment);
  return left > 0 && left < longestWait;
}

// The moment by this page's clock, for who waits for it or has just done so; null for who has not.
export function timeOf(moment) {
  const left = moment && timeUntil(moment);
  return isAhead(moment) || (left && Math.abs(left) < longestFrame) ? performance.now() + left : null;
}

// Resolves some time after the moment, when each page has had its turn to show it.
export function momentPassed(moment) {
  return new Promise((resolve) => setTimeout(resolve, timeUntil(moment) + patience));
}

// Resolves within the frame that is nearest to the moment, or at once when it has passed.
export function frameAt(moment) {
  if (!isAhead(moment)) return Promise.resolve();
  return new Promise((resolve) => {
    let before;
    const look = (time) => {
      const frame = Math.min(time - (before ?? time), longestFrame);
      before = time;
      if (timeUntil(moment) <= frame / 2) resolve();
      else requestAnimationFrame(look);
    };
    setTimeout(() => requestAnimationFrame(look), timeUntil(moment) - headStart);
    // A page that nobody sees has no frames.
    setTimeout(resolve, timeUntil(moment) + patience);
  });
}
