// Series as ECharts options. A series has: kind, name, axes, data, fill, line,
// marker, points (looks by place in data), labels, and what its kind needs.

import { clockwise } from "./axes.js";
import { guideOption } from "./guides.js";
import { motion } from "./motion.js";
import { itemStyle, lineStyle, paint, textStyle, textWidth } from "./paint.js";
import { isOpen, symbolOf } from "./symbols.js";

const barPositions = { outEnd: "outside", ctr: "inside" };
const pointPositions = { t: "top", b: "bottom", l: "left", r: "right", ctr: "inside" };
const order = { area: 2, bar: 3, line: 4, scatter: 4, bubble: 4, trend: 5, ranges: 3, errors: 5 };

// Where a bar's label stands; within the bar its end is where the value is.
function barPosition(position, isHorizontal, isDown, isStacked) {
  const named = position ?? (isStacked ? "ctr" : "outEnd");
  if (named in barPositions) return barPositions[named];
  const isFar = (named === "inEnd") !== isDown;
  return isHorizontal ? (isFar ? "insideRight" : "insideLeft") : isFar ? "insideTop" : "insideBottom";
}

function labelPosition(series, look, value, isHorizontal) {
  const { position } = look;
  if (series.kind === "bar") {
    return barPosition(position, isHorizontal, value < (series.base ?? 0), series.stack !== undefined);
  }
  if (series.kind === "area") return "inside";
  return pointPositions[position] ?? (series.kind === "bubble" ? "right" : "right");
}

// Longer labels are broken.
const widestLabel = 0.2;

function labelLook(look, text, size) {
  const width = widestLabel * size.width;
  const isLong = text && textWidth(text, look.font) > width;
  return {
    ...(isLong ? { width, overflow: "break" } : { width: undefined, overflow: "none" }),
    ...textStyle(look.font),
    rotate: -(look.rotation ?? 0),
    backgroundColor: look.fill ? paint(look.fill) : "transparent",
    borderColor: look.line?.color ?? "transparent",
    borderWidth: look.line?.width ?? 0,
    padding: look.fill || look.line ? 3 : 0,
    textBorderWidth: 0,
    lineHeight: look.font.size * 1.2,
  };
}

// The label of one point; places stated by hand are shifts.
function pointLabel(series, i, value, { isHorizontal, size }) {
  const look = series.labels.own?.[i] ?? series.labels;
  const text = series.labels.texts[i];
  const label = { ...labelLook(look, text, size), position: labelPosition(series, look, value, isHorizontal) };
  if (look.dx || look.dy) label.offset = [(look.dx ?? 0) * size.width, (look.dy ?? 0) * size.height];
  return label;
}

function labelOption(labels) {
  if (!labels) return { show: false };
  return { show: true, formatter: ({ dataIndex }) => labels.texts[dataIndex] ?? "" };
}

const common = (id, series, place) => ({
  id,
  name: series.name,
  silent: true,
  cursor: "default",
  // Later series lie on earlier ones, whatever order they are laid out in.
  z: (order[series.kind] ?? 3) + place / 1000,
  ...motion,
  emphasis: { disabled: true },
  label: labelOption(series.labels),
});

const valueOf = (point) => (Array.isArray(point) ? point[1] : point);

function barOption(series, context) {
  const { siblings, isHorizontal } = context;
  const count = series.stack === undefined ? siblings : 1;
  const width = 100 / (count - (count - 1) * series.overlap + series.gap);
  const style = itemStyle(series);
  const data = series.data.map((value, i) => {
    const point = series.points?.[i];
    const item = { value, itemStyle: point?.hasLook ? itemStyle(point) : style };
    if (series.inverts && value < 0 && !point?.hasLook) {
      item.itemStyle = { ...style, color: "#fff", borderColor: paint(series.fill), borderWidth: 1 };
    }
    if (series.labels) item.label = pointLabel(series, i, value, context);
    return item;
  });
  return {
    type: "bar",
    data,
    itemStyle: style,
    stack: series.stack === undefined ? undefined : `stack-${series.stack}`,
    barWidth: `${width}%`,
    barGap: `${-100 * series.overlap}%`,
    barMinWidth: 0,
    barCategoryGap: "0%",
    clip: true,
  };
}

function markerStyle(marker) {
  const style = itemStyle(marker);
  if (isOpen(marker.symbol)) style.color = "transparent";
  return style;
}

function lineOption(series, context) {
  const { marker } = series;
  const isArea = series.kind === "area";
  const data = series.data.map((value, i) => {
    const point = series.points?.[i];
    const item = { value: Array.isArray(value) ? value.map((v) => v ?? "-") : (value ?? "-") };
    if (point?.marker) {
      item.symbol = symbolOf(point.marker.symbol);
      item.symbolSize = point.marker.size;
      item.itemStyle = markerStyle(point.marker);
    } else if (point && point.marker === null) {
      item.symbol = "none";
    }
    if (series.labels) item.label = pointLabel(series, i, valueOf(value), context);
    return item;
  });
  return {
    type: "line",
    data,
    lineStyle: { ...lineStyle(series.line), cap: "round", join: "round" },
    itemStyle: marker ? markerStyle(marker) : { color: "transparent", borderWidth: 0 },
    symbol: marker && !isArea ? symbolOf(marker.symbol) : "none",
    symbolSize: marker?.size ?? 1,
    showSymbol: true,
    showAllSymbol: true,
    smooth: series.isSmooth ? 0.4 : false,
    connectNulls: Boolean(series.connects),
    stack: series.stack === undefined ? undefined : `stack-${series.stack}`,
    stackStrategy: "all",
    areaStyle: isArea ? { color: paint(series.fill), opacity: 1, origin: series.base ?? "auto" } : undefined,
    clip: true,
  };
}

function bubbleOption(series, context) {
  const { inner } = context;
  const largest = Math.min(inner.width, inner.height) / 4;
  const style = itemStyle(series);
  return {
    type: "scatter",
    symbol: "circle",
    itemStyle: { ...style, opacity: 1 },
    data: series.data.map(([x, y, share], i) => {
      const point = series.points?.[i];
      const item = {
        value: [x ?? "-", y ?? "-"],
        symbolSize: (share / 100) * largest,
        itemStyle: point?.hasLook ? itemStyle(point) : style,
      };
      if (series.labels) item.label = pointLabel(series, i, y, context);
      return item;
    }),
    clip: true,
  };
}

function isOutside(series, position, share) {
  if (series.ring !== undefined) return false;
  if (position === "outEnd") return true;
  return (position === undefined || position === "bestFit") && share < 0.05;
}

function pieOption(series, { inner, size }) {
  const whole = series.data.reduce((sum, value) => sum + value, 0);
  const explosions = series.data.map((_, i) => series.points?.[i]?.explosion ?? series.explosion ?? 0);
  const explosion = Math.max(0, ...explosions);
  const { labels } = series;
  const hasOutside = series.data.some((value, i) =>
    labels?.texts[i] ? isOutside(series, (labels.own?.[i] ?? labels).position, value / whole) : false,
  );
  const room = hasOutside ? labels.font.size * 1.8 : 0;
  const full = Math.max(1, Math.min(inner.width, inner.height) / 2 - room);
  const outer = full / (1 + explosion);
  let radius = [0, outer];
  if (series.ring !== undefined) {
    const hole = outer * series.hole;
    const width = (outer - hole) / series.rings;
    radius = [hole + width * series.ring, hole + width * (series.ring + 1)];
  }
  return {
    type: "pie",
    center: [inner.x + inner.width / 2, inner.y + inner.height / 2],
    radius,
    startAngle: 90 - series.angle,
    clockwise: true,
    minShowLabelAngle: 0,
    avoidLabelOverlap: hasOutside,
    stillShowZeroSum: false,
    selectedMode: "multiple",
    selectedOffset: explosion * outer,
    select: { label: {}, itemStyle: {} },
    labelLine: { show: false, length: 4 + explosion * outer, length2: 2 },
    data: series.data.map((value, i) => {
      const point = series.points?.[i];
      const item = {
        value,
        name: series.names[i],
        selected: explosions[i] > 0,
        itemStyle: itemStyle(point?.hasLook ? point : series),
        label: { show: false },
      };
      if (labels) {
        const look = labels.own?.[i] ?? labels;
        const outside = isOutside(series, look.position, value / whole);
        item.label = { ...labelLook(look, labels.texts[i], size), show: Boolean(labels.texts[i]), position: outside ? "outside" : "inside" };
        item.labelLine = { show: Boolean(labels.hasLeaders) && outside && labels.texts[i] !== "" };
      }
      return item;
    }),
  };
}

function radarOption(series) {
  const { marker } = series;
  const style = series.isFilled ? { color: paint(series.fill), opacity: 1 } : undefined;
  return {
    type: "radar",
    radarIndex: 0,
    symbol: marker ? symbolOf(marker.symbol) : "none",
    symbolSize: marker?.size ?? 1,
    itemStyle: marker ? markerStyle(marker) : { color: "transparent" },
    lineStyle: lineStyle(series.line),
    areaStyle: style,
    data: [{ value: clockwise(series.data).map((v) => v ?? "-"), name: series.name }],
    label: { show: false },
  };
}

const options = {
  bar: barOption,
  line: lineOption,
  area: lineOption,
  scatter: lineOption,
  bubble: bubbleOption,
  pie: pieOption,
  radar: radarOption,
};

export function seriesOption({ axes, series }, { inner, size }) {
  // The place of each axis among those of its direction.
  const places = axes.map((axis, i) => axes.slice(0, i).filter((a) => a?.isHorizontal === axis?.isHorizontal).length);
  const list = series.map((each, i) => {
    const siblings = series.filter(({ kind, group }) => kind === "bar" && group === each.group).length;
    const isHorizontal = each.axes && axes[each.axes[1]]?.isHorizontal;
    const context = { siblings, isHorizontal, inner, size, series, axes };
    const id = `${each.kind}-${i}`;
    const make = options[each.kind] ?? guideOption;
    const option = { ...common(id, each, i), ...make(each, context) };
    if (each.axes && each.kind !== "radar") {
      for (const index of each.axes) {
        option[axes[index].isHorizontal ? "xAxisIndex" : "yAxisIndex"] = places[index];
      }
    }
    return option;
  });
  return { series: reverseBars(list, series, axes) };
}

// ECharts lays bars beside each other from left to right and from top to bottom,
// charts do so along their axis.
function reverseBars(options, series, axes) {
  const isTurned = ({ kind, stack, axes: pair }) => {
    if (kind !== "bar" || stack !== undefined) return false;
    const category = axes[pair[0]];
    return !category.isHorizontal !== Boolean(category.isReversed);
  };
  const turned = options.filter((_, i) => isTurned(series[i])).reverse();
  return options.map((option, i) => (isTurned(series[i]) ? turned.shift() : option));
}
