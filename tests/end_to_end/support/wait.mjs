import assert from "node:assert/strict";

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

// A value changed in a text file is due on the screens after one refresh interval
// of a second; the rest is for machines with more to do.
export const refresh = 4000;

// What `probe` returns as soon as it is truthy. Fails when it is not in time,
// with `what` was awaited and the last thing seen or thrown.
export async function until(what, probe, milliseconds = 10000) {
  const deadline = Date.now() + milliseconds;
  for (let last; ; await pause(25)) {
    try {
      const result = await probe();
      if (result) return result;
      last = result;
    } catch (error) {
      last = error;
    }
    if (Date.now() > deadline) assert.fail(`waited ${milliseconds} ms for ${what}; last: ${last}`);
  }
}

// `promise`, unless it takes too long.
export async function within(what, promise, milliseconds = 10000) {
  let timer;
  const late = new Promise((_, reject) => {
    timer = setTimeout(() => reject(new Error(`waited ${milliseconds} ms for ${what}`)), milliseconds);
  });
  try {
    return await Promise.race([promise, late]);
  } finally {
    clearTimeout(timer);
  }
}
