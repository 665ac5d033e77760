// One frame for each shape over the slide: where it stands, what it is linked to, whether that is well. To those
// who do not see the slide, the frames are the slide: a list of its shapes.

import { fill, h, set } from "./dom.js";
import { inReadingOrder } from "./geometry.js";
import { shapeOf, takesColumn } from "./store.js";

export function linkText({ link }) {
  if (!link) return "";
  if (link.type === "clock") return `clock · ${link.format}`;
  if (link.type === "graph") return `${link.connection} · whole`;
  return `${link.column} · ${link.row}`;
}

function description(shape, state) {
  const { link } = shape;
  const words = [shape.kind];
  if (link?.type === "clock") words.push(`a clock, ${link.format}`);
  else if (link) {
    const connection = state.connections?.find(({ number }) => number === link.connection);
    words.push(`linked to ${[link.connection, connection?.description].filter(Boolean).join(" ")}`);
    if (link.type !== "graph") words.push(`column ${link.column}, row ${link.row}`);
  } else words.push(shape.whyNot ? `cannot be linked: ${shape.whyNot}` : "not linked");
  if (shape.text.trim()) words.push(`shows ${shape.text.trim()}`);
  if (link?.message) words.push(link.message);
  return words.join(", ");
}

// Shapes that stand by themselves, and the parts of the group that has been opened.
export function shapesInReach(state) {
  const shapes = state.slide?.shapes ?? [];
  const opened = new Set(state.chosen.shapes.flatMap((id) => shapeOf(state, id)?.group || []));
  return shapes.filter(({ group, isHidden }) => !isHidden && (!group || opened.has(group)));
}

export function createFrames({ state, watch }, { overlay }) {
  const list = h("div", { class: "frames", role: "listbox", tabindex: "0", "aria-multiselectable": "true" });
  const hint = h("div", { class: "marquee", hidden: true });
  overlay.append(list, hint);
  let frames = new Map();

  const make = () =>
    h(
      "div",
      { class: "frame-of", role: "option" },
      h("span", { class: "said" }),
      h("em", { class: "badge", "aria-hidden": "true" }),
      h("span", { class: "preview", "aria-hidden": "true" }),
    );

  function draw() {
    if (!state.slide) return;
    set(list, { "aria-label": `Slide ${state.slide.index}` });
    frames = fill(
      list,
      shapesInReach(state),
      ({ id }) => id,
      make,
      (frame, shape, order) => {
        set(frame, {
          id: `shape-${shape.id}`,
          "aria-description": description(shape, state),
          "data-state": shape.link?.state ?? null,
          "data-linked": Boolean(shape.link),
          "data-why-not": Boolean(shape.whyNot),
        });
        const { style } = frame;
        style.setProperty("--x", shape.left);
        style.setProperty("--y", shape.top);
        style.setProperty("--w", shape.width);
        style.setProperty("--h", shape.height);
        style.setProperty("--turn", `${shape.rotation ?? 0}deg`);
        style.zIndex = order;
        set(frame.children[0], { text: shape.name });
        set(frame.children[1], { text: linkText(shape), hidden: !shape.link });
      },
    );
    mark();
  }

  function mark() {
    const others = new Set(
      state.others?.filter(({ slide }) => slide === state.slide?.id).flatMap(({ shapes }) => shapes),
    );
    const { held } = state;
    for (const [id, frame] of frames) {
      const isChosen = state.chosen.shapes.includes(id);
      const shape = shapeOf(state, id);
      set(frame, {
        "aria-selected": String(isChosen),
        "data-lit": state.lit.shapes.includes(id),
        "data-other": others.has(id),
        "data-takes": Boolean(held && shape && takesColumn(shape)),
        "data-target": Boolean(held?.targets?.some((target) => target.id === id)),
      });
      set(frame.lastElementChild, { text: held?.targets?.find((target) => target.id === id)?.text ?? "" });
    }
    overlay.toggleAttribute("data-held", Boolean(held));
    const active = state.chosen.shapes.at(-1);
    set(list, { "aria-activedescendant": frames.has(active) ? `shape-${active}` : null });
  }

  watch(["slide", "connections"], draw);
  watch(["chosen"], draw);
  watch(["lit", "held", "others"], mark);

  return {
    list,
    hint,
    inOrder: () => inReadingOrder(shapesInReach(state)),
    boxOf: (id) => frames.get(id)?.getBoundingClientRect(),
    reveal: (id) => frames.get(id)?.scrollIntoView({ block: "nearest", inline: "nearest" }),
  };
}
