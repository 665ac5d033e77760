// The keys of the whole page, and the page that lists them.

import { commandOf } from "./bars.js";
import { h } from "./dom.js";
import { ask } from "./dialogs.js";

const table = [
  ["Ctrl+S", "Save"],
  ["Ctrl+Z, Ctrl+Y", "Undo, redo"],
  ["Ctrl+C, Ctrl+V", "Copy a link, paste it on the selected shapes"],
  ["Ctrl+Shift+V", "Paste it as the next row"],
  ["Delete", "Unlink (the shape stays)"],
  ["Alt+↑, Alt+↓", "The row before, the next row"],
  ["Ctrl+Shift+Enter", "Fill with rows"],
  ["Enter, F2", "From a shape to its properties"],
  ["Esc", "Back to the slide; select nothing"],
  ["Tab, arrow keys", "The next shape; the nearest one in that direction"],
  ["Shift+arrow keys", "Add the nearest shape to the selection"],
  ["Ctrl+A", "All shapes that can be linked"],
  ["F6, Shift+F6", "The next panel, the one before"],
  ["Alt+F10", "The list of shapes"],
  ["Page Up, Page Down", "The slide before, the next one"],
  ["Ctrl+0, Ctrl++, Ctrl+−", "Fit, larger, smaller"],
  ["F7", "Check the deck"],
  ["Ctrl+K", "Search for a command"],
  ["Enter on the data", "Link the selected shapes; or take the column in hand, and Enter on a shape puts it there"],
  ["Menu key, Shift+F10", "What can be done here"],
  ["?", "This page"],
];

export function showKeys() {
  const rows = table.map(([keys, what]) =>
    h("tr", {}, h("th", { scope: "row" }, h("kbd", { text: keys })), h("td", { text: what })),
  );
  return ask({
    caption: "Keys",
    body: h("table", { class: "keys" }, h("tbody", {}, rows)),
    buttons: [{ caption: "Close", value: null, isPrimary: true }],
    width: "wide",
  });
}

const isText = (element) => element?.matches("input:not([type=checkbox], [type=radio]), textarea, [contenteditable]");

export function listenToKeys(desk) {
  const { state, selection } = desk;
  const run = (id) => () => commandOf(state, id) && desk.press(id);
  const everywhere = {
    "Ctrl+s": () => desk.command("save"),
    F7: () => desk.check(),
    "Ctrl+k": () => desk.search(),
    F6: () => desk.nextPanel(1),
    "Shift+F6": () => desk.nextPanel(-1),
    "Alt+F10": () => desk.goTo("shapes"),
    "Ctrl+0": () => desk.stage.zoom("fit"),
    "Ctrl+=": () => desk.stage.zoomBy(1.25),
    "Ctrl++": () => desk.stage.zoomBy(1.25),
    "Ctrl+-": () => desk.stage.zoomBy(1 / 1.25),
    "Ctrl+Shift+Enter": run("cbrFillWithRows"),
  };
  // Not while text is being typed: there they are the text's own.
  const outsideOfText = {
    "Ctrl+z": () => desk.command("undo"),
    "Ctrl+y": () => desk.command("redo"),
    "Ctrl+Shift+z": () => desk.command("redo"),
    "?": () => desk.showKeys(),
    "Shift+?": () => desk.showKeys(),
    PageUp: () => selection.step(-1),
    PageDown: () => selection.step(1),
  };
  // Where shapes are chosen.
  const onShapes = {
    "Ctrl+c": run("cbrCopyLink"),
    "Ctrl+v": run("cbrPasteLink"),
    "Ctrl+Shift+c": run("cbrCopyLink"),
    "Ctrl+Shift+v": run("cbrPasteNextRow"),
    Delete: run("cbrUnlink"),
    "Alt+ArrowDown": run("cbrRowDown"),
    "Alt+ArrowUp": run("cbrRowUp"),
    "Alt+Enter": () => desk.goTo("properties"),
    ContextMenu: () => desk.openShapeMenu(),
    "Shift+F10": () => desk.openShapeMenu(),
  };

  const nameOf = ({ key, ctrlKey, metaKey, altKey, shiftKey }) => {
    const plain = key.length === 1 ? key.toLowerCase() : key;
    return `${ctrlKey || metaKey ? "Ctrl+" : ""}${altKey ? "Alt+" : ""}${shiftKey ? "Shift+" : ""}${plain}`;
  };

  addEventListener("keydown", (event) => {
    if (event.defaultPrevented || document.querySelector("dialog[open]")) return;
    const { activeElement } = document;
    const name = nameOf(event);
    const isOnShapes = activeElement?.closest("#stage, #shapes");
    const isOnSlides = activeElement?.closest("#slides");
    let action = everywhere[name];
    if (!action && !isText(activeElement)) action = (isOnShapes && onShapes[name]) || outsideOfText[name];
    if (!action && isOnSlides && (name === "ContextMenu" || name === "Shift+F10"))
      action = () => desk.slides.openContext();
    if (!action && name === "Escape") action = () => (state.held ? desk.linking.drop() : desk.goTo("stage"));
    if (!action) return;
    event.preventDefault();
    action();
  });

  // Access keys are underlined while Alt is held.
  const showAccess = (event) => document.documentElement.toggleAttribute("data-alt", event.altKey);
  addEventListener("keydown", showAccess);
  addEventListener("keyup", showAccess);
  addEventListener("blur", () => document.documentElement.removeAttribute("data-alt"));
}
