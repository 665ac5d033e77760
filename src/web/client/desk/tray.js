// The data at the bottom: a tab for each connection over its rows, one for the findings of the last check.

import { enable, fill, h, place, set } from "./dom.js";
import { createFindings } from "./findings.js";
import { createGrid } from "./grid.js";
import { icon } from "./icons.js";
import { createStart, connectItems } from "./start.js";
import { connectionOf } from "./store.js";

const checkTab = "check";
const time = (seconds) => `${Math.floor(seconds / 60)}:${String(Math.floor(seconds % 60)).padStart(2, "0")}`;

function trouble({ state, seconds }) {
  if (state === "failing") return `no answer ${time(seconds ?? 0)}`;
  if (state === "opening") return "opening …";
  return "";
}

function stateText(connection) {
  if (!connection) return "";
  const { state, rows, read, asked, message, isSample } = connection;
  if (isSample) return `${rows} rows, made up and not saved; your own data take their place`;
  if (state === "failing") return message || "It cannot be read.";
  if (state === "opening") return message || "It is being opened.";
  const parts = [`${rows.toLocaleString()} ${rows === 1 ? "row" : "rows"}`];
  if (read) parts.push(`read ${read}`);
  if (asked) parts.push(`asked ${asked}`);
  if (state === "stale" && message) parts.push(message);
  return parts.join(", ");
}

export function createTray(desk) {
  const { state, watch, change } = desk;
  const footer = document.getElementById("tray");
  const tabs = h("div", { class: "tabs", role: "tablist", "aria-label": "Connections" });
  const connect = h(
    "button",
    { type: "button", class: "connect", "aria-haspopup": "menu" },
    icon("plus"),
    "Connect data",
  );
  connect.addEventListener("click", () =>
    desk.openMenu({ label: "Connect data", items: connectItems(desk), anchor: connect }),
  );
  const told = h("p", { class: "told" });
  const toSelection = h("button", { type: "button", class: "outlined", hidden: true });
  const refresh = h(
    "button",
    { type: "button", class: "quiet square", "aria-label": "Read this connection anew", title: "Read anew" },
    icon("refresh"),
  );
  refresh.addEventListener("click", () => desk.press("cbrRefresh"));
  const panel = h("div", { class: "panel", role: "tabpanel" });
  footer.append(h("div", { class: "heading" }, tabs, connect, told, toSelection, refresh), panel);

  const grid = createGrid(desk);
  const findings = createFindings(desk);
  const start = createStart(desk);

  const numbers = () => [
    ...(state.connections ?? []).map(({ number }) => number),
    ...(state.findings ? [checkTab] : []),
  ];

  const make = (each) => {
    const key = each.number ?? checkTab;
    const tab = h(
      "button",
      { type: "button", role: "tab", id: `tab-${key}` },
      h("span", { class: "dot", "aria-hidden": "true" }),
      h("span", { class: "name" }),
      h("span", { class: "trouble" }),
    );
    tab.addEventListener("click", () => change({ tab: key }));
    if (key !== checkTab) {
      tab.addEventListener("dblclick", () => desk.act("connect", { number: key }));
      tab.addEventListener("contextmenu", (event) => openTabMenu(event, tab, key));
    }
    return tab;
  };

  function openTabMenu(event, tab, number) {
    event.preventDefault();
    desk.openMenu({
      label: "Connection",
      anchor: tab,
      point: event.clientX ? { x: event.clientX, y: event.clientY } : null,
      items: [
        desk.uses.item(number),
        {
          text: "Change this connection…",
          enabled: !connectionOf(state, number)?.isSample,
          reason: "Sample data have no source.",
          run: () => desk.act("connect", { number }),
        },
        { text: "All connections…", run: () => desk.press("cbrSlideShow") },
      ],
    });
  }

  function drawTabs() {
    const all = numbers();
    // The tab that was chosen may have gone; one that is new is what its author wants to see.
    const fresh = known && all.find((number) => number !== checkTab && !known.includes(number));
    known = all;
    if (fresh) return change({ tab: fresh });
    if (!all.includes(state.tab) && state.tab !== (all[0] ?? "")) return change({ tab: all[0] ?? "" });
    const items = [...(state.connections ?? []), ...(state.findings ? [{ isCheck: true, state: "" }] : [])];
    fill(
      tabs,
      items,
      ({ number }) => number ?? checkTab,
      make,
      (tab, each) => {
        const isShown = (each.number ?? checkTab) === state.tab;
        const count = state.findings?.filter(({ gravity }) => gravity !== "note").length ?? 0;
        set(tab, {
          "aria-selected": String(isShown),
          "aria-controls": isShown ? "tray-panel" : null,
          tabindex: isShown ? 0 : -1,
          "data-sample": Boolean(each.isSample),
          "data-state": each.isCheck ? (count > 0 ? "failing" : "fresh") : each.state,
          title: each.isCheck ? null : [each.source, stateText(each)].filter(Boolean).join("\n"),
        });
        const [, name, note] = tab.children;
        set(name, {
          text: each.isCheck
            ? `Check: ${count === 0 ? "all is well" : count === 1 ? "1 finding" : `${count} findings`}`
            : `${each.number} ${each.description}`,
        });
        set(note, { text: each.isCheck ? "" : trouble(each) });
      },
    );
  }
  let known = null;

  tabs.addEventListener("keydown", (event) => {
    const step = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
    if (!step) return;
    event.preventDefault();
    const all = numbers();
    change({ tab: all[(all.indexOf(state.tab) + step + all.length) % all.length] });
    tabs.querySelector("[aria-selected=true]")?.focus();
  });

  function draw() {
    if (!state.deck) return;
    drawTabs();
    const connection = connectionOf(state, state.tab);
    const isStart = !connection && state.tab !== checkTab;
    set(panel, { id: "tray-panel", "aria-labelledby": isStart ? null : `tab-${state.tab}` });
    set(footer, { "data-start": isStart });
    set(told, { text: stateText(connection), "data-state": connection?.state ?? null });
    set(refresh, { hidden: !connection || connection.isSample });
    enable(refresh, connection?.state !== "opening", "It is being opened.");
    place(panel, isStart ? start.element : state.tab === checkTab ? findings.element : grid.element);
  }

  function drawOffer() {
    const { held } = state;
    const count = held && !held.isDragged ? desk.linking.chosenTargets().length : 0;
    set(toSelection, {
      hidden: count === 0,
      text: held ? `Link ${held.column} to ${count === 1 ? "1 shape" : `${count} shapes`}` : "",
    });
  }
  toSelection.addEventListener("click", () => state.held && desk.linking.toSelection(state.held));

  watch(["deck", "connections", "findings", "tab"], draw);
  watch(["held", "chosen"], drawOffer);
  return { focus: () => (panel.querySelector("[tabindex='0'], button") ?? connect).focus() };
}
