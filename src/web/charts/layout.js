// Where the title, the legend, the axes' titles and the plot stand. Texts are HTML
// and measured by the browser; what is left is the plot's.

import { categoryLabels, labelRoom } from "./labels.js";
import { fillLegend } from "./legend.js";
import { cssBorder, cssPaint, textWidth } from "./paint.js";
import { trusted } from "./trust.js";

// The element of a part, made when it is first needed; none without content.
function partElement(root, name, content) {
  let element = root.querySelector(`.${name}`);
  if (!content) {
    element?.remove();
    return null;
  }
  if (!element) {
    element = document.createElement("div");
    element.className = `part ${name}`;
    root.append(element);
  }
  element.style.cssText = "";
  element.style.background = cssPaint(content.fill);
  element.style.border = cssBorder(content.line);
  return element;
}

// The room that a text takes once it is turned.
function turnedSize(element, rotation = 0) {
  const [width, height] = [element.offsetWidth, element.offsetHeight];
  const angle = (rotation * Math.PI) / 180;
  const [sin, cos] = [Math.abs(Math.sin(angle)), Math.abs(Math.cos(angle))];
  return { width: width * cos + height * sin, height: width * sin + height * cos };
}

// Puts an element so that its turned box begins at x, y, or where the file says.
function put(element, x, y, { place, rotation = 0 }, size) {
  const turned = turnedSize(element, rotation);
  if (place?.x !== undefined) x = place.x * size.width + (place.offset ? x : 0);
  if (place?.y !== undefined) y = place.y * size.height + (place.offset ? y : 0);
  x = Math.max(0, Math.min(x, size.width - turned.width));
  y = Math.max(0, Math.min(y, size.height - turned.height));
  element.style.left = `${x + (turned.width - element.offsetWidth) / 2}px`;
  element.style.top = `${y + (turned.height - element.offsetHeight) / 2}px`;
  element.style.transform = rotation ? `rotate(${rotation}deg)` : "";
  return { x, y, ...turned };
}

function textElement(root, name, title, size) {
  const element = partElement(root, name, title);
  if (!element) return null;
  element.classList.add("title");
  element.innerHTML = trusted(title.html);
  const isUpright = Math.abs(Math.sin(((title.rotation ?? 0) * Math.PI) / 180)) > 0.5;
  element.style.maxWidth = `${(isUpright ? size.height : size.width) * 0.8}px`;
  element.style.width = "max-content";
  return element;
}

function placeLegend(root, legend, area, size, gap) {
  const element = partElement(root, "legend", legend);
  if (!element) return;
  fillLegend(element, legend);
  const { side, place } = legend;
  const isColumn = side !== "top" && side !== "bottom";
  const stated = place?.w ? place.w * size.width : 0;
  element.style.width = stated ? `${stated}px` : "max-content";
  element.style.maxWidth = `${isColumn && !stated ? size.width * 0.45 : size.width}px`;
  if (place?.h) element.style.height = `${place.h * size.height}px`;
  // Entries beyond the chart, or beyond half of it where they take room from the plot, are left out.
  const most = size.height * (isColumn || legend.overlays ? 1 : 0.5);
  // One above the other they stand apart, as far as there is room.
  if (isColumn && !place?.h) {
    const apart = legend.entries.length * legend.font.size * 0.38;
    element.style.height = `${Math.min(element.offsetHeight + apart, Math.max(element.offsetHeight, most))}px`;
  }
  if (element.offsetHeight > most) Object.assign(element.style, { height: `${most}px`, overflow: "clip" });
  const [width, height] = [element.offsetWidth, element.offsetHeight];
  // A legend wider than its place keeps on one line what fits into the chart.
  if (stated && !isColumn && element.scrollHeight > height) element.style.width = "max-content";
  const x =
    side === "left" ? area.left : isColumn ? area.right - width : (area.left + area.right - width) / 2;
  const y =
    side === "bottom"
      ? area.bottom - height
      : side === "top" || side === "corner"
        ? area.top
        : (area.top + area.bottom - height) / 2;
  put(element, x, y, { place: place && { ...place, offset: place.offset && !place.w }, rotation: 0 }, size);
  if (legend.overlays) return;
  if (side === "left") area.left += width + gap;
  else if (isColumn) area.right -= width + gap;
  else if (side === "top") area.top += height + gap;
  else area.bottom -= height + gap;
}

// Which edge of the plot an axis and its title stand at.
export function edgeOf(axis) {
  const isFar = (axis.outward ?? (axis.at > 0.5 ? 1 : -1)) > 0;
  return axis.isHorizontal ? (isFar ? "top" : "bottom") : isFar ? "right" : "left";
}

function placeAxisTitles(titles, inner, outer, size) {
  for (const { element, axis, edge } of titles) {
    const turned = turnedSize(element, axis.title.rotation);
    const x = axis.isHorizontal
      ? inner.x + (inner.width - turned.width) / 2
      : edge === "left"
        ? outer.left
        : outer.right - turned.width;
    const y = axis.isHorizontal
      ? edge === "bottom"
        ? outer.bottom - turned.height
        : outer.top
      : inner.y + (inner.height - turned.height) / 2;
    put(element, x, y, axis.title, size);
  }
}

function innerRectangle(axes, area) {
  const room = { left: 0, right: 0, top: 0, bottom: 0 };
  const grow = (edge, amount) => (room[edge] = Math.max(room[edge], amount));
  const shown = axes.filter((axis) => axis && !axis.isHidden && axis.labelsAt !== undefined);
  const isOutside = (axis) => axis.labelsAt === (axis.outward > 0 ? 1 : 0);
  for (const axis of shown) {
    if (axis.isHorizontal) continue;
    if (isOutside(axis)) grow(edgeOf(axis), labelRoom(axis, { width: 0, height: 0 }).width);
    grow("top", axis.font.size * 0.6);
    grow("bottom", axis.font.size * 0.6);
  }
  for (const axis of shown) {
    if (!axis.isHorizontal || axis.isBetween || axis.labels.length === 0) continue;
    // The first and the last stand half beyond their ticks.
    grow("left", textWidth(axis.labels[0], axis.font) / 2);
    grow("right", textWidth(axis.labels.at(-1), axis.font) / 2);
  }
  const width = Math.max(1, area.right - area.left - room.left - room.right);
  for (const axis of shown) {
    if (axis.isHorizontal && isOutside(axis)) grow(edgeOf(axis), labelRoom(axis, { width }).height);
  }
  return {
    x: area.left + room.left,
    y: area.top + room.top,
    width,
    height: Math.max(1, area.bottom - area.top - room.top - room.bottom),
  };
}

export function layOut(description, size, root) {
  const { title, legend, plot } = description;
  const axes = description.axes ?? [];
  const margin = Math.max(3, Math.min(size.width, size.height) * 0.02);
  const area = {
    left: Math.min(margin, 8.5),
    top: margin,
    right: size.width - margin,
    bottom: size.height - margin,
  };

  const heading = textElement(root, "heading", title, size);
  if (heading) {
    const turned = turnedSize(heading, title.rotation);
    put(heading, (size.width - turned.width) / 2, margin, title, size);
    if (!title.overlays) area.top += turned.height + margin;
  }
  placeLegend(root, legend, area, size, margin);

  const titles = [];
  axes.forEach((axis, i) => {
    const element = textElement(root, `axis-title-${i}`, axis && !axis.isHidden && axis.title, size);
    if (element) titles.push({ element, axis, edge: edgeOf(axis) });
  });
  for (let i = axes.length; root.querySelector(`.axis-title-${i}`); ++i) {
    root.querySelector(`.axis-title-${i}`).remove();
  }
  const outer = { ...area };
  for (const { element, axis, edge } of titles) {
    if (axis.title.overlays) continue;
    const turned = turnedSize(element, axis.title.rotation);
    const amount = (axis.isHorizontal ? turned.height : turned.width) + margin / 2;
    if (edge === "left" || edge === "top") area[edge] += amount;
    else area[edge] -= amount;
  }

  const hasRectangle = axes.some((axis) => axis) && !description.series.some(({ kind }) => kind === "radar");
  const place = plot.place;
  let inner;
  if (place?.w && place?.h) {
    const [x, y] = [(place.x ?? 0) * size.width, (place.y ?? 0) * size.height];
    const [width, height] = [place.w * size.width, place.h * size.height];
    inner = place.inner || !hasRectangle
      ? { x, y, width, height }
      : innerRectangle(axes, { left: x, top: y, right: x + width, bottom: y + height });
  } else {
    // The names around a radar take their room from its circle.
    inner = innerRectangle(hasRectangle ? axes : [], area);
  }
  placeAxisTitles(titles, inner, outer, size);

  const background = partElement(root, "plot", plot);
  background.style.display = hasRectangle ? "" : "none";
  background.style.left = `${inner.x}px`;
  background.style.top = `${inner.y}px`;
  background.style.width = `${inner.width}px`;
  background.style.height = `${inner.height}px`;
  const labels = axes.map((axis) => (axis?.kind === "category" ? categoryLabels(axis, inner) : null));
  return { size, inner, labels };
}
