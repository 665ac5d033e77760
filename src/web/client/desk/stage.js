// The slide in the middle as screens draw it, and how large it is seen.

import { loadChartsFor } from "../core/chart_loader.js";
import { isInsideSvg, parse, patch } from "../core/patch.js";
import { h, place, set } from "./dom.js";
import { icon } from "./icons.js";

// Around the slide: below it lie its zoom and whether it shows.
const margin = { across: 48, down: 82 };
const smallest = 0.1;
const largest = 8;

// The styles that all slides share stand in the page; thumbnails link to them as well.
export const stylesAddress = (state) => (state.styles ? `/${state.assets}${state.styles}` : "");

function useStyles(state) {
  const address = stylesAddress(state);
  const old = document.getElementById("slide-styles");
  if (!address || old?.getAttribute("href") === address) return;
  const link = h("link", { rel: "stylesheet", href: address, id: old ? null : "slide-styles" });
  link.onload = () => {
    if (old) old.remove();
    link.id = "slide-styles";
  };
  document.head.append(link);
}

export function createStage(desk) {
  const { state, watch, change } = desk;
  const drawn = h("div", { class: "drawn", "aria-hidden": "true", inert: true });
  const overlay = h("div", { class: "overlay" });
  const canvas = h("div", { class: "canvas" }, drawn, overlay);
  const viewport = h("div", { class: "viewport" }, canvas);
  const percent = h("button", { class: "percent", title: "Actual size (100 %)", onclick: () => zoom(1) });
  const tool = (label, keys, run, ...inside) =>
    h(
      "button",
      { type: "button", "aria-label": label, title: keys ? `${label} (${keys})` : label, onclick: run },
      ...inside,
    );
  const badges = tool(
    "All badges",
    "",
    () => {
      const isOn = badges.getAttribute("aria-pressed") !== "true";
      badges.setAttribute("aria-pressed", isOn);
      overlay.toggleAttribute("data-all-badges", isOn);
    },
    icon("badge"),
  );
  badges.setAttribute("aria-pressed", "false");
  const zooms = h(
    "div",
    { class: "zoom floating", role: "group", "aria-label": "Zoom" },
    badges,
    tool("Zoom out", "Ctrl+−", () => zoomBy(1 / 1.25), "−"),
    percent,
    tool("Zoom in", "Ctrl++", () => zoomBy(1.25), "+"),
    tool("Fit", "Ctrl+0", () => zoom("fit"), "Fit"),
  );
  const empty = h("p", { class: "empty", text: "The deck is being opened …" });
  const main = document.getElementById("stage");
  main.append(viewport, zooms);

  let scale = 1;
  let shown = null; // the section that stands on the stage, and the slide's id
  let shownSlide = 0;
  let taken = null; // the slide's description that was drawn last

  const fitting = () => {
    const { width, height } = state.size ?? { width: 960, height: 540 };
    const room = [viewport.clientWidth - margin.across, viewport.clientHeight - margin.down];
    return Math.max(smallest, Math.min(room[0] / width, room[1] / height));
  };

  function measure() {
    if (!state.size) return;
    const { width, height } = state.size;
    scale = state.zoom === "fit" ? fitting() : state.zoom;
    canvas.style.setProperty("--scale", scale);
    canvas.style.setProperty("--slide-width", `${width}px`);
    canvas.style.setProperty("--slide-height", `${height}px`);
    percent.textContent = `${Math.round(scale * 100)} %`;
    percent.setAttribute("aria-label", `Zoom ${Math.round(scale * 100)} %, actual size`);
  }

  // What lies at `at`, in px of the viewport, stays there.
  function zoom(factor, at = { x: viewport.clientWidth / 2, y: viewport.clientHeight / 2 }) {
    const box = canvas.getBoundingClientRect();
    const frame = viewport.getBoundingClientRect();
    const point = { x: (frame.left + at.x - box.left) / scale, y: (frame.top + at.y - box.top) / scale };
    change({ zoom: factor === "fit" ? "fit" : Math.max(smallest, Math.min(largest, factor)) });
    const moved = canvas.getBoundingClientRect();
    viewport.scrollLeft += moved.left + point.x * scale - (frame.left + at.x);
    viewport.scrollTop += moved.top + point.y * scale - (frame.top + at.y);
  }
  const zoomBy = (factor, at) => zoom(scale * factor, at);

  async function draw() {
    const slide = state.slide;
    main.toggleAttribute("data-hides", Boolean(slide?.hides));
    // Drawn already; or its shapes have changed, one by one.
    if (slide && (slide === taken || (!slide.html && slide.id === shownSlide))) return;
    taken = slide;
    if (!slide?.html) {
      place(viewport, state.slides?.length === 0 ? set(empty, { text: "The deck has no slides." }) : empty);
      return;
    }
    await loadChartsFor(slide.html);
    if (state.slide !== slide) return;
    const fresh = parse(slide.html);
    if (shown?.isConnected && shownSlide === slide.id && shown.id === fresh.id) {
      patch(shown, fresh);
      if (!shown.isConnected) shown = drawn.firstElementChild;
    } else {
      drawn.replaceChildren(fresh);
      shown = fresh;
      viewport.scrollTo(0, 0);
    }
    shownSlide = slide.id;
    place(viewport, canvas);
    measure();
  }

  // Elements of the slide that have changed.
  async function changeShapes(changes) {
    for (const { slide, html } of changes) {
      await loadChartsFor(html);
      if (slide !== shownSlide) continue;
      const named = html.match(/\bid="([^"]*)"/)?.[1];
      const old = named && drawn.querySelector(`#${CSS.escape(named)}`);
      const fresh = old && parse(html, isInsideSvg(old));
      if (fresh) patch(old, fresh);
    }
  }

  viewport.addEventListener(
    "wheel",
    (event) => {
      if (!event.ctrlKey) return;
      event.preventDefault();
      const frame = viewport.getBoundingClientRect();
      zoomBy(Math.exp(-event.deltaY / 300), { x: event.clientX - frame.left, y: event.clientY - frame.top });
    },
    { passive: false },
  );
  new ResizeObserver(measure).observe(viewport);
  watch(["size", "zoom"], measure);
  watch(["slide", "slides"], draw);
  watch(["styles", "assets"], () => useStyles(state));

  return {
    overlay,
    viewport,
    main,
    changeShapes,
    zoom,
    zoomBy,
    // Of a pointer, in px of the slide.
    pointOf({ clientX, clientY }) {
      const box = canvas.getBoundingClientRect();
      return { x: (clientX - box.left) / scale, y: (clientY - box.top) / scale };
    },
    scale: () => scale,
    isDrawn: () => shownSlide === state.chosen.slide,
  };
}
