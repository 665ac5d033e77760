// The legend: HTML, so that its texts flow by themselves.

import { cssBorder, cssFont, cssPaint } from "./paint.js";
import { isOpen, pathOf } from "./symbols.js";

const svgNamespace = "http://www.w3.org/2000/svg";

function svgElement(name, attributes) {
  const element = document.createElementNS(svgNamespace, name);
  for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
  return element;
}

const plain = (fill) => (typeof fill === "string" ? fill : fill ? fill.stops?.[0][1] ?? fill.color : "none");

// A stretch of the line with its marker on it.
function lineKey({ line, marker }, size) {
  const width = line ? size * 1.6 : size * 0.5;
  const svg = svgElement("svg", { class: "key", width, height: size });
  if (line) {
    const y = size / 2;
    const dashes = line.dashes ? { "stroke-dasharray": line.dashes.join(" ") } : {};
    const stroke = { stroke: line.color, "stroke-width": line.width, ...dashes };
    svg.append(svgElement("line", { x1: 0, y1: y, x2: width, y2: y, ...stroke }));
  }
  if (marker) {
    const scale = Math.min(marker.size, size) / 10;
    const [x, y] = [width / 2 - 5 * scale, size / 2 - 5 * scale];
    svg.append(
      svgElement("path", {
        d: pathOf(marker.symbol),
        transform: `translate(${x} ${y}) scale(${scale})`,
        fill: isOpen(marker.symbol) ? "none" : plain(marker.fill),
        stroke: marker.line?.color ?? "none",
        "stroke-width": (marker.line?.width ?? 0) / scale,
      }),
    );
  }
  return svg;
}

function boxKey({ fill, line }, size) {
  const box = document.createElement("span");
  box.className = "key";
  const side = Math.round(size * 0.54);
  box.style.cssText = `width:${side}px;height:${side}px`;
  box.style.background = cssPaint(fill);
  box.style.border = cssBorder(line);
  return box;
}

function entryElement(entry, font) {
  const element = document.createElement("div");
  element.className = "entry";
  const key = entry.isLine ? lineKey(entry, font.size) : boxKey(entry, font.size);
  const text = document.createElement("span");
  text.textContent = entry.text;
  element.append(key, text);
  return element;
}

export function fillLegend(element, legend) {
  const isColumn = legend.side !== "top" && legend.side !== "bottom";
  element.classList.toggle("column", isColumn);
  element.style.font = cssFont(legend.font);
  element.style.lineHeight = "1.2";
  element.style.color = legend.font.color;
  const entries = legend.entries.map((entry) => entryElement(entry, legend.font));
  element.replaceChildren(...(legend.reversed ? entries.reverse() : entries));
}
