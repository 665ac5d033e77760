// Markers by their names in the file (ST_MarkerStyle), in a square of ten.

const paths = {
  circle: "M5 0A5 5 0 1 1 5 10A5 5 0 1 1 5 0Z",
  square: "M0 0H10V10H0Z",
  diamond: "M5 0L10 5L5 10L0 5Z",
  triangle: "M5 0L10 10H0Z",
  dash: "M0 3.5H10V6.5H0Z",
  dot: "M2.5 3.5H7.5V6.5H2.5Z",
  x: "M0 0L10 10M10 0L0 10",
  star: "M0 0L10 10M10 0L0 10M5 0V10",
  plus: "M5 0V10M0 5H10",
};
const open = new Set(["x", "star", "plus"]);
const named = { circle: "circle", square: "rect", diamond: "diamond", triangle: "triangle" };

export const pathOf = (symbol) => paths[symbol] ?? paths.square;
export const isOpen = (symbol) => open.has(symbol);

// ECharts' own where it has one: they keep their size to the pixel.
export const symbolOf = (symbol) => named[symbol] ?? `path://${pathOf(symbol)}`;
