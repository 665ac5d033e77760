// Looks of a description as ECharts and as style sheets take them. A paint is a
// colour, {stops, angle} (radial without an angle), {rows, color, under} or {picture}.

const none = "transparent";

// The eight by eight pixels of a pattern as an SVG picture.
function patternAddress({ rows, color, under }) {
  let path = "";
  rows.forEach((row, y) => {
    for (let x = 0; x < 8; ++x) if ((row >> (7 - x)) & 1) path += `M${x} ${y}h1v1h-1z`;
  });
  const svg =
    `<svg xmlns="http://www.w3.org/2000/svg" width="8" height="8"><rect width="8" height="8" fill="${under}"/>` +
    `<path d="${path}" fill="${color}" shape-rendering="crispEdges"/></svg>`;
  return `data:image/svg+xml,${encodeURIComponent(svg)}`;
}

export function paint(fill) {
  if (!fill) return none;
  if (typeof fill === "string") return fill;
  if (fill.rows) return { image: patternAddress(fill), imageWidth: 8, imageHeight: 8, repeat: "repeat" };
  if (fill.picture) return { image: fill.picture, repeat: "repeat" };
  const colorStops = fill.stops.map(([offset, color]) => ({ offset, color }));
  if (fill.angle === undefined) return { type: "radial", x: 0.5, y: 0.5, r: 0.7, colorStops };
  const angle = (fill.angle * Math.PI) / 180;
  const reach = (Math.abs(Math.cos(angle)) + Math.abs(Math.sin(angle))) / 2;
  const [dx, dy] = [reach * Math.cos(angle), reach * Math.sin(angle)];
  return { type: "linear", x: 0.5 - dx, y: 0.5 - dy, x2: 0.5 + dx, y2: 0.5 + dy, colorStops };
}

export function cssPaint(fill) {
  if (!fill) return "none";
  if (typeof fill === "string") return fill;
  if (fill.rows) return `url("${patternAddress(fill)}")`;
  if (fill.picture) return `url("${fill.picture}") 0 0 / 100% 100%`;
  const stops = fill.stops.map(([offset, color]) => `${color} ${offset * 100}%`).join(", ");
  return fill.angle === undefined
    ? `radial-gradient(circle, ${stops})`
    : `linear-gradient(${fill.angle + 90}deg, ${stops})`;
}

export const cssBorder = (line) =>
  line ? `${line.width}px ${line.dashes ? "dashed" : "solid"} ${line.color}` : "none";

// As the option of an axis' or a series' line.
export const lineStyle = (line) =>
  line
    ? { color: line.color, width: line.width, type: line.dashes ?? "solid", opacity: 1 }
    : { color: none, width: 0, type: "solid", opacity: 0 };

// As the option of what has an inside and an edge.
export const itemStyle = ({ fill, line }) => ({
  color: paint(fill),
  borderColor: line?.color ?? none,
  borderWidth: line?.width ?? 0,
  borderType: line?.dashes ?? "solid",
});

export const textStyle = (font) => ({
  fontFamily: font.family,
  fontSize: font.size,
  fontWeight: font.bold ? "bold" : "normal",
  fontStyle: font.italic ? "italic" : "normal",
  color: font.color,
});

export const cssFont = (font) =>
  `${font.italic ? "italic " : ""}${font.bold ? "bold " : ""}${font.size}px ${font.family}`;

const canvas = document.createElement("canvas").getContext("2d");

export function textWidth(text, font) {
  canvas.font = cssFont(font);
  return Math.max(...text.split("\n").map((line) => canvas.measureText(line).width));
}
