// Tells the show what this screen has painted last: once in a while, not at once, as
// a thousand screens would answer every change in the same moment.

const pause = 5000;
const spread = 1000;
// At a hub the report is also what says that the screen is there, and there may be any number of them.
const pauseAtHub = 45000;
const spreadAtHub = 10000;
const firstSpreadAtHub = 5000;

// Each window is a screen of its own, also after it was loaded anew.
function ownName() {
  const kept = sessionStorage.getItem("screen");
  if (kept) return kept;
  const bytes = crypto.getRandomValues(new Uint8Array(16));
  const name = Array.from(bytes, (byte) => byte.toString(16).padStart(2, "0")).join("");
  sessionStorage.setItem("screen", name);
  return name;
}

// `refused` is called when this screen may not look any more.
export function reporter(refused) {
  let screen;
  let view; // at a hub
  let last;
  let timer;

  function send() {
    timer = undefined;
    if (!screen) return;
    const { at, ...painted } = last;
    const held = Math.min(Math.round(performance.now() - at), 60000);
    fetch("/screen/painted", {
      method: "POST",
      headers: { "Content-Type": "application/json" },
      body: JSON.stringify({ screen, view, ...painted, held }),
    })
      .then(({ status }) => status === 401 && refused())
      .catch(() => {}); // the next paint is told again
    if (view) timer = setTimeout(send, pauseAtHub + Math.random() * spreadAtHub);
  }

  return {
    // The server knows this screen by another name now.
    named(name) {
      screen = name;
    },
    // Nobody gives this screen a name.
    atHub(lookedAt) {
      screen = ownName();
      view = lookedAt;
    },
    // To be called when the page has changed; the paint follows.
    changed(slide, sequence, run) {
      requestAnimationFrame(() =>
        setTimeout(() => {
          const soonest = last ? pause : 0;
          last = { slide, sequence, run, at: performance.now() };
          timer ??= setTimeout(send, soonest + Math.random() * (view ? firstSpreadAtHub : spread));
        }),
      );
    },
  };
}
