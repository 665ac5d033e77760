// <deck-chart data-chart="{…}">: a chart of a slide, drawn at the slide's natural
// size as SVG. A changed description moves the chart to its new values; an element
// that leaves the page takes everything with it.
//
// The description is what render/ChartWriter.cpp writes:
//   title   {html, rotation, overlays, place, fill, line}
//   legend  {side, overlays, place, font, reversed, entries: [{text, fill, line, marker}], fill, line}
//   plot    {place, fill, line}
//   axes    [{kind, isHorizontal, min, max, ticks, labels, at, …} or null]; see axes.js
//   series  [{kind, axes: [category or x, value or y], data, …}]; see series.js
// Sizes are px. A place has x, y, w, h as shares of the chart.

import { BarChart, CustomChart, LineChart, PieChart, RadarChart, ScatterChart } from "echarts/charts";
import { GridComponent, RadarComponent } from "echarts/components";
import { init, use } from "echarts/core";
import { SVGRenderer } from "echarts/renderers";
import { axesOption } from "./axes.js";
import { layOut } from "./layout.js";
import { motion } from "./motion.js";
import { seriesOption } from "./series.js";

use([BarChart, CustomChart, LineChart, PieChart, RadarChart, ScatterChart]);
use([GridComponent, RadarComponent, SVGRenderer]);

const styles = `
:host { display: block; }
.part { position: absolute; box-sizing: border-box; white-space: pre-wrap; line-height: 1.2; }
.part p { margin: 0; }
.title { text-align: center; }
.legend { display: flex; flex-wrap: wrap; justify-content: center; align-content: space-evenly; }
.legend.column { flex-direction: column; flex-wrap: nowrap; justify-content: space-evenly; }
.entry { display: flex; align-items: center; gap: 0.3em; padding: 0.11em 0.35em; }
.column > .entry { padding: 0 0.35em; }
.key { flex: none; box-sizing: border-box; }
`;

class DeckChart extends HTMLElement {
  static observedAttributes = ["data-chart", "style"];

  #chart = null;
  #isPending = false;

  connectedCallback() {
    this.#draw();
  }

  disconnectedCallback() {
    this.#chart?.dispose();
    this.#chart = null;
    this.shadowRoot?.replaceChildren();
  }

  attributeChangedCallback() {
    if (!this.#chart || this.#isPending) return;
    this.#isPending = true;
    queueMicrotask(() => {
      this.#isPending = false;
      if (this.#chart) this.#draw();
    });
  }

  // What cannot be drawn leaves the chart as it is.
  #draw() {
    try {
      const size = { width: parseFloat(this.style.width), height: parseFloat(this.style.height) };
      if (!(size.width > 0 && size.height > 0)) return;
      const description = JSON.parse(this.dataset.chart);
      const isFirst = !this.#chart;
      if (isFirst) this.#build(size);
      const places = layOut(description, size, this.shadowRoot);
      const option = {
        ...motion,
        animation: !isFirst,
        ...axesOption(description, places),
        ...seriesOption(description, places),
      };
      if (!isFirst) this.#chart.resize(size);
      this.#chart.setOption(option, { replaceMerge: ["grid", "xAxis", "yAxis", "radar", "series"] });
      if (isFirst) this.#chart.getZr().flush();
    } catch (error) {
      console.error(error);
    }
  }

  #build(size) {
    const root = this.shadowRoot ?? this.attachShadow({ mode: "open" });
    const style = document.createElement("style");
    style.textContent = styles;
    const plot = document.createElement("div");
    plot.className = "part plot";
    const drawing = document.createElement("div");
    drawing.className = "part drawing";
    drawing.style.cssText = `width:${size.width}px;height:${size.height}px`;
    root.replaceChildren(style, plot, drawing);
    this.#chart = init(drawing, null, { renderer: "svg", ...size });
  }
}

customElements.define("deck-chart", DeckChart);
