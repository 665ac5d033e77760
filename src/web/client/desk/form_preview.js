// Previews of data in forms: rows to read, and cells to draw a rectangle over where the form takes one.

import { fill, h, set } from "./dom.js";

const steps = { ArrowUp: [-1, 0], ArrowDown: [1, 0], ArrowLeft: [0, -1], ArrowRight: [0, 1] };

export function createPreview(name, { session }) {
  const headers = h("tr");
  const body = h("tbody");
  const table = h("table", { "aria-label": "Preview" }, h("thead", {}, headers), body);
  const scroller = h("div", { class: "scroller", tabindex: "0", role: "group", "aria-label": "Preview" }, table);
  const note = h("p", { class: "hint", role: "status" });
  const element = h("div", { class: "control preview-of", "data-control": name }, scroller, note);

  let shown = {};
  // Cells as [row, column], the headers' row -1.
  let anchor = null;
  let head = null;
  let isDrawing = false;

  const selects = () => shown.Selects && shown.Enabled;
  const lineOf = (row) => (row < 0 ? headers : body.children[row]);
  const cellAt = ([row, column]) => lineOf(row)?.children[column + 1];
  const isOne = () => anchor[0] === head[0] && anchor[1] === head[1];
  const drawn = () => [
    Math.min(anchor[0], head[0]),
    Math.min(anchor[1], head[1]),
    Math.max(anchor[0], head[0]),
    Math.max(anchor[1], head[1]),
  ];

  function placeOf(target) {
    const cell = target?.closest?.("th, td");
    if (!cell || !table.contains(cell)) return null;
    const line = cell.parentElement;
    return [line === headers ? -1 : [...body.children].indexOf(line), Math.max(0, cell.cellIndex - 1)];
  }

  function mark() {
    const [top, left, bottom, right] = anchor ? drawn() : [0, 0, -2, -1];
    [headers, ...body.children].forEach((line, i) => {
      const isIn = i - 1 >= top && i - 1 <= bottom;
      [...line.children].forEach((cell, j) => {
        set(cell, { class: isIn && j - 1 >= left && j - 1 <= right ? "taken" : null });
      });
    });
    say();
  }

  function say() {
    const { Columns = [], Rows, Total = 0, Hint = "" } = shown;
    const count = Rows?.cells.length ?? 0;
    if (anchor && !isOne()) {
      const [top, left, bottom, right] = drawn();
      const names = [left, right].map((place) => Columns[place]?.note || Columns[place]?.text);
      const columns = left === right ? names[0] : names.join(" to ");
      const rows = bottom < 0 ? "all rows" : `rows ${Math.max(top, 0) + 1} to ${bottom + 1}`;
      return set(note, { text: `${columns}, ${rows}${top < 0 && bottom >= 0 ? " and the names" : ""}`, hidden: false });
    }
    const more = Total > count ? `${(Total - count).toLocaleString()} more rows` : "";
    const text = [more, Hint].filter(Boolean).join(". ");
    set(note, { text, hidden: !text });
  }

  function extend(to) {
    head = to;
    cellAt(head)?.scrollIntoView({ block: "nearest", inline: "nearest" });
    mark();
  }

  function take() {
    session.raise(name, "change", drawn());
  }

  function release() {
    anchor = head = null;
    isDrawing = false;
    mark();
  }

  // A finger scrolls.
  scroller.addEventListener("pointerdown", (event) => {
    const place = placeOf(event.target);
    if (!selects() || !place || event.button !== 0 || event.pointerType === "touch") return;
    event.preventDefault();
    scroller.focus();
    if (!anchor || !event.shiftKey) anchor = place;
    extend(place);
    if (event.shiftKey) return take();
    isDrawing = true;
    scroller.setPointerCapture(event.pointerId);
  });
  scroller.addEventListener("pointermove", (event) => {
    const place = isDrawing && placeOf(document.elementFromPoint(event.clientX, event.clientY));
    if (place && cellAt(place) !== cellAt(head)) extend(place);
  });
  scroller.addEventListener("pointerup", () => {
    if (isDrawing && !isOne()) take();
    isDrawing = false;
  });
  scroller.addEventListener("pointercancel", release);
  // Shift and the arrow keys draw, and letting go of Shift takes what was drawn.
  scroller.addEventListener("keydown", (event) => {
    if (!selects()) return;
    if (event.key === "Escape" && anchor) release();
    else if (steps[event.key]) {
      const [row, column] = head ?? [-1, 0];
      const [down, right] = head ? steps[event.key] : [0, 0];
      const to = [
        Math.max(-1, Math.min(body.children.length - 1, row + down)),
        Math.max(0, Math.min(shown.Columns.length - 1, column + right)),
      ];
      if (!anchor || !event.shiftKey) anchor = to;
      extend(to);
    } else return;
    event.preventDefault();
    event.stopPropagation();
  });
  scroller.addEventListener("keyup", (event) => {
    if (event.key === "Shift" && anchor && !isDrawing && !isOne()) take();
  });

  return {
    element,
    draw(properties) {
      const { Columns = [], Rows = { first: 1, cells: [] }, Visible, Selects } = properties;
      const isOther = shown.Rows !== properties.Rows;
      shown = { ...properties };
      set(element, { hidden: !Visible || Columns.length === 0, "data-selects": Boolean(Selects) });
      fill(
        headers,
        [{ text: "" }, ...Columns],
        (_, i) => i,
        () => h("th", { scope: "col" }, h("small"), h("span")),
        (cell, { text, note: kind }) => {
          set(cell, { title: kind || null });
          set(cell.firstElementChild, { text: kind, hidden: !Selects || !kind });
          set(cell.lastElementChild, { text });
        },
      );
      fill(
        body,
        Rows.cells,
        (_, i) => i,
        () => h("tr"),
        (line, cells, i) => {
          fill(
            line,
            [Rows.first + i, ...cells],
            (_, place) => place,
            () => h("td"),
            (cell, text) => set(cell, { text }),
          );
        },
      );
      if (isOther) release();
      else mark();
    },
    focus() {},
  };
}
