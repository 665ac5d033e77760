// The shapes of the slide as a list: the way to those that others cover, and why one cannot be linked.

import { linkText } from "./frames.js";
import { fill, h, set } from "./dom.js";
import { shapeOf } from "./store.js";

export function createShapes(desk) {
  const { state, watch, change, selection } = desk;
  const count = h("span", { class: "subject" });
  const list = h("div", { class: "list", role: "listbox", "aria-label": "Shapes", "aria-multiselectable": "true" });
  document.getElementById("shapes").append(h("h2", {}, h("span", { class: "name", text: "Shapes" }), count), list);
  let at = 0; // the id under the keyboard
  let from = 0; // where a range of lines begins

  const why = ({ whyNot, isDouble, isHidden }) =>
    isDouble ? `${whyNot || "two have this name"}` : whyNot || (isHidden ? "hidden in PowerPoint" : "");

  function choose(id, event) {
    const ids = state.slide.shapes.map((shape) => shape.id);
    at = id;
    if (event.shiftKey && from) {
      const [first, last] = [ids.indexOf(from), ids.indexOf(id)].sort((a, b) => a - b);
      return selection.shapes(ids.slice(Math.max(0, first), last + 1));
    }
    from = id;
    if (event.ctrlKey || event.metaKey) return selection.toggle(id);
    return selection.shapes([id]);
  }

  function make({ id }) {
    const line = h(
      "div",
      { class: "shape-of", role: "option" },
      h("span", { class: "name" }),
      h("small", { "aria-hidden": "true" }),
    );
    line.addEventListener("click", (event) => {
      line.focus();
      choose(id, event);
      if (state.held) {
        const shape = shapeOf(state, id);
        if (shape) desk.linking.put(shape);
      }
    });
    line.addEventListener("dblclick", () => desk.goTo("properties"));
    line.addEventListener("pointerenter", () => change({ lit: { shapes: [id], cells: [] } }));
    line.addEventListener("pointerleave", () => change({ lit: { shapes: [], cells: [] } }));
    line.addEventListener("contextmenu", async (event) => {
      event.preventDefault();
      if (!state.chosen.shapes.includes(id)) await selection.shapes([id]);
      desk.openShapeMenu(event, line);
    });
    return line;
  }

  function draw() {
    const shapes = state.slide?.shapes ?? [];
    const linked = shapes.filter(({ link }) => link).length;
    set(count, { text: `${shapes.length}, ${linked} linked` });
    if (!shapes.some(({ id }) => id === at)) at = shapes[0]?.id ?? 0;
    const last = state.chosen.shapes.at(-1);
    if (last) at = last;
    const lines = fill(
      list,
      shapes,
      ({ id }) => id,
      make,
      (line, shape) => {
        const [name, note] = line.children;
        set(name, { text: shape.name });
        set(note, { text: linkText(shape) || why(shape) });
        set(line, {
          "aria-selected": String(state.chosen.shapes.includes(shape.id)),
          "aria-description": [shape.kind, linkText(shape), shape.link?.message, why(shape)].filter(Boolean).join(", "),
          "data-part": Boolean(shape.group),
          "data-why-not": Boolean(shape.whyNot),
          "data-state": shape.link?.state ?? null,
          title: why(shape) || shape.link?.message || null,
          tabindex: shape.id === at ? 0 : -1,
        });
      },
    );
    if (last && last !== revealed) lines.get(last)?.scrollIntoView({ block: "nearest" });
    revealed = last;
  }
  let revealed = 0;

  list.addEventListener("keydown", (event) => {
    const step = { ArrowDown: 1, ArrowUp: -1, Home: -1e6, End: 1e6 }[event.key];
    const shapes = state.slide?.shapes ?? [];
    if (step && !event.altKey) {
      const place = shapes.findIndex(({ id }) => id === at) + step;
      const next = shapes[Math.max(0, Math.min(shapes.length - 1, place))];
      if (next) choose(next.id, event.ctrlKey ? {} : event);
      list.querySelector("[tabindex='0']")?.focus();
    } else if (event.key === " ") selection.toggle(at);
    else if (event.key === "Enter" && state.held) desk.linking.put(shapeOf(state, at));
    else if (event.key === "Enter" || event.key === "F2") desk.goTo("properties");
    else if (event.key === "Escape") desk.goTo("stage");
    else return;
    event.preventDefault();
  });

  watch(["slide", "chosen"], draw);
  return { focus: () => (list.querySelector("[tabindex='0']") ?? list).focus() };
}
