// The rows of a connection as a table to read, to take columns and cells from, and to see what is shown of them.

import { fill, h, set } from "./dom.js";
import { icon } from "./icons.js";
import { connectionOf } from "./store.js";

const page = 200;

export function createGrid(desk) {
  const { state, watch, change } = desk;
  const headers = h("tr", { role: "row" });
  const body = h("tbody", { role: "rowgroup" });
  const table = h("table", { role: "grid", "aria-label": "Data" }, h("thead", { role: "rowgroup" }, headers), body);
  const note = h("p", { class: "note" });
  const element = h("div", { class: "grid" }, table, note);

  let shown = { number: "", columns: [], rows: [], total: 0 };
  let place = { row: 1, column: 0 }; // of the keyboard; row 0 are the headers
  let asked = null;

  // Reads as many rows as are shown already, or one page more.
  async function load({ more = false } = {}) {
    const { tab: number } = state;
    if (!connectionOf(state, number)) return;
    const isSame = shown.number === number;
    const count = Math.max(page, isSame ? shown.rows.length : 0) + (more ? page : 0);
    const ticket = (asked = {});
    const from = more ? shown.rows.length + 1 : 1;
    const fresh = await desk.read(`data/${number}?from=${from}&count=${more ? page : count}`, { isQuiet: true });
    if (!fresh || ticket !== asked || state.tab !== number) return;
    const rows = more ? [...shown.rows, ...fresh.rows] : fresh.rows;
    shown = { number, columns: fresh.columns, rows, total: fresh.total };
    if (!isSame) {
      place = { row: 1, column: 0 };
      element.scrollTo(0, 0);
    }
    draw();
  }

  const keyOf = (row, column) => `${shown.number}/${shown.columns[column]}/${row}`;
  const what = (column, row) => ({
    connection: shown.number,
    column: shown.columns[column],
    row,
    valueAt: (at) => shown.rows[at - 1]?.[column] ?? "",
  });

  function makeHeader() {
    const cell = h("th", { role: "columnheader", scope: "col" }, icon("grip"), h("span", {}));
    const column = () => Number(cell.dataset.column);
    cell.addEventListener("pointerdown", (event) => {
      focusOn(0, column());
      event.preventDefault();
      desk.linking.follow(event, what(column(), null), () => toggle(column(), null));
    });
    return cell;
  }

  function makeCell() {
    const cell = h("td", { role: "gridcell" });
    const at = () => [Number(cell.parentElement.dataset.row), Number(cell.dataset.column)];
    cell.addEventListener("pointerdown", (event) => {
      const [row, column] = at();
      focusOn(row, column);
      event.preventDefault();
      desk.linking.follow(event, what(column, row), () => {
        if (state.held) desk.linking.drop();
      });
    });
    return cell;
  }

  // Takes the column or cell into the hand, or puts it back.
  function toggle(column, row) {
    const { held } = state;
    if (held?.connection === shown.number && held.column === shown.columns[column] && held.row === row)
      return desk.linking.drop();
    desk.linking.hold(what(column, row));
  }

  const makeRow = () => h("tr", { role: "row" });

  function draw() {
    set(table, { "aria-rowcount": shown.total + 1, "aria-colcount": shown.columns.length + 1 });
    const columns = shown.columns.map((name, column) => ({ name, column }));
    fill(
      headers,
      [null, ...columns],
      (each) => each?.column ?? "row",
      (each) => (each ? makeHeader() : h("th", { role: "columnheader", class: "number", scope: "col", text: "row" })),
      (cell, each) => {
        if (!each) return;
        set(cell, { "data-column": each.column, "aria-colindex": each.column + 2 });
        set(cell.lastElementChild, { text: each.name });
      },
    );
    fill(
      body,
      shown.rows,
      (_, i) => i,
      makeRow,
      (line, cells, i) => {
        set(line, { "data-row": i + 1, "aria-rowindex": i + 2 });
        fill(
          line,
          [null, ...columns],
          (each) => each?.column ?? "row",
          (each) => (each ? makeCell() : h("th", { role: "rowheader", class: "number", scope: "row" })),
          (cell, each) => {
            if (each)
              set(cell, {
                text: cells[each.column] ?? "",
                "data-column": each.column,
                "aria-colindex": each.column + 2,
              });
            else set(cell, { text: i + 1 });
          },
        );
      },
    );
    const connection = connectionOf(state, shown.number);
    const left = shown.total - shown.rows.length;
    set(note, {
      text:
        left > 0
          ? `${left.toLocaleString()} more rows`
          : shown.rows.length > 0
            ? ""
            : connection?.state === "opening"
              ? "It is being opened …"
              : "No rows.",
    });
    mark();
  }

  const cellAt = (row, column) => (row === 0 ? headers : body.children[row - 1])?.children[column + 1];

  // What is used on the slide, lit, in hand, under the keyboard.
  function mark() {
    const used = state.used?.[shown.number] ?? {};
    const lit = new Set(state.lit.cells);
    const { held, cursor } = state;
    const isHeld = (column, row) =>
      held?.connection === shown.number && held.column === shown.columns[column] && held.row === row;
    shown.columns.forEach((name, column) => {
      const header = headers.children[column + 1];
      if (header)
        set(header, {
          "aria-selected": String(isHeld(column, null)),
          tabindex: place.row === 0 && place.column === column ? 0 : -1,
          "data-used": Boolean(used[name]),
        });
    });
    shown.rows.forEach((_, i) => {
      const line = body.children[i];
      if (!line) return;
      const row = i + 1;
      set(line, { "data-cursor": cursor?.connection === shown.number && cursor.row === row });
      shown.columns.forEach((name, column) => {
        const cell = line.children[column + 1];
        if (!cell) return;
        set(cell, {
          "data-used": Boolean(used[name]?.[row]),
          "data-lit": lit.has(keyOf(row, column)),
          "aria-selected": String(isHeld(column, row)),
          tabindex: place.row === row && place.column === column ? 0 : -1,
        });
      });
    });
  }

  function focusOn(row, column) {
    place = {
      row: Math.max(0, Math.min(shown.rows.length, row)),
      column: Math.max(0, Math.min(shown.columns.length - 1, column)),
    };
    if (place.row > 0) {
      const cursor = { connection: shown.number, row: place.row, column: shown.columns[place.column] };
      const isSame = ["connection", "row", "column"].every((name) => state.cursor?.[name] === cursor[name]);
      if (!isSame) {
        change({ cursor });
        desk.act("cursor", cursor);
      }
    }
    mark();
    cellAt(place.row, place.column)?.focus();
  }

  // Which cell lies under the pointer lights up the shapes that show it.
  function light(cell) {
    const row = Number(cell?.parentElement.dataset.row ?? 0);
    const column = cell ? Number(cell.dataset.column) : 0;
    const uses = row ? (state.used?.[shown.number]?.[shown.columns[column]]?.[row] ?? []) : [];
    const shapes = uses.filter(([slide]) => slide === state.slide?.id).map(([, shape]) => shape);
    if (shapes.length === 0 && state.lit.shapes.length === 0) return;
    change({ lit: { shapes, cells: shapes.length > 0 ? [keyOf(row, column)] : [] } });
  }
  body.addEventListener("pointerover", (event) => !state.held && light(event.target.closest("td")));
  body.addEventListener("pointerleave", () => !state.held && light(null));

  function choose() {
    const { row, column } = place;
    const chosen = what(column, row || null);
    if (desk.linking.chosenTargets().length > 0) desk.linking.toSelection(chosen);
    else {
      toggle(column, row || null);
      if (state.held) desk.goTo("stage");
    }
  }
  body.addEventListener("dblclick", (event) => event.target.closest("td") && choose());

  table.addEventListener("keydown", (event) => {
    const steps = {
      ArrowUp: [-1, 0],
      ArrowDown: [1, 0],
      ArrowLeft: [0, -1],
      ArrowRight: [0, 1],
      Home: [0, -1e6],
      End: [0, 1e6],
      PageUp: [-10, 0],
      PageDown: [10, 0],
    };
    const step = !event.altKey && steps[event.key];
    if (step) focusOn(place.row + step[0], place.column + step[1]);
    else if (event.key === "Enter" || event.key === " ") choose();
    else if (event.key === "Escape" && state.held) desk.linking.drop();
    else return;
    event.preventDefault();
    event.stopPropagation();
  });

  table.addEventListener("contextmenu", (event) => {
    const cell = event.target.closest("[data-column]");
    if (!cell) return;
    event.preventDefault();
    const row = Number(cell.parentElement.dataset.row ?? 0) || null;
    const chosen = what(Number(cell.dataset.column), row);
    const count = desk.linking.chosenTargets().length;
    const without = count > 0 ? "" : "Select shapes on the slide first.";
    desk.openMenu({
      label: chosen.column,
      anchor: cell,
      point: event.clientX ? { x: event.clientX, y: event.clientY } : null,
      items: [
        {
          text: count > 1 ? `Link to the ${count} selected shapes` : "Link to selection",
          keys: "Enter",
          enabled: count > 0,
          reason: without,
          run: () => desk.linking.toSelection(chosen),
        },
        { text: "Link by clicking a shape", run: () => desk.linking.hold(chosen) },
        {
          text: `Fill the selection with rows from ${row ?? 1}`,
          enabled: count > 0,
          reason: without,
          run: () => desk.linking.fillFrom(chosen),
        },
        { ...desk.uses.item(chosen.connection, chosen.column), group: true },
      ],
    });
  });

  element.addEventListener("scroll", () => {
    const isNearEnd = element.scrollTop + element.clientHeight > element.scrollHeight - 300;
    if (isNearEnd && shown.rows.length < shown.total && shown.number === state.tab && !asked?.isMore) {
      load({ more: true });
      asked.isMore = true;
    }
  });

  let seen;
  watch(["tab", "data", "connections", "preview"], () => {
    const connection = connectionOf(state, state.tab);
    const now = connection && `${state.tab} ${state.data?.[state.tab]} ${connection.state} ${connection.rows} ${connection.columns} ${state.preview}`;
    if (now && now !== seen) load();
    seen = now;
    // The columns are known before the first rows have come.
    if (connection && shown.number !== state.tab) {
      shown = { number: state.tab, columns: connection.columns ?? [], rows: [], total: 0 };
      draw();
    }
  });
  watch(["used", "lit", "held", "cursor", "slide"], mark);

  return { element };
}
