// A text field with a list of what may stand in it; any other text may as well.

import { fill, freshId, h, set } from "./dom.js";
import { icon } from "./icons.js";

export function createCombobox(id, { typed, chosen, left, opened }) {
  const listId = freshId("list");
  const input = h("input", {
    id,
    type: "text",
    role: "combobox",
    spellcheck: "false",
    "aria-autocomplete": "list",
    "aria-expanded": "false",
    "aria-controls": listId,
  });
  const toggle = h("button", { type: "button", class: "toggle", tabindex: "-1", "aria-hidden": "true" }, icon("down"));
  const list = h("ul", { id: listId, class: "choices", role: "listbox", popover: "manual", "aria-label": "Choices" });
  const note = h("span", { class: "unit" });
  const element = h("div", { class: "field combobox" }, input, note, toggle, list);

  let items = [];
  let seen = []; // of the items, those that fit what was typed
  let at = -1;
  let isFiltered = false;
  let hasNotesFirst = false;

  const isOpen = () => list.matches(":popover-open");

  function open() {
    if (isOpen() || input.readOnly) return;
    isFiltered = false;
    opened();
    list.showPopover();
    set(input, { "aria-expanded": "true" });
    at = items.findIndex(({ text }) => text === input.value);
    drawList();
  }

  function close() {
    if (!isOpen()) return;
    list.hidePopover();
    set(input, { "aria-expanded": "false", "aria-activedescendant": null });
  }

  // Below the field, or above it where there is no room below.
  function lay() {
    const box = element.getBoundingClientRect();
    const below = innerHeight - box.bottom - 8;
    const isAbove = below < Math.min(list.scrollHeight, 240) && box.top > below;
    const { style } = list;
    style.minWidth = `${box.width}px`;
    style.left = `${Math.max(8, Math.min(box.left, innerWidth - list.offsetWidth - 8))}px`;
    style.maxHeight = `${Math.min(320, isAbove ? box.top - 8 : below)}px`;
    style.top = isAbove ? "auto" : `${box.bottom + 2}px`;
    style.bottom = isAbove ? `${innerHeight - box.top + 2}px` : "auto";
  }

  function drawList() {
    const part = input.value.toLowerCase();
    seen = isFiltered && part ? items.filter(({ text }) => text.toLowerCase().includes(part)) : items;
    at = Math.min(at, seen.length - 1);
    fill(
      list,
      seen,
      ({ text }, i) => `${i} ${text}`,
      () => h("li", { role: "option", id: freshId("choice") }, h("span"), h("small")),
      (line, item, i) => {
        set(line, {
          "aria-selected": String(i === at),
          "aria-disabled": item.enabled === false ? "true" : null,
          "data-place": i,
        });
        const words = [item.text, item.note ?? ""];
        if (hasNotesFirst) words.reverse();
        [...line.children].forEach((word, place) => set(word, { text: words[place] }));
      },
    );
    set(input, { "aria-activedescendant": list.children[at]?.id ?? null });
    list.children[at]?.scrollIntoView({ block: "nearest" });
    if (seen.length === 0) close();
    else if (isOpen()) lay();
  }

  function choose(item) {
    if (!item || item.enabled === false) return;
    input.value = item.text;
    close();
    chosen(item.text);
  }

  input.addEventListener("input", () => {
    if (!isOpen()) open();
    isFiltered = true;
    at = -1;
    drawList();
    typed(input.value);
  });
  input.addEventListener("keydown", (event) => {
    if (event.key === "ArrowDown" || event.key === "ArrowUp") {
      event.preventDefault();
      if (!isOpen()) return open();
      at = (at + (event.key === "ArrowDown" ? 1 : -1) + seen.length) % seen.length;
      drawList();
    } else if (event.key === "Enter" && isOpen() && at >= 0) {
      event.preventDefault();
      choose(seen[at]);
    } else if (event.key === "Escape" && isOpen()) {
      event.preventDefault();
      event.stopPropagation();
      close();
    }
  });
  input.addEventListener("click", () => (isOpen() ? close() : open()));
  input.addEventListener("blur", () => {
    close();
    left();
  });
  // The field keeps the focus while its list is used.
  list.addEventListener("pointerdown", (event) => event.preventDefault());
  list.addEventListener("click", (event) => choose(seen[Number(event.target.closest("li")?.dataset.place)]));
  toggle.addEventListener("pointerdown", (event) => {
    event.preventDefault();
    input.focus();
    if (isOpen()) close();
    else open();
  });

  return {
    element,
    input,
    draw(fresh, text, listState, problem, areNotesFirst = false) {
      items = fresh;
      hasNotesFirst = areNotesFirst;
      if (input.value !== text) input.value = text;
      const isMissing =
        Boolean(text) && !text.startsWith("(") && items.length > 0 && !items.some((item) => item.text === text);
      set(element, {
        "data-missing": isMissing,
        "data-failed": listState === 2,
        title: listState === 2 ? problem : null,
      });
      set(input, { "aria-busy": listState === 1 ? "true" : null });
      set(note, { text: listState === 1 ? "…" : "", hidden: listState !== 1 });
      if (isOpen()) drawList();
    },
  };
}
