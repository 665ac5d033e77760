// The server's time, found by a few exchanges as NTP does, so that screens can do something at the
// same moment.

const firstExchanges = 5;
const firstPause = 300;
const pause = 60000;
const mostKept = 8;
const drift = 1e-4; // of two clocks against each other, at worst
const doubtAfterLoss = 1000;

let exchanges = []; // {offset, doubt, at}: ms, doubt as it was then
let timer;
let toDo = 0;

const now = () => performance.now();
const doubtOf = ({ doubt, at }) => doubt + drift * (now() - at);

// What was measured counts from the server's answer, which came at some time between request and
// response. The browser knows these times better than a script whose turn may come late.
async function exchange() {
  const url = `/screen/time?${exchanges.length}.${Math.round(now())}`;
  const asked = now();
  const answer = await fetch(url, { cache: "no-store" });
  if (!answer.ok) return;
  const { now: time } = await answer.json();
  const heard = now();
  const seen = performance.getEntriesByName(new URL(url, location).href).at(-1);
  performance.clearResourceTimings();
  const from = seen?.requestStart || asked;
  const to = seen?.responseStart || heard;
  exchanges.push({ offset: time - (from + to) / 2, doubt: (to - from) / 2, at: now() });
  exchanges = exchanges.slice(-mostKept);
}

async function measure() {
  await exchange().catch(() => {}); // the next one may succeed
  toDo = Math.max(0, toDo - 1);
  timer = setTimeout(measure, (toDo > 0 ? firstPause : pause) * (0.75 + Math.random() / 2));
}

// Begins to measure, or anew: after a loss of the line this machine may have slept, and its clock with it.
export function measureServerTime() {
  for (const known of exchanges) known.doubt += doubtAfterLoss;
  toDo = firstExchanges;
  clearTimeout(timer);
  timer = setTimeout(measure, Math.random() * firstPause);
}

// ms until the server's time is `moment`, below 0 when that has passed; null as long as it is not known.
export function timeUntil(moment) {
  const best = exchanges.reduce((a, b) => (!a || doubtOf(b) <= doubtOf(a) ? b : a), null);
  return best && moment - best.offset - now();
}
