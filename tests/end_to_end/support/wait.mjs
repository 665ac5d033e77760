import assert from "node:assert/strict";

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

// Ends what hangs. How soon things come is measured in bench/: here a machine may be as
// busy as it likes.
export const patience = 60000;

// For a value changed in a file, which is due on the screens after an interval of a second.
export const refresh = patience;

// What `probe` returns as soon as it is truthy. Fails when it is not in time,
// with `what` was awaited and the last thing seen or thrown.
export async function until(what, probe, milliseconds = patience) {
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
export async function within(what, promise, milliseconds = patience) {
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
