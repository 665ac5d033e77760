// What the last check found, slide by slide, with what mends it.

import { h, place } from "./dom.js";
import { icon } from "./icons.js";

const gravities = { broken: "Broken", different: "Different", note: "Note" };

// What is missing, and where another is chosen.
const atFault = { connection: "cmbConnection", column: "cmbColumn" };

export function createFindings(desk) {
  const { state, watch } = desk;
  const element = h("div", { class: "findings" });

  function goTo({ slide, shape, missing }) {
    if (!slide) return;
    desk.selection.on(slide, shape ? [shape] : []);
    desk.goTo(shape ? "properties" : "stage");
    if (shape) desk.properties.focus(atFault[missing]);
  }

  function repairFor({ id, caption, choices, count }) {
    const choice =
      choices?.length > 0
        ? h(
            "select",
            { "aria-label": caption },
            choices.map((each) => h("option", { text: each, value: each })),
          )
        : null;
    const run = h(
      "button",
      { type: "button", class: "outlined", onclick: () => desk.act(`repairs/${id}`, { choice: choice?.value ?? "" }) },
      choice ? `Repair ${count}` : caption,
    );
    return h("span", { class: "repair" }, choice ? h("span", { text: caption }) : null, choice, run);
  }

  // What mends several findings is offered with the first of them.
  const offered = new Set();
  function isOffered(repair) {
    if (!repair || offered.has(repair.caption)) return false;
    offered.add(repair.caption);
    return true;
  }

  function lineFor(finding) {
    const shape = finding.slide === state.slide?.id && state.slide.shapes.find(({ id }) => id === finding.shape);
    const text = h("span", { class: "text", text: finding.text });
    const what = finding.slide
      ? h("button", { type: "button", class: "where", onclick: () => goTo(finding) }, text)
      : text;
    return h(
      "li",
      { "data-gravity": finding.gravity },
      icon(finding.gravity === "broken" ? "warning" : "check"),
      h("span", { class: "gravity", text: gravities[finding.gravity] }),
      what,
      shape ? h("span", { class: "shape", text: shape.name }) : null,
      isOffered(finding.repair) ? repairFor(finding.repair) : null,
    );
  }

  let drawn = "";
  watch(["findings", "slides", "slide"], () => {
    const { findings } = state;
    const text = JSON.stringify([findings, state.slide?.id]);
    if (!findings || text === drawn) return;
    drawn = text;
    offered.clear();
    if (findings.length === 0)
      return place(element, h("p", { class: "note", text: "All links, data and texts are well." }));
    const groups = new Map();
    for (const finding of findings) groups.set(finding.slide, [...(groups.get(finding.slide) ?? []), finding]);
    const named = (id) => {
      const index = state.slides?.find((slide) => slide.id === id)?.index;
      return index ? `Slide ${index}` : "The deck";
    };
    place(
      element,
      [...groups].map(([slide, list]) =>
        h("section", {}, h("h3", { text: named(slide) }), h("ul", {}, list.map(lineFor))),
      ),
    );
  });
  return { element };
}
