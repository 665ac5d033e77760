// Whether the slide would be seen now, and why, below it.

import { fill, h, set } from "./dom.js";

export function createWhy({ state, watch }, main) {
  const dot = h("span", { class: "dot", "aria-hidden": "true" });
  const text = h("span", { class: "text" });
  const sample = h("strong", { class: "sample", text: "Sample data, not saved" });
  const list = h("ul");
  const more = h("div", { class: "reasons floating", popover: "auto", id: "reasons" }, h("h3"), list);
  const button = h("button", { type: "button", class: "link", popovertarget: "reasons" }, "Why?");
  const element = h("div", { class: "why floating" }, dot, text, sample, button, more);
  main.append(element);

  more.addEventListener("beforetoggle", () => {
    const box = element.getBoundingClientRect();
    more.style.left = `${box.left}px`;
    more.style.bottom = `${innerHeight - box.top + 6}px`;
  });

  watch(["slide", "connections"], () => {
    const { slide } = state;
    set(element, { hidden: !slide });
    if (!slide) return;
    const why = slide.why ?? [];
    const samples = (state.connections ?? []).filter(({ isSample }) => isSample).map(({ number }) => number);
    set(sample, { hidden: !slide.shapes.some(({ link }) => samples.includes(link?.connection)) });
    const full = why.filter(({ ok }) => ok).length;
    const shows =
      why.length === 0
        ? "it has no links"
        : `${full} of ${why.length} ${why.length === 1 ? "connection has" : "connections have"} rows`;
    set(element, { "data-hides": Boolean(slide.hides) });
    set(text, {
      text: slide.hides ? `Slide ${slide.index} hides: ${slide.hides}` : `Slide ${slide.index} shows: ${shows}`,
    });
    set(button, {
      hidden: why.length === 0,
      "aria-label": slide.hides ? "Why is this slide hidden?" : "Why does this slide show?",
    });
    set(more.firstElementChild, { text: slide.hides ? "Why this slide is hidden" : "Why this slide shows" });
    fill(
      list,
      why,
      ({ connection }) => connection,
      () => h("li", {}, h("span", { class: "dot" }), h("span"), h("small")),
      (line, each) => {
        set(line, { "data-ok": Boolean(each.ok) });
        set(line.children[1], { text: `${each.connection} ${each.description}` });
        set(line.children[2], { text: each.rows === 1 ? "1 row" : `${each.rows} rows` });
      },
    );
  });
}
