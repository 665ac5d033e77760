// A column or a cell on its way to shapes: dragged there, or held after a click or Enter until a shape is clicked.
// While it is held, the page knows {connection, column, row or null, values, targets: [{id, text}], isDragged}.

import { h } from "./dom.js";
import { inReadingOrder } from "./geometry.js";
import { shapeOf, takesColumn } from "./store.js";

const dragging = 5; // px from which on a press is a drag

export function createLinking(desk) {
  const { state, change, act, say, watch } = desk;
  const chip = h("div", { class: "chip", hidden: true, "aria-hidden": "true" });
  document.body.append(chip);

  // What the shapes show once it is put down on one of them: all that are selected, when it is one of those.
  function targetsFor(shape) {
    if (!shape) return [];
    const { shapes } = state.chosen;
    const several = shapes.length > 1 && shapes.includes(shape.id);
    const all = several
      ? inReadingOrder(shapes.map((id) => shapeOf(state, id)).filter((each) => each && takesColumn(each)))
      : [shape];
    const first = state.held.row ?? firstRow();
    return all.map(({ id }, i) => ({ id, row: first + i, text: state.held.valueAt(first + i) }));
  }

  const firstRow = () => (state.cursor?.connection === state.held.connection && state.cursor.row) || 1;

  function label() {
    const { column, targets } = state.held;
    const rows = targets.map(({ row }) => row);
    if (rows.length === 0) return column;
    if (rows.length === 1) return `${column} ⟶ row ${rows[0]}`;
    return `${column} ⟶ rows ${rows.slice(0, 3).join(", ")}${rows.length > 3 ? " …" : ""}`;
  }

  watch(["held"], () => {
    chip.hidden = !state.held;
    if (state.held) chip.textContent = label();
  });
  addEventListener("pointermove", (event) => {
    if (!state.held) return;
    chip.style.translate = `${Math.min(event.clientX + 14, innerWidth - chip.offsetWidth - 8)}px ${Math.min(event.clientY + 12, innerHeight - 40)}px`;
  });

  // Takes hold of a column, or of a cell with its row. `valueAt` tells the text of a row.
  function hold(what, isDragged = false) {
    change({ held: { ...what, targets: [], isDragged } });
    if (!isDragged)
      say(`${what.column}${what.row ? `, row ${what.row}` : ""} in hand. Choose a shape and press Enter, or click it.`);
  }

  function drop() {
    if (state.held) change({ held: null });
  }

  function aim(shape) {
    const targets = targetsFor(shape);
    const isSame =
      targets.length === state.held.targets.length && targets.every(({ id }, i) => id === state.held.targets[i].id);
    if (!isSame) change({ held: { ...state.held, targets } });
  }

  async function link({ connection, column, row }, shapes) {
    const slide = state.chosen.slide;
    return act("link", { connection, column, row: row ?? null, shapes, slide, countUp: shapes.length > 1 });
  }

  // Puts what is held on a shape, and on all others selected with it.
  async function put(shape) {
    const { held } = state;
    if (!takesColumn(shape))
      return desk.tell(`'${shape.name}' cannot be linked: ${shape.whyNot || "it takes no column."}`);
    const ids = targetsFor(shape).map(({ id }) => id);
    drop();
    if (ids.length === 1) desk.selection.shapes(ids);
    await link(held, ids);
  }

  // Follows a press on a header or a cell: a drag takes it along, and puts it down where it ends; otherwise
  // `clicked` is told.
  function follow(event, what, clicked) {
    if (event.button !== 0) return;
    const source = event.currentTarget;
    const start = event;
    source.setPointerCapture(event.pointerId);
    const stop = new AbortController();
    const listen = (name, handler) => source.addEventListener(name, handler, { signal: stop.signal });
    const end = () => stop.abort();
    listen("pointermove", (moved) => {
      if (!state.held?.isDragged) {
        if (Math.hypot(moved.clientX - start.clientX, moved.clientY - start.clientY) < dragging) return;
        hold(what, true);
      }
      if (desk.picking.isOver(moved)) desk.picking.hover(moved);
      else aim(null);
    });
    listen("pointerup", (up) => {
      end();
      if (!state.held?.isDragged) return clicked();
      const target = desk.picking.isOver(up) && desk.picking.targetAt(up);
      if (target) put(target);
      else drop();
    });
    listen("pointercancel", () => {
      end();
      drop();
    });
    listen("keydown", (key) => {
      if (key.key !== "Escape") return;
      end();
      drop();
    });
  }

  // The selected shapes that take a column, in the order in which rows are counted up.
  const chosenTargets = () =>
    inReadingOrder(state.chosen.shapes.map((id) => shapeOf(state, id)).filter((each) => each && takesColumn(each)));

  return {
    hold,
    drop,
    aim,
    put,
    follow,
    chosenTargets,
    toSelection: (what) => {
      drop();
      return link(
        what,
        chosenTargets().map(({ id }) => id),
      );
    },
    fillFrom: (what) =>
      act("fill", {
        shapes: chosenTargets().map(({ id }) => id),
        slide: state.chosen.slide,
        connection: what.connection,
        columns: [what.column],
        row: what.row ?? 1,
        step: 1,
      }),
  };
}
