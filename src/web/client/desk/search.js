// All commands in one list, found by words of their names (Ctrl+K). What cannot be done now says why.

import { systemItems } from "./bars.js";
import { frame } from "./dialogs.js";
import { fill, freshId, h, set, withoutKey } from "./dom.js";
import { connectItems } from "./start.js";

const most = 12;

// Entries of menus within menus stand by themselves, behind the menu's name.
const flat = (items, path = "") =>
  items.flatMap((item) => {
    const text = path + withoutKey(item.text).replace(/…$/, "");
    return item.items ? flat(item.items, `${text}: `) : [{ ...item, text }];
  });

export function createSearch(desk) {
  const { state } = desk;

  const own = (text, keys, name, run = () => desk.command(name)) => {
    const { enabled = true, reason = "" } = state.commands?.[name] ?? {};
    return { text, keys, enabled, reason, run };
  };
  const all = () => [
    own("Save", "Ctrl+S", "save"),
    own(`Undo${state.deck?.undo ? `: ${state.deck.undo}` : ""}`, "Ctrl+Z", "undo"),
    own(`Redo${state.deck?.redo ? `: ${state.deck.redo}` : ""}`, "Ctrl+Y", "redo"),
    own("Check", "F7", "check", desk.check),
    own("Show", "", "show", desk.show),
    ...flat(systemItems(desk)),
    ...flat(connectItems(desk), "Connect data: "),
    { text: "Keys", keys: "?", run: desk.showKeys },
  ];

  // Every word typed begins some word of the name.
  const fits = ({ text }, words) => {
    const parts = text.toLowerCase().split(/[^\p{L}\p{N}]+/u);
    return words.every((word) => parts.some((part) => part.startsWith(word)));
  };

  function open() {
    const id = freshId("commands");
    const input = h("input", {
      type: "text",
      role: "combobox",
      "aria-label": "Command",
      "aria-expanded": "true",
      "aria-autocomplete": "list",
      "aria-controls": id,
      autocomplete: "off",
      spellcheck: "false",
      placeholder: "What is to be done?",
    });
    const list = h("ul", { id, class: "commands", role: "listbox", "aria-label": "Commands found" });
    const { element, close } = frame("Commands", "narrow", h("div", { class: "form" }, h("div", { class: "field" }, input), list));
    const items = all();
    let found = [];
    let at = 0;

    function end() {
      element.close();
      element.remove();
    }
    function run(item) {
      if (!item || item.enabled === false) return;
      end();
      item.run();
    }
    function draw() {
      const words = input.value.toLowerCase().split(/\s+/).filter(Boolean);
      const fitting = items.filter((item) => fits(item, words));
      found = [...fitting.filter(({ enabled }) => enabled !== false), ...fitting.filter(({ enabled }) => enabled === false)];
      found = found.slice(0, most);
      at = Math.max(0, Math.min(at, found.length - 1));
      fill(
        list,
        found,
        ({ text }, i) => `${i} ${text}`,
        () => h("li", { role: "option", id: freshId("command") }, h("span"), h("small")),
        (line, { text, keys, enabled, reason }, i) => {
          set(line, {
            "aria-selected": String(i === at),
            "aria-disabled": enabled === false ? "true" : null,
            "data-place": i,
          });
          set(line.firstElementChild, { text });
          set(line.lastElementChild, { text: enabled === false ? reason : (keys ?? "") });
        },
      );
      set(input, { "aria-activedescendant": list.children[at]?.id ?? null });
    }

    input.addEventListener("input", () => {
      at = 0;
      draw();
    });
    element.addEventListener("keydown", (event) => {
      const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
      if (step && found.length > 0) {
        at = (at + step + found.length) % found.length;
        draw();
      } else if (event.key === "Enter" && event.target === input) run(found[at]);
      else return;
      event.preventDefault();
    });
    list.addEventListener("click", (event) => run(found[Number(event.target.closest("li")?.dataset.place)]));
    close.addEventListener("click", end);
    element.addEventListener("cancel", (event) => {
      event.preventDefault();
      end();
    });
    element.showModal();
    draw();
    input.focus();
  }
  return open;
}
