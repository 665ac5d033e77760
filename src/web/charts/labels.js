// Tick labels: how much room they take, and how the names of categories are fitted
// into theirs: on one line, broken, slanted or left out.

import { textWidth } from "./paint.js";

const tickLength = 5;
const mostLines = 3;
// No labels take more than this share of the chart's height.
const longestSlanted = 180;

// Room for tick marks is kept where none are drawn as well.
export const labelGap = (axis) => tickLength + axis.font.size * (axis.isHorizontal ? 0.45 : 0.7);

const widest = (labels, font) => labels.reduce((most, text) => Math.max(most, textWidth(text, font)), 0);

// Of many labels the longest few tell.
function longest(labels) {
  if (labels.length <= 100) return labels;
  return [...labels].sort((a, b) => b.length - a.length).slice(0, 100);
}

// How the labels of a category axis along `length` px are drawn: {rotation, every,
// width: of a broken line, lines}.
export function categoryLabels(axis, { width, height }) {
  const { labels, font } = axis;
  const count = Math.max(1, labels.length - (axis.isBetween ? 0 : 1));
  const slot = (axis.isHorizontal ? width : height) / count;
  const line = font.size * 1.2;
  if (!axis.isHorizontal) {
    return { rotation: axis.rotation ?? 0, every: axis.every ?? Math.max(1, Math.ceil(line / slot)) };
  }
  const stated = axis.every ?? 1;
  const shown = longest(labels);
  const full = widest(shown, font);
  const room = slot * stated;
  if (axis.rotation !== undefined && axis.rotation !== 0) {
    return { rotation: axis.rotation, every: axis.every ?? Math.max(1, Math.ceil(line / slot)) };
  }
  if (full <= room) return { rotation: 0, every: stated };
  if (axis.rotation === 0 && !axis.isDates) {
    return { rotation: 0, every: axis.every ?? 1, width: room };
  }
  const words = widest(shown.flatMap((text) => text.split(/\s+/)), font);
  if (words <= room * 0.98 && full <= room * mostLines && !axis.isDates) {
    return { rotation: 0, every: stated, width: room };
  }
  // Dates are left out before they are slanted.
  if (axis.isDates && !axis.every) return { rotation: 0, every: Math.ceil((full + font.size / 2) / slot) };
  return { rotation: -45, every: axis.every ?? Math.max(1, Math.ceil(line / slot)) };
}

// Lines that a text is broken into at spaces.
function linesIn(text, font, width) {
  let lines = 0;
  for (const paragraph of text.split("\n")) {
    let line = "";
    ++lines;
    for (const word of paragraph.split(/\s+/)) {
      const longer = line ? `${line} ${word}` : word;
      if (line && textWidth(longer, font) > width) {
        ++lines;
        line = word;
      } else {
        line = longer;
      }
    }
  }
  return lines;
}

// The room between the plot and the far end of the labels.
export function labelRoom(axis, { width }) {
  const { font, labels } = axis;
  const line = font.size * 1.2;
  const gap = labelGap(axis);
  const shown = longest(labels);
  const full = widest(shown, font);
  if (!axis.isHorizontal) return { width: full + gap + 2, height: line };
  if (axis.kind === "value") return { width: full, height: line + gap };
  const fitted = categoryLabels(axis, { width });
  if (fitted.rotation) {
    const angle = Math.abs((fitted.rotation * Math.PI) / 180);
    const length = Math.min(full, longestSlanted);
    return { width: 0, height: length * Math.sin(angle) + line * Math.cos(angle) + gap };
  }
  const lines = shown.reduce(
    (most, text) =>
      Math.max(most, fitted.width ? linesIn(text, font, fitted.width) : text.split("\n").length),
    1,
  );
  return { width: full, height: lines * line + gap };
}

export { longestSlanted };
