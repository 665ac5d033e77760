// What goes with series: trend lines, error bars, high-low and drop lines, up and
// down bars. Drawn as shapes in the coordinates of their axes.

import { itemStyle } from "./paint.js";

const capLength = 8;

const strokeOf = (line) => ({
  stroke: line.color,
  lineWidth: line.width,
  lineDash: line.dashes ?? null,
  fill: "none",
});

const segment = (from, to, style) => ({
  type: "line",
  shape: { x1: from[0], y1: from[1], x2: to[0], y2: to[1] },
  style,
});

function trend(series) {
  return (_, api) => {
    const points = series.data.map((point) => api.coord(point));
    return { type: "polyline", shape: { points }, style: strokeOf(series.line) };
  };
}

// The middle of a bar among those beside it, as a shift along the category axis.
function barShift({ of }, { series, axes, siblings }, api) {
  const bar = of === undefined ? null : series[of];
  if (!bar || bar.stack !== undefined) return 0;
  const bars = series.filter(({ kind, group }) => kind === "bar" && group === bar.group);
  const isHorizontal = axes[bar.axes[1]].isHorizontal;
  const band = Math.abs(api.size([1, 1])[isHorizontal ? 1 : 0]);
  const count = bars.length || siblings;
  const width = band / (count - (count - 1) * bar.overlap + bar.gap);
  const shift = (bars.indexOf(bar) - (count - 1) / 2) * width * (1 - bar.overlap);
  return isHorizontal ? -shift : shift;
}

function errors(series, context) {
  return ({ dataIndex }, api) => {
    const [x, y, low, high] = series.data[dataIndex];
    const isFlipped = context.series[series.of]?.kind === "bar" && context.isHorizontal;
    const at = (v) => api.coord(series.isAlongX ? [v, y] : isFlipped ? [v, x] : [x, v]);
    const shift = barShift(series, context, api);
    const [from, to] = [at(low), at(high)];
    const isLevel = series.isAlongX || isFlipped;
    for (const end of [from, to]) end[isLevel ? 1 : 0] += shift;
    const style = strokeOf(series.line);
    const children = [segment(from, to, style)];
    if (series.hasCaps) {
      const half = capLength / 2;
      const [dx, dy] = isLevel ? [0, half] : [half, 0];
      for (const [cx, cy] of [from, to]) children.push(segment([cx - dx, cy - dy], [cx + dx, cy + dy], style));
    }
    return { type: "group", children };
  };
}

function ranges(series) {
  return ({ dataIndex }, api) => {
    const [slot, low, high, first, last] = series.data[dataIndex];
    const children = [];
    if (series.drops) {
      children.push(segment(api.coord([slot, high]), api.coord([slot, series.base]), strokeOf(series.drops)));
    }
    if (series.line) children.push(segment(api.coord([slot, low]), api.coord([slot, high]), strokeOf(series.line)));
    const look = first !== null && last !== null && (last >= first ? series.up : series.down);
    if (look) {
      const [x, top] = api.coord([slot, Math.max(first, last)]);
      const bottom = api.coord([slot, Math.min(first, last)])[1];
      const width = api.size([1, 0])[0] / (1 + series.gap);
      const { color, borderColor, borderWidth } = itemStyle(look);
      children.push({
        type: "rect",
        shape: { x: x - width / 2, y: top, width, height: bottom - top },
        style: { fill: color, stroke: borderColor, lineWidth: borderWidth },
      });
    }
    return { type: "group", children };
  };
}

const drawers = { trend, errors, ranges };

export function guideOption(series, context) {
  const isWhole = series.kind === "trend";
  return {
    type: "custom",
    renderItem: drawers[series.kind](series, context),
    // Dimensions beyond the first two only travel with the point.
    encode: { x: [], y: [] },
    data: isWhole ? [0] : series.data.map((_, i) => i),
    label: { show: false },
    clip: true,
  };
}
