// Axes as ECharts options. An axis has: kind ("category" or "value"), isHorizontal,
// isHidden, isReversed, font, line, grid, minorGrid, tick, minorTick, rotation; where
// it stands across the plot (at) and its labels (labelsAt, outward: -1 or 1) as
// shares from the left or bottom. A value axis: min, max, ticks, labels, minorTicks,
// log. A category axis: labels, isBetween, every, ticksEvery, isDates.

import { labelGap, longestSlanted } from "./labels.js";
import { edgeOf } from "./layout.js";
import { lineStyle, textStyle, textWidth } from "./paint.js";

const tickLength = 5;

function tickOption(kind, line, length) {
  return {
    show: kind !== "none" && Boolean(line),
    inside: kind === "in",
    length,
    lineStyle: lineStyle(line),
  };
}

// The text of a tick, found by its value.
function tickText({ ticks, labels }) {
  return (value) => {
    const nearest = ticks.findIndex((tick) => Math.abs(tick - value) <= Math.abs(value) * 1e-9 + 1e-12);
    return labels[nearest] ?? "";
  };
}

function labelOption(axis, fitted, inner) {
  const across = axis.isHorizontal ? inner.height : inner.width;
  const away = Math.abs((axis.labelsAt ?? axis.at) - axis.at) * across;
  const option = {
    ...textStyle(axis.font),
    show: axis.labelsAt !== undefined,
    inside: false,
    margin: away + labelGap(axis),
    rotate: -(fitted?.rotation ?? axis.rotation ?? 0),
    lineHeight: axis.font.size * 1.2,
    hideOverlap: false,
    showMinLabel: true,
    showMaxLabel: true,
    width: undefined,
    overflow: "none",
    interval: 0,
  };
  if (fitted) {
    option.interval = (index) => index % fitted.every === 0;
    option.showMinLabel = option.showMaxLabel = undefined;
    if (fitted.width) Object.assign(option, { width: fitted.width, overflow: "break" });
    if (fitted.rotation) Object.assign(option, { width: longestSlanted, overflow: "truncate" });
  } else {
    option.formatter = tickText(axis);
    if (!axis.log) option.customValues = axis.ticks;
  }
  return option;
}

function axisOption(axis, index, fitted, inner) {
  const edge = edgeOf(axis);
  const across = axis.isHorizontal ? inner.height : inner.width;
  const isFar = edge === "top" || edge === "right";
  const option = {
    id: `axis-${index}`,
    show: !axis.isHidden,
    position: edge,
    offset: -(isFar ? 1 - axis.at : axis.at) * across,
    inverse: Boolean(axis.isReversed),
    silent: true,
    // Names that lie in the plot are to be read across bars; gridlines lie below.
    z: axis.grid || axis.minorGrid ? 0 : 6,
    axisLine: { show: Boolean(axis.line), onZero: false, lineStyle: lineStyle(axis.line) },
    axisTick: tickOption(axis.tick, axis.line, tickLength),
    minorTick: { show: false },
    axisLabel: labelOption(axis, fitted, inner),
    splitLine: { show: Boolean(axis.grid), lineStyle: lineStyle(axis.grid), showMinLine: true, showMaxLine: true },
    minorSplitLine: { show: Boolean(axis.minorGrid), lineStyle: lineStyle(axis.minorGrid) },
    splitArea: { show: false },
  };
  if (axis.kind === "category") {
    const every = axis.ticksEvery ?? 1;
    option.axisTick.interval = option.splitLine.interval = (i) => i % every === 0;
    return {
      ...option,
      type: "category",
      data: axis.labels,
      boundaryGap: axis.isBetween,
    };
  }
  option.min = axis.min;
  option.max = axis.max;
  if (axis.log) return { ...option, type: "log", logBase: axis.log };
  option.axisTick.customValues = axis.ticks;
  if (axis.ticks.length > 1) option.interval = axis.ticks[1] - axis.ticks[0];
  if (axis.minorTicks?.length > 1 && option.interval) {
    const splits = Math.round(option.interval / (axis.minorTicks[1] - axis.minorTicks[0]));
    option.minorTick = { ...tickOption(axis.minorTick, axis.line, tickLength / 2), splitNumber: splits };
  }
  return { ...option, type: "value" };
}

// The spokes of a radar: clockwise, where ECharts goes the other way round.
export const clockwise = (list) => [...list.slice(0, 1), ...list.slice(1).reverse()];

const nameGap = (font) => font.size * 0.6;

// As large as the names around it leave it, and half of the room at least.
function radarRadius({ labels, font, labelsAt }, { width, height }) {
  const most = Math.min(width, height) / 2;
  if (labelsAt === undefined) return most;
  const line = font.size * 1.2;
  let radius = most;
  labels.forEach((name, i) => {
    const angle = (2 * Math.PI * i) / labels.length;
    const [across, up] = [Math.abs(Math.sin(angle)), Math.abs(Math.cos(angle))];
    const isUpright = across < 1e-6;
    if (!isUpright) radius = Math.min(radius, (width / 2 - textWidth(name, font)) / across - nameGap(font));
    if (up > 1e-6) radius = Math.min(radius, (height / 2 - (isUpright ? line : line / 2)) / up - nameGap(font));
  });
  return Math.max(radius, most / 2);
}

function radarOption(category, value, inner) {
  const radius = Math.max(1, radarRadius(category, inner));
  const names = clockwise(category.labels);
  return {
    center: [inner.x + inner.width / 2, inner.y + inner.height / 2],
    radius,
    startAngle: 90,
    shape: "polygon",
    silent: true,
    splitNumber: Math.max(1, value.ticks.length - 1),
    axisName: { ...textStyle(category.font), show: category.labelsAt !== undefined },
    axisNameGap: nameGap(category.font),
    axisLine: { show: !value.isHidden, lineStyle: lineStyle(value.line) },
    splitLine: { show: Boolean(value.grid), lineStyle: lineStyle(value.grid) },
    splitArea: { show: false },
    indicator: names.map((name, i) => ({
      name,
      min: value.min,
      max: value.max,
      axisLabel: {
        ...textStyle(value.font),
        show: i === 0 && value.labelsAt !== undefined && !value.isHidden,
        formatter: tickText(value),
        showMaxLabel: true,
      },
    })),
  };
}

export function axesOption({ axes, series }, { inner, labels }) {
  const radar = series.find(({ kind }) => kind === "radar");
  if (radar) {
    const [category, value] = radar.axes.map((index) => axes[index]);
    return { radar: [{ id: "radar", ...radarOption(category, value, inner) }] };
  }
  const options = axes.map((axis, i) => axis && axisOption(axis, i, labels[i], inner));
  // Bars begin where their categories' axis crosses.
  for (const { kind, axes: pair, base } of series) {
    if (kind === "bar" && options[pair[1]]?.type === "value") options[pair[1]].startValue = base;
  }
  const along = (isHorizontal) => options.filter((_, i) => axes[i]?.isHorizontal === isHorizontal);
  if (!options.some(Boolean)) return {};
  const grid = { id: "grid", left: inner.x, top: inner.y, width: inner.width, height: inner.height };
  return {
    grid: [{ ...grid, containLabel: false, outerBoundsMode: "none" }],
    xAxis: along(true),
    yAxis: along(false),
  };
}
