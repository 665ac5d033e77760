// Lines above the data: what has happened, what is being waited for, that the server has gone. None of them is in
// the way, and none goes by itself but those of what has ended.

import { fill, h, place, set } from "./dom.js";
import { icon } from "./icons.js";

const slow = 300; // ms from which on waiting is worth a word
const time = (seconds) => `${Math.floor(seconds / 60)}:${String(Math.floor(seconds % 60)).padStart(2, "0")}`;

export function createNotices(desk) {
  const { state, watch, change } = desk;
  const region = document.getElementById("notices");
  const lost = h(
    "div",
    { class: "notice", "data-level": "error", hidden: true },
    icon("warning"),
    h("span", { class: "text" }),
  );
  const jobs = h("div", { class: "jobs" });
  const list = h("div", { class: "list" });
  region.append(lost, jobs, list);

  // Each word once: to those who hear the page as well.
  const live = document.getElementById("live");
  const alarm = document.getElementById("alarm");
  const say = (text, isAlarm = false) => {
    const target = isAlarm ? alarm : live;
    target.textContent = "";
    requestAnimationFrame(() => (target.textContent = text));
  };

  let number = 0;
  // A notice of the page itself.
  function tell(text, level = "warning") {
    if (state.told.some((each) => each.text === text)) return;
    change({ told: [...state.told.slice(-2), { id: `page-${++number}`, level, text, details: "", actions: [] }] });
  }

  function dismiss({ id }) {
    if (String(id).startsWith("page-")) change({ told: state.told.filter((each) => each.id !== id) });
    else desk.act(`notices/${id}/dismiss`);
  }

  // Some lead on to another place of the page.
  const after = { check: () => change({ tab: "check" }) };

  const make = (notice) => {
    const actions = h("span", { class: "actions" });
    const details = h("details", {}, h("summary", { text: "Details" }), h("pre"));
    const close = h(
      "button",
      { type: "button", class: "quiet square", "aria-label": "Put this notice away" },
      icon("close"),
    );
    close.addEventListener("click", () => dismiss(notice));
    say(notice.text, notice.level === "error");
    return h(
      "div",
      { class: "notice" },
      icon(notice.level === "info" ? "check" : "warning"),
      h("span", { class: "text" }),
      actions,
      details,
      close,
    );
  };

  function drawNotices() {
    const all = [...(state.notices ?? []), ...state.told].reverse();
    fill(
      list,
      all,
      ({ id }) => id,
      make,
      (line, notice) => {
        const [, text, actions, details] = line.children;
        set(line, { "data-level": notice.level });
        set(text, { text: notice.text });
        set(details, { hidden: !notice.details });
        set(details.lastElementChild, { text: notice.details ?? "" });
        fill(
          actions,
          notice.actions ?? [],
          ({ id }) => id,
          (action) =>
            h("button", {
              type: "button",
              class: "outlined",
              onclick: async () => (await desk.act(`notices/${notice.id}/${action.id}`)) && after[action.id]?.(),
            }),
          (button, { caption }) => set(button, { text: caption }),
        );
      },
    );
  }

  // A job is shown once it has lasted a moment.
  const seen = new Map();
  function drawJobs() {
    const now = performance.now();
    const running = state.jobs ?? [];
    for (const id of seen.keys()) if (!running.some((job) => job.id === id)) seen.delete(id);
    for (const { id, seconds } of running) if (!seen.has(id)) seen.set(id, now - (seconds ?? 0) * 1000);
    const shown = running.filter(({ id }) => now - seen.get(id) >= slow);
    if (shown.length < running.length) setTimeout(drawJobs, slow);
    fill(
      jobs,
      shown,
      ({ id }) => id,
      ({ id }) => {
        const cancel = h(
          "button",
          { type: "button", class: "outlined", onclick: () => desk.act(`jobs/${id}/cancel`) },
          "Cancel",
        );
        return h(
          "div",
          { class: "job" },
          h("progress"),
          h("span", { class: "text" }),
          h("span", { class: "elapsed" }),
          cancel,
        );
      },
      (line, job) => {
        const [bar, text, elapsed, cancel] = line.children;
        set(bar, { max: job.maximum || null, "aria-label": job.caption });
        if (job.maximum > 0) bar.value = job.step;
        else bar.removeAttribute("value");
        set(text, { text: job.caption });
        const spent = Math.max(job.seconds ?? 0, (now - seen.get(job.id)) / 1000);
        set(elapsed, {
          text: spent < 1 ? "" : job.deadline ? `${time(spent)}, gives up at ${time(job.deadline)}` : time(spent),
        });
        set(cancel, { hidden: !job.canCancel });
      },
    );
  }
  setInterval(() => (state.jobs?.length ?? 0) > 0 && drawJobs(), 1000);

  function drawLost() {
    set(lost, { hidden: !state.lost });
    if (!state.lost) return;
    const since = new Date(state.lost).toLocaleTimeString([], { hour: "2-digit", minute: "2-digit" });
    set(lost.lastElementChild, {
      text: `The desk does not answer since ${since}. What stands here stays, and goes on when it is back.`,
    });
  }

  watch(["notices", "told"], drawNotices);
  watch(["jobs"], drawJobs);
  watch(["lost"], () => {
    drawLost();
    if (state.lost) say("The desk does not answer.", true);
  });
  place(region, lost, jobs, list);
  return { tell, say };
}
