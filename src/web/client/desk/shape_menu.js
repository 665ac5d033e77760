// What can be done with the selected shapes, in a menu where they are.

import { barNamed, menuItems } from "./bars.js";
import { ask } from "./dialogs.js";
import { h } from "./dom.js";
import { shapeOf } from "./store.js";

export function createShapeMenu(desk) {
  const { state, selection, act } = desk;

  async function rename(shape) {
    const input = h("input", { type: "text", "aria-label": "New name", value: shape.name });
    const name = await ask({
      caption: `Rename ${shape.name}`,
      text: shape.isDouble ? "Two shapes of this slide have this name; links need names of their own." : "",
      body: input,
      buttons: [
        { caption: "Rename", value: () => input.value, isPrimary: true },
        { caption: "Cancel", value: null },
      ],
    });
    if (name !== null && name !== shape.name) act("rename", { slide: state.chosen.slide, shape: shape.id, name });
  }

  function items(pile) {
    const chosen = state.chosen.shapes.map((id) => shapeOf(state, id)).filter(Boolean);
    const all = menuItems(desk, barNamed(state, chosen.length > 0 ? "Shapes" : "Slides")?.controls);
    if (pile.length > 1) {
      const under = pile.map((shape) => ({
        text: shape.name.replaceAll("&", "&&"),
        checked: state.chosen.shapes.includes(shape.id),
        isRadio: true,
        run: () => selection.shapes([shape.id]),
      }));
      all.push({ text: "Select under the pointer", group: true, items: under });
    }
    if (chosen.length === 1)
      all.push({ text: "Rename the shape…", group: pile.length <= 1, run: () => rename(chosen[0]) });
    return all;
  }

  // At the pointer; from the keyboard at the shape itself.
  function open(event, anchor = null) {
    const point = event?.clientX ? { x: event.clientX, y: event.clientY } : null;
    const box = desk.frames.boxOf(state.chosen.shapes.at(-1));
    const here = anchor ?? desk.frames.list;
    const place = point ?? (anchor || !box ? null : { x: box.left, y: box.bottom + 4 });
    const pile = point && !anchor ? desk.picking.pileAt(event) : [];
    desk.openMenu({ label: "Shapes", items: items(pile), anchor: here, point: place });
  }

  // What can be done is known once the server has heard of the selection.
  desk.stage.viewport.addEventListener("contextmenu", async (event) => {
    event.preventDefault();
    const [top] = desk.picking.pileAt(event);
    const isChosen = desk.picking.pileAt(event).some(({ id }) => state.chosen.shapes.includes(id));
    if (!isChosen) await selection.shapes(top ? [top.id] : []);
    open(event);
  });
  return { open };
}
