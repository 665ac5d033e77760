// The keys of a slide show. In a kiosk show only Escape counts.

const commands = {
  ArrowRight: "next",
  ArrowDown: "next",
  PageDown: "next",
  " ": "next",
  Enter: "next",
  n: "next",
  ArrowLeft: "previous",
  ArrowUp: "previous",
  PageUp: "previous",
  Backspace: "previous",
  p: "previous",
  Home: "first",
  End: "last",
  Escape: "end",
};
const blanks = { b: "black", ".": "black", w: "white", ",": "white" };
const modifiers = new Set(["Shift", "CapsLock", "NumLock", "Fn"]);

// The command of a key, or null. `typed` are the digits typed just before.
export function commandFor(key, typed, { isKiosk, blank }) {
  if (key === "Escape") return "end";
  if (isKiosk) return null;
  if (key in blanks) return `blank/${blanks[key] === blank ? "off" : blanks[key]}`;
  if (blank !== "none") return "blank/off";
  if (key === "Enter" && Number(typed) > 0) return `goto/${Number(typed)}`;
  return commands[key] ?? null;
}

function toggleFullScreen() {
  const change = document.fullscreenElement
    ? document.exitFullscreen()
    : document.documentElement.requestFullscreen();
  change.catch(() => {}); // a browser may refuse; nothing is lost
}

export function listenToKeys({ send, isKiosk, blank }) {
  let typed = "";

  addEventListener("keydown", (event) => {
    if (event.ctrlKey || event.altKey || event.metaKey || modifiers.has(event.key)) return;
    const key = event.key.length === 1 ? event.key.toLowerCase() : event.key;
    const isDigit = /^[0-9]$/.test(key);
    const command = key === "f" ? null : commandFor(key, typed, { isKiosk: isKiosk(), blank: blank() });
    typed = isDigit ? (typed + key).slice(-6) : "";
    if (key === "f" && !isKiosk()) toggleFullScreen();
    if (command) {
      event.preventDefault();
      send(command);
    }
  });

  addEventListener("click", (event) => {
    if (isKiosk() || event.button !== 0 || event.target.closest("a[href]")) return;
    send(blank() === "none" ? "next" : "blank/off");
  });
}
