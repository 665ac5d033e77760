// Lists in forms.

import { fill, freshId, h, rove, set } from "./dom.js";

// A list with or without columns, of which one or several lines are chosen. Where several may be, each line
// has a tick.
export function createList(name, { session }) {
  const id = freshId(name);
  const headers = h("div", { class: "line headers", "aria-hidden": "true" });
  const list = h("div", { class: "lines", role: "listbox", id, tabindex: "-1" });
  const hint = h("p", { class: "hint" });
  const problem = h("p", { class: "problem" });
  const element = h("div", { class: "control list" }, h("div", { class: "scroller" }, headers, list), hint, problem);
  let at = 0;

  const { IsMulti = false } = session.form.controls[name];
  set(list, { "aria-multiselectable": IsMulti ? "true" : null });
  const chosen = () => session.get(name, "Selected") ?? [];

  function choose(place, event) {
    at = place;
    if (!IsMulti) return session.raise(name, "change", [place]);
    const all = new Set(chosen());
    if (event?.shiftKey && lastChosen >= 0) {
      for (let i = Math.min(lastChosen, place); i <= Math.max(lastChosen, place); ++i) all.add(i);
    } else if (!all.delete(place)) all.add(place);
    lastChosen = place;
    session.raise(
      name,
      "change",
      [...all].sort((a, b) => a - b),
    );
  }
  let lastChosen = -1;

  list.addEventListener("click", (event) => {
    const line = event.target.closest("[role=option]");
    if (line) choose(Number(line.dataset.place), event);
  });
  list.addEventListener("dblclick", () => session.raise(name, "dblclick"));
  list.addEventListener("keydown", (event) => {
    const step = { ArrowDown: 1, ArrowUp: -1, Home: -1e9, End: 1e9 }[event.key];
    if (step) {
      at = Math.max(0, Math.min(list.children.length - 1, at + step));
      list.children[at]?.focus();
      if (!IsMulti) choose(at);
    } else if (event.key === " ") choose(at, event);
    else if (event.key === "Enter") session.raise(name, "dblclick");
    else return;
    event.preventDefault();
    event.stopPropagation();
  });

  const cellsOf = ({ text, note, cells = [] }) => [text, ...cells, ...(cells.length === 0 && note ? [note] : [])];
  const line = (item) =>
    h(
      "div",
      { class: "line", role: "option" },
      IsMulti ? h("i", { class: "box", "aria-hidden": "true" }) : null,
      cellsOf(item).map(() => h("span")),
    );

  return {
    element,
    isField: true,
    draw({ Items = [], Columns = [], Visible, Enabled, Hint = "", Problem = "" }) {
      const columns = Math.max(Columns.length, 1);
      element.style.setProperty("--columns", columns);
      set(element, { hidden: !Visible, "data-multi": IsMulti, "data-columns": Columns.length > 0 });
      set(list, {
        "aria-disabled": Enabled ? null : "true",
        "aria-label": list.getAttribute("aria-labelledby") ? null : Columns[0]?.text || "List",
      });
      set(headers, { hidden: Columns.length === 0 });
      fill(
        headers,
        [...(IsMulti ? [{ text: "" }] : []), ...Columns],
        (_, i) => i,
        () => h("span"),
        (span, { text }) => set(span, { text }),
      );
      const all = new Set(chosen());
      fill(
        list,
        Items,
        (item, i) => `${i} ${cellsOf(item).length}`,
        line,
        (element, item, i) => {
          set(element, {
            "data-place": i,
            "aria-selected": String(all.has(i)),
            "aria-disabled": item.enabled === false ? "true" : null,
            title: item.cells?.length > 0 ? item.note || null : null,
          });
          const spans = [...element.children].slice(IsMulti ? 1 : 0);
          cellsOf(item).forEach((text, place) => set(spans[place], { text }));
        },
      );
      at = Math.min(at, Math.max(0, Items.length - 1));
      rove(list.children, list.children[at]);
      set(hint, { text: Items.length === 0 ? Hint || "Nothing yet." : Hint, hidden: Items.length > 0 && !Hint });
      set(problem, { text: Problem, hidden: !Problem });
    },
    focus: () => list.children[at]?.focus(),
  };
}
