// Selecting on the slide: by click, by a rectangle that is drawn, by keys.

import { set } from "./dom.js";
import { bounds, isInside, nearest, pileAt, touches } from "./geometry.js";
import { shapesInReach } from "./frames.js";
import { shapeOf, takesColumn } from "./store.js";

const dragging = 4; // px from which on a press is a drag
const directions = { ArrowLeft: "left", ArrowRight: "right", ArrowUp: "up", ArrowDown: "down" };

export function createPicking(desk, stage, frames) {
  const { state, selection } = desk;
  const { viewport, overlay } = stage;
  let press = null;
  let isLeaving = false; // Esc, and the next Tab leads on to what follows the slide

  const pile = (point) => pileAt(shapesInReach(state), point, 2 / stage.scale());
  const isAdding = (event) => event.shiftKey || event.ctrlKey || event.metaKey;

  // A group is selected first, then the part of it that lies there; what is selected already gives way to
  // what lies beneath.
  function choiceAt(point) {
    const here = pile(point);
    const [only] = state.chosen.shapes;
    const at = state.chosen.shapes.length === 1 ? here.findIndex(({ id }) => id === only) : -1;
    if (at < 0) return here[0];
    const part = here[at].group ? null : partAt(only, point);
    return part ?? here[(at + 1) % here.length];
  }

  function partAt(group, point) {
    const parts = state.slide.shapes.filter((shape) => shape.group === group);
    return pileAt(parts, point)[0];
  }

  function click(event, point) {
    if (isAdding(event)) {
      const top = pile(point)[0];
      if (top) selection.toggle(top.id);
      return;
    }
    const found = choiceAt(point);
    selection.shapes(found ? [found.id] : []);
  }

  function drawMarquee(event) {
    const to = stage.pointOf(event);
    const box = {
      left: Math.min(press.from.x, to.x),
      top: Math.min(press.from.y, to.y),
      right: Math.max(press.from.x, to.x),
      bottom: Math.max(press.from.y, to.y),
    };
    const { style } = frames.hint;
    for (const [name, value] of [
      ["--x", box.left],
      ["--y", box.top],
      ["--w", box.right - box.left],
      ["--h", box.bottom - box.top],
    ]) {
      style.setProperty(name, value);
    }
    const takes = event.altKey ? touches : isInside;
    const taken = shapesInReach(state).filter((shape) => !shape.group && takes(bounds(shape), box));
    // What cannot be linked is no part of what one means by a rectangle, unless there is nothing else.
    const linkable = taken.filter((shape) => !shape.whyNot || shape.link);
    const ids = (linkable.length > 0 ? linkable : taken).map(({ id }) => id);
    return isAdding(event) ? [...press.before, ...ids] : ids;
  }

  viewport.addEventListener("pointerdown", (event) => {
    if (event.button !== 0 || !state.slide || (event.target === viewport && event.offsetX > viewport.clientWidth))
      return;
    frames.list.focus({ preventScroll: true });
    event.preventDefault();
    isLeaving = false;
    press = {
      id: event.pointerId,
      from: stage.pointOf(event),
      at: event,
      before: state.chosen.shapes,
      isMarquee: false,
    };
    if (!state.held) viewport.setPointerCapture(event.pointerId);
  });

  viewport.addEventListener("pointermove", (event) => {
    if (!press || event.pointerId !== press.id || state.held) return hover(event);
    const far = Math.hypot(event.clientX - press.at.clientX, event.clientY - press.at.clientY);
    if (!press.isMarquee && far < dragging) return;
    press.isMarquee = true;
    frames.hint.hidden = false;
    const ids = drawMarquee(event);
    desk.change({ lit: { shapes: ids, cells: [] } });
  });

  viewport.addEventListener("pointerup", (event) => {
    if (!press || event.pointerId !== press.id) return;
    const { isMarquee, from } = press;
    if (isMarquee) {
      selection.shapes(drawMarquee(event));
      desk.change({ lit: { shapes: [], cells: [] } });
    } else if (state.held) {
      const target = targetAt(event);
      if (target) desk.linking.put(target);
    } else click(event, from);
    end();
  });
  viewport.addEventListener("pointercancel", end);

  function end() {
    press = null;
    set(frames.hint, { hidden: true });
  }

  function targetAt(event) {
    return pile(stage.pointOf(event)).find(takesColumn) ?? null;
  }

  // Also while something is dragged from the data, when the pointer's events come from there.
  function hover(event) {
    const top = pile(stage.pointOf(event))[0];
    if (state.held) desk.linking.aim(targetAt(event));
    const id = top?.id ?? 0;
    if (state.lit.shapes.length !== (id ? 1 : 0) || state.lit.shapes[0] !== (id || undefined)) {
      desk.change({ lit: { shapes: id ? [id] : [], cells: top ? cellsOf(top) : [] } });
    }
  }
  const cellsOf = ({ link }) =>
    link?.type === "field" || link?.type === "object" ? [`${link.connection}/${link.column}/${link.row}`] : [];
  viewport.addEventListener("pointerleave", () => desk.change({ lit: { shapes: [], cells: [] } }));

  viewport.addEventListener("dblclick", () => state.chosen.shapes.length > 0 && desk.goTo("properties"));

  function walk(event, next) {
    if (!next) return false;
    event.preventDefault();
    if (event.shiftKey && event.key !== "Tab") selection.shapes([...state.chosen.shapes, next.id]);
    else selection.shapes([next.id]);
    frames.reveal(next.id);
    if (state.held) desk.linking.aim(takesColumn(next) ? next : null);
    return true;
  }

  frames.list.addEventListener("keydown", (event) => {
    const shapes = frames.inOrder();
    const current = shapeOf(state, state.chosen.shapes.at(-1));
    const direction = !event.ctrlKey && !event.altKey && directions[event.key];
    if (direction) {
      walk(event, current ? nearest(shapes, current, direction) : shapes[0]);
      event.preventDefault();
    } else if (event.key === "Tab" && !isLeaving) {
      const at = shapes.findIndex(({ id }) => id === current?.id);
      if (at < 0) walk(event, event.shiftKey ? null : shapes[0]);
      else walk(event, shapes[at + (event.shiftKey ? -1 : 1)]);
    } else if (event.key === "Home" || event.key === "End") {
      walk(event, event.key === "Home" ? shapes[0] : shapes.at(-1));
    } else if (event.key === "Escape") {
      if (state.held) desk.linking.drop();
      else {
        selection.shapes([]);
        isLeaving = true;
      }
    } else if (event.key === "Enter" || event.key === "F2") {
      event.preventDefault();
      if (state.held && current) desk.linking.put(current);
      else if (current) desk.goTo("properties");
    } else if (event.key === "a" && (event.ctrlKey || event.metaKey)) {
      event.preventDefault();
      const linkable = shapes.filter(({ whyNot, group }) => !whyNot && !group);
      selection.shapes(linkable.map(({ id }) => id));
    }
  });
  frames.list.addEventListener("focus", () => (isLeaving = false));

  return {
    hover,
    targetAt,
    pileAt: (event) => pile(stage.pointOf(event)),
    isOver: (event) =>
      overlay.isConnected && document.elementFromPoint(event.clientX, event.clientY)?.closest(".viewport") === viewport,
  };
}
