// Tells the server what this screen has painted last: once in a while, not at once, as
// a thousand screens would answer every change in the same moment.

const pause = 5000;
const spread = 1000;

export function reporter() {
  let screen;
  let last;
  let timer;

  function send() {
    timer = undefined;
    if (!screen) return;
    const { slide, sequence, at } = last;
    const held = Math.min(Math.round(performance.now() - at), 60000);
    fetch("/screen/painted", {
      method: "POST",
      headers: { "Content-Type": "application/json" },
      body: JSON.stringify({ screen, slide, sequence, held }),
    }).catch(() => {}); // the next paint is told again
  }

  return {
    // The server knows this screen by another name now.
    named(name) {
      screen = name;
    },
    // To be called when the page has changed; the paint follows.
    changed(slide, sequence) {
      requestAnimationFrame(() =>
        setTimeout(() => {
          const isFirst = !last;
          last = { slide, sequence, at: performance.now() };
          timer ??= setTimeout(send, Math.random() * spread + (isFirst ? 0 : pause));
        }),
      );
    },
  };
}
