// The panels around the slide: how wide they are, kept in this browser; the way round them; the right one as a
// drawer where there is no room.

import { h, set } from "./dom.js";
import { icon } from "./icons.js";

const edges = [
  {
    name: "left",
    label: "Width of the slides",
    panel: "slides",
    isAcross: true,
    sign: 1,
    smallest: 96,
    largest: 420,
    usual: 176,
  },
  {
    name: "right",
    label: "Width of the properties",
    panel: "side",
    isAcross: true,
    sign: -1,
    smallest: 240,
    largest: 640,
    usual: 304,
  },
  {
    name: "bottom",
    label: "Height of the data",
    panel: "tray",
    isAcross: false,
    sign: -1,
    smallest: 96,
    largest: 900,
    usual: innerHeight < 800 ? 204 : 236,
  },
];

export function createPanels(desk) {
  const { body } = document;
  const kept = JSON.parse(localStorage.getItem("panels") ?? "{}");

  for (const { name, label, panel, isAcross, sign, smallest, largest, usual } of edges) {
    const edge = h("div", {
      class: `edge ${name}`,
      role: "separator",
      tabindex: "0",
      "aria-label": label,
      "aria-controls": panel,
      "aria-orientation": isAcross ? "vertical" : "horizontal",
      "aria-valuemin": smallest,
      "aria-valuemax": largest,
    });
    let size = usual;
    const apply = (wanted) => {
      size = Math.round(Math.max(smallest, Math.min(largest, wanted)));
      body.style.setProperty(`--${name}`, `${size}px`);
      set(edge, { "aria-valuenow": size });
    };
    const keep = () => {
      kept[name] = size;
      localStorage.setItem("panels", JSON.stringify(kept));
    };
    apply(kept[name] ?? (innerWidth >= 2000 ? usual * 1.35 : usual));
    edge.addEventListener("pointerdown", (event) => {
      event.preventDefault();
      edge.setPointerCapture(event.pointerId);
      const place = (at) => (isAcross ? at.clientX : at.clientY);
      const start = {
        at: place(event),
        size: document.getElementById(panel).getBoundingClientRect()[isAcross ? "width" : "height"],
      };
      const move = (to) => apply(start.size + sign * (place(to) - start.at));
      edge.addEventListener("pointermove", move);
      edge.addEventListener(
        "lostpointercapture",
        () => {
          edge.removeEventListener("pointermove", move);
          keep();
        },
        { once: true },
      );
    });
    edge.addEventListener("keydown", (event) => {
      const steps = isAcross ? { ArrowRight: sign, ArrowLeft: -sign } : { ArrowDown: sign, ArrowUp: -sign };
      if (!steps[event.key]) return;
      event.preventDefault();
      apply(size + 16 * steps[event.key]);
      keep();
    });
    edge.addEventListener("dblclick", () => {
      apply(usual);
      keep();
    });
    body.append(edge);
  }

  const drawer = h(
    "button",
    {
      type: "button",
      class: "outlined square drawer",
      "aria-label": "Properties and shapes",
      "aria-expanded": "false",
      "aria-controls": "side",
    },
    icon("panel"),
  );
  const openDrawer = (isOpen) => {
    body.toggleAttribute("data-drawer", isOpen);
    set(drawer, { "aria-expanded": String(isOpen) });
  };
  drawer.addEventListener("click", () => openDrawer(!body.hasAttribute("data-drawer")));
  document.getElementById("stage").append(drawer);

  const order = ["toolbar", "slides", "stage", "properties", "shapes", "tray"];
  const focusers = {
    toolbar: () => desk.toolbar.focus(),
    slides: () => desk.slides.focus(),
    stage: () => desk.frames.list.focus({ preventScroll: true }),
    properties: () => desk.properties.focus(),
    shapes: () => desk.shapes.focus(),
    tray: () => desk.tray.focus(),
  };

  function goTo(name) {
    openDrawer(name === "properties" || name === "shapes");
    focusers[name]();
  }

  return {
    goTo,
    next(step) {
      const at = order.findIndex((name) => document.getElementById(name).contains(document.activeElement));
      for (let i = 1; i <= order.length; ++i) {
        const name = order[(at + step * i + 2 * order.length) % order.length];
        goTo(name);
        if (document.getElementById(name).contains(document.activeElement)) return;
      }
    },
  };
}
