// What stands at the bottom of a deck without data: what to do first, and the files that lie beside the deck.

import { fill, h } from "./dom.js";
import { icon } from "./icons.js";

const kinds = [
  { kind: "text", text: "Text file…" },
  { kind: "database", text: "Database…" },
  { kind: "workbook", text: "Worksheet…" },
];
const icons = { text: "file", database: "database", workbook: "table" };

const connect = (desk, kind, path) => desk.act("connect", path ? { kind, path } : { kind });

// The same as a menu.
export function connectItems(desk) {
  const nearby = (desk.state.nearby ?? []).slice(0, 12);
  return [
    ...nearby.map(({ path, kind, note }) => ({ text: path, keys: note, run: () => connect(desk, kind, path) })),
    ...kinds.map(({ kind, text }, i) => ({
      text,
      group: i === 0 && nearby.length > 0,
      run: () => connect(desk, kind),
    })),
  ];
}

const step = (number, text) => h("li", {}, h("b", { text: number, "aria-hidden": "true" }), text);

export function createStart(desk) {
  const { state, watch } = desk;
  const files = h("div", { class: "files" });
  const lead = h("p", { class: "lead" });
  const others = h(
    "p",
    { class: "others" },
    kinds.map(({ kind, text }) =>
      h("button", { type: "button", class: "outlined", onclick: () => connect(desk, kind) }, icon(icons[kind]), text),
    ),
  );
  others.append(
    h("button", { type: "button", class: "link", onclick: () => desk.act("sample", {}) }, "Try with sample data"),
  );
  const element = h(
    "div",
    { class: "start" },
    h("ol", { class: "order" }, step(1, "Choose data"), step(2, "Put a column on a shape"), step(3, "Save")),
    lead,
    files,
    others,
  );

  const make = ({ path, kind, note }) =>
    h(
      "button",
      { type: "button", class: "file", onclick: () => connect(desk, kind, path) },
      icon(icons[kind]),
      h("span", {}, h("strong", { text: path }), h("small", { text: note })),
    );

  watch(["nearby", "deck"], () => {
    const nearby = state.nearby ?? [];
    lead.textContent = nearby.length > 0 ? "Beside this deck:" : "No data lies beside this deck. Where is it?";
    fill(files, nearby, ({ path, note }) => `${path}\n${note}`, make);
  });
  return { element };
}
