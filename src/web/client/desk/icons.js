// Small drawings, in the colour of the text around them.

const paths = {
  undo: "M6 4 2.5 7.5 6 11M3 7.5h6.5a3.5 3.5 0 0 1 0 7H7",
  redo: "M10 4l3.5 3.5L10 11M13 7.5H6.5a3.5 3.5 0 0 0 0 7H9",
  check: "M3 8.5 6.5 12 13 4.5",
  show: "M5 3.5v9l7.5-4.5z",
  more: "M3.5 8h.01M8 8h.01M12.5 8h.01",
  refresh: "M13 8a5 5 0 1 1-1.6-3.7M13 2.5V5.5H10",
  plus: "M8 3.5v9M3.5 8h9",
  close: "M4 4l8 8M12 4l-8 8",
  grip: "M6 4h.01M10 4h.01M6 8h.01M10 8h.01M6 12h.01M10 12h.01",
  down: "M4 6.5 8 10.5 12 6.5",
  right: "M6.5 4 10.5 8 6.5 12",
  folder: "M2 4.5h4l1.5 1.5H14v7H2z",
  file: "M4 2.5h5l3 3v8H4zM9 2.5v3h3",
  table: "M2.5 3.5h11v9h-11zM2.5 6.5h11M6.5 6.5v6",
  database:
    "M3 4.2C3 3 5.2 2.5 8 2.5s5 .5 5 1.7-2.2 1.7-5 1.7-5-.5-5-1.7zM3 4.2v7.6c0 1.2 2.2 1.7 5 1.7s5-.5 5-1.7V4.2M3 8c0 1.2 2.2 1.7 5 1.7S13 9.2 13 8",
  warning: "M8 2.5 14 13H2zM8 6.5v3M8 11.3h.01",
  link: "M7 9a2.5 2.5 0 0 0 3.6 0l2-2A2.5 2.5 0 0 0 9 3.4l-.8.8M9 7a2.5 2.5 0 0 0-3.6 0l-2 2A2.5 2.5 0 0 0 7 12.6l.8-.8",
  panel: "M2.5 3.5h11v9h-11zM10 3.5v9",
  badge: "M2.5 4.5h7l4 3.5-4 3.5h-7z",
  play: "M5 3.5v9l7.5-4.5z",
};
const filled = new Set(["show", "play"]);
const namespace = "http://www.w3.org/2000/svg";

export function icon(name) {
  const svg = document.createElementNS(namespace, "svg");
  svg.setAttribute("viewBox", "0 0 16 16");
  svg.setAttribute("class", filled.has(name) ? "icon filled" : "icon");
  svg.setAttribute("aria-hidden", "true");
  const path = document.createElementNS(namespace, "path");
  path.setAttribute("d", paths[name]);
  svg.append(path);
  return svg;
}
