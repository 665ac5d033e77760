// The slides at the left, small: which have links, which have problems, which hide.

import { loadChartsFor } from "../core/chart_loader.js";
import { fillTree } from "../core/patch.js";
import { barNamed, menuItems } from "./bars.js";
import { fill, h, set } from "./dom.js";
import { stylesAddress } from "./stage.js";

const shortest = 2000; // ms between two drawings of one

function mark({ links, problems, hides, isHidden, scrolls }) {
  if (isHidden) return "hidden in PowerPoint";
  if (hides) return "hides now";
  if (problems > 0) return `⚠ ${problems}`;
  if (scrolls) return "scrolls";
  return links > 0 ? `${links} ${links === 1 ? "link" : "links"}` : "";
}

function nameOf({ index, links, problems, hides, isHidden, scrolls }, uses) {
  const words = [`Slide ${index}`, `${links} ${links === 1 ? "link" : "links"}`];
  if (problems > 0) words.push(`${problems} ${problems === 1 ? "problem" : "problems"}`);
  if (isHidden) words.push("hidden in PowerPoint");
  else if (hides) words.push("hidden now");
  if (scrolls) words.push("scrolls");
  if (uses > 0) words.push(`${uses} of what is looked for`);
  return words.join(", ");
}

export function createSlides(desk) {
  const { state, watch, selection } = desk;
  const list = h("div", { class: "list", role: "listbox", "aria-label": "Slides" });
  document.getElementById("slides").append(list);
  const pictures = new Map(); // by the slide's id

  // Small pictures are fetched when they come into sight, one after the other.
  let queue = Promise.resolve();
  const inSight = new Set();
  const watching = new IntersectionObserver(
    (entries) => {
      for (const { target, isIntersecting } of entries) {
        const id = Number(target.dataset.id);
        if (isIntersecting) inSight.add(id);
        else inSight.delete(id);
        if (isIntersecting) renew(id);
      }
    },
    { root: list.parentElement, rootMargin: "200px" },
  );

  function renew(id) {
    queue = queue.then(async () => {
      const slide = state.slides.find((each) => each.id === id);
      const picture = pictures.get(id);
      if (!slide || !picture || !inSight.has(id)) return;
      const wait = picture.at + shortest - Date.now();
      if (wait > 0) return void setTimeout(() => renew(id), wait);
      const mine = `${slide.drawn} ${slide.index} ${state.assets}${state.styles}`;
      if (picture.drawn === mine) return;
      const answer = await desk.read(`slides/${id}`, { isQuiet: true });
      if (!answer) return;
      picture.drawn = mine;
      picture.at = Date.now();
      await loadChartsFor(answer.html);
      if (!picture.sheet) {
        picture.styles = h("link", { rel: "stylesheet" });
        picture.sheet = h("div");
        picture.element.attachShadow({ mode: "open" }).append(picture.styles, picture.sheet);
      }
      set(picture.styles, { href: stylesAddress(state) });
      fillTree(picture.sheet, answer.html);
    });
  }

  function make({ id }) {
    const picture = h("div", { class: "picture", inert: true });
    pictures.set(id, { element: picture, at: 0 });
    const option = h(
      "div",
      { class: "slide-of", role: "option", "data-id": id },
      h("span", { class: "said" }),
      h("span", { class: "index", "aria-hidden": "true" }),
      h("div", { class: "sheet" }, picture),
      h("span", { class: "mark", "aria-hidden": "true" }),
    );
    option.addEventListener("click", () => {
      option.focus();
      selection.slide(id);
    });
    option.addEventListener("contextmenu", async (event) => {
      event.preventDefault();
      await selection.slide(id);
      openContext(option, event);
    });
    watching.observe(option);
    return option;
  }

  function openContext(anchor, event) {
    const point = event.clientX ? { x: event.clientX, y: event.clientY } : null;
    desk.openMenu({ label: "Slide", anchor, point, items: menuItems(desk, barNamed(state, "Slides")?.controls) });
  }

  function draw() {
    const all = fill(
      list,
      state.slides ?? [],
      ({ id }) => id,
      make,
      (option, slide) => {
        const [said, index, , note] = option.children;
        const isChosen = slide.id === state.chosen.slide;
        set(said, { text: nameOf(slide, desk.uses.countOn(slide.id)) });
        set(index, { text: slide.index });
        const uses = desk.uses.countOn(slide.id);
        const text = uses > 0 ? `◆ ${uses}` : mark(slide);
        set(note, { text, hidden: !text, "data-problem": slide.problems > 0 && uses === 0, "data-uses": uses > 0 });
        set(option, {
          "aria-description": slide.hides ? `hides: ${slide.hides}` : null,
          title: slide.hides ? `Hides: ${slide.hides}` : null,
          "aria-selected": String(isChosen),
          "data-dim": Boolean(slide.hides || slide.isHidden),
          "data-other": Boolean(state.others?.some((other) => other.slide === slide.id)),
          tabindex: isChosen ? 0 : -1,
        });
      },
    );
    for (const id of pictures.keys()) if (!all.has(id)) pictures.delete(id);
    for (const id of inSight) if (all.has(id)) renew(id);
    if (shown !== state.chosen.slide) all.get(state.chosen.slide)?.scrollIntoView({ block: "nearest" });
    shown = state.chosen.slide;
  }
  let shown = 0;

  watch(["size"], () => {
    const { width, height } = state.size;
    list.style.setProperty("--slide-width", `${width}px`);
    list.style.setProperty("--slide-height", `${height}px`);
  });
  watch(["slides", "chosen", "others", "styles", "traced", "uses"], draw);

  list.addEventListener("keydown", (event) => {
    const step = { ArrowDown: 1, ArrowUp: -1, Home: -1e6, End: 1e6 }[event.key];
    if (!step || event.ctrlKey || event.altKey) return;
    event.preventDefault();
    selection.step(step);
    list.querySelector("[aria-selected=true]")?.focus();
  });
  const focus = () => (list.querySelector("[aria-selected=true]") ?? list.firstElementChild)?.focus();
  return { focus, openContext: () => openContext(list.querySelector("[aria-selected=true]"), {}) };
}
