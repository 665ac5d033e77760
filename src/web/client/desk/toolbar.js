// The commands at the top: what one does all the time stands there, the rest in a menu.

import { commandOf, systemItems } from "./bars.js";
import { enable, h, isUsable, rove, set, withoutKey } from "./dom.js";
import { icon } from "./icons.js";

// Commands of the system that stand beside the program's own.
const onBar = ["cbrFillWithRows", "cbrLinkByNames", "cbrUnlink"];
const previews = [
  ["today", "today’s data"],
  ["none", "no rows"],
  ["longest", "longest texts"],
];

export function createToolbar(desk) {
  const { state, watch } = desk;
  const bar = document.getElementById("toolbar");
  const button = (className, run, ...inside) => {
    const element = h("button", { type: "button", class: className }, inside);
    element.addEventListener("click", () => isUsable(element) && run());
    return element;
  };

  const name = h("h1");
  const unsaved = h("span", { class: "unsaved" });
  const save = button("primary", () => desk.command("save"), "Save");
  const undoText = h("span");
  const undo = button("quiet", () => desk.command("undo"), icon("undo"), undoText);
  const redo = button("quiet square", () => desk.command("redo"), icon("redo"));
  const commands = onBar.map((id) => {
    const element = set(
      button("quiet", () => desk.press(id)),
      { "data-id": id },
    );
    return { id, element };
  });
  const display = h("select", {
    "aria-label": "Display type",
    title: "What linked shapes show here; it is one for all windows.",
  });
  display.addEventListener("change", () => desk.press("cmbDisplayType", display.selectedIndex + 1));
  const preview = h(
    "select",
    { "aria-label": "Preview with" },
    previews.map(([value, text]) => h("option", { value, text })),
  );
  preview.addEventListener("change", () => desk.act("preview", { with: preview.value }));
  const count = h("span", { class: "count" });
  const check = button("quiet", () => desk.check(), icon("check"), "Check", count);
  const show = button("outlined", () => desk.show(), icon("show"), "Show");
  const more = button(
    "quiet square",
    () => desk.openMenu({ label: "More commands", items: moreItems(), anchor: more }),
    icon("more"),
  );
  set(more, { "aria-label": "More commands", title: "More commands", "aria-haspopup": "menu" });

  bar.append(
    h("div", { class: "deck" }, name, unsaved),
    save,
    undo,
    redo,
    h("span", { class: "line" }),
    ...commands.map(({ element }) => element),
    h("span", { class: "space" }),
    h("label", { class: "chooser" }, h("span", { text: "Shows", "aria-hidden": "true" }), display),
    h("label", { class: "chooser" }, h("span", { text: "With", "aria-hidden": "true" }), preview),
    check,
    show,
    more,
  );

  function moreItems() {
    return [
      { text: "Search for a command…", keys: "Ctrl+K", run: () => desk.search() },
      ...systemItems(desk, new Set([...onBar, "cmbDisplayType"])),
      { text: "Download the deck as it was saved", group: true, run: () => desk.deckFile.download() },
      { text: "Upload a newer version of the deck…", run: () => desk.deckFile.upload() },
      { text: "Keys", keys: "?", group: true, run: () => desk.showKeys() },
    ];
  }

  function draw() {
    const { deck, commands: own = {} } = state;
    if (!deck) return;
    set(name, { text: deck.name, title: deck.folder });
    const isDirty = deck.unsaved > 0;
    set(unsaved, {
      text: deck.isReadOnly
        ? "read-only"
        : isDirty
          ? `${deck.unsaved} unsaved ${deck.unsaved === 1 ? "change" : "changes"}`
          : "saved",
      title: deck.isReadOnly || null,
    });
    document.title = `${isDirty ? "• " : ""}${deck.name} – Lumenfold`;
    const able = (element, key, text) => {
      const { enabled = true, reason = "" } = own[key] ?? {};
      enable(element, enabled, reason);
      if (enabled) set(element, { title: text });
    };
    set(save, { class: isDirty ? "primary" : "outlined" });
    able(save, "save", "Save (Ctrl+S)");
    set(undoText, { text: deck.undo ? `Undo: ${deck.undo}` : "Undo" });
    able(undo, "undo", `${deck.undo ? `Undo: ${deck.undo}` : "Undo"} (Ctrl+Z)`);
    set(redo, { "aria-label": deck.redo ? `Redo: ${deck.redo}` : "Redo" });
    able(redo, "redo", `${deck.redo ? `Redo: ${deck.redo}` : "Redo"} (Ctrl+Y)`);
    able(check, "check", "Look the deck over (F7)");
    able(show, "show", "Show the deck as it was saved");
    set(count, { text: own.check?.count || "", hidden: !own.check?.count });
  }

  function drawCommands() {
    for (const { id, element } of commands) {
      const control = commandOf(state, id);
      set(element, { hidden: !control, text: withoutKey(control?.caption ?? "").replace(/…$/, "") });
      if (control) enable(element, control.enabled, control.tip);
    }
    const list = commandOf(state, "cmbDisplayType");
    set(display.parentElement, { hidden: !list });
    if (list) {
      if (display.options.length !== list.items.length)
        display.replaceChildren(...list.items.map((text) => h("option", { text })));
      display.selectedIndex = (list.selected || state.displayType || 1) - 1;
      set(display, { disabled: !list.enabled });
    }
  }

  // One of them is in the tab order, and the arrows lead to the others.
  const members = () => [...bar.querySelectorAll("button, select")].filter((each) => each.offsetParent);
  bar.addEventListener("focusin", (event) => rove(members(), event.target));
  bar.addEventListener("keydown", (event) => {
    const step = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
    if (!step) return;
    event.preventDefault();
    const all = members();
    all[(all.indexOf(document.activeElement) + step + all.length) % all.length]?.focus();
  });

  watch(["deck", "commands"], draw);
  watch(["bars"], drawCommands);
  watch(["preview"], () => (preview.value = state.preview));
  watch(["deck"], () => bar.querySelector("[tabindex='0']") || rove(members(), save));
  return { focus: () => (bar.querySelector("[tabindex='0']") ?? save).focus() };
}
