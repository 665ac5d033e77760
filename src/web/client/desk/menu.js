// Menus: of buttons, and in the place that was clicked.
// An item: {text, keys, enabled, reason, checked, group: a line before it, items: a menu of its own, run}.

import { accessKey, freshId, h, mnemonic, set } from "./dom.js";
import { icon } from "./icons.js";

let closeOpen = null;

export function openMenu({ label, items, anchor, point }) {
  closeOpen?.();
  const returnTo = document.activeElement;
  const menu = build(items, label, close);
  (anchor?.closest("dialog") ?? document.body).append(menu);

  function close() {
    if (closeOpen !== close) return;
    closeOpen = null;
    menu.remove();
    set(anchor ?? menu, { "aria-expanded": null });
    if (document.activeElement === document.body || !document.activeElement) returnTo?.focus?.({ preventScroll: true });
  }
  closeOpen = close;
  menu.addEventListener("toggle", (event) => event.newState === "closed" && close());
  menu.showPopover();
  if (anchor && !point) set(anchor, { "aria-expanded": "true" });
  lay(menu, point ?? { box: anchor.getBoundingClientRect() });
  first(menu)?.focus();
}

// At a point, or below a box; inside of the window in any case.
function lay(menu, { x, y, box, isBeside }) {
  const [width, height] = [menu.offsetWidth, menu.offsetHeight];
  let left = box ? (isBeside ? box.right - 2 : box.left) : x;
  let top = box ? (isBeside ? box.top - 5 : box.bottom + 4) : y;
  if (left + width > innerWidth - 8) left = isBeside ? box.left - width + 2 : Math.max(8, (box?.right ?? x) - width);
  if (top + height > innerHeight - 8)
    top = Math.max(8, box && !isBeside ? box.top - height - 4 : innerHeight - height - 8);
  menu.style.left = `${left}px`;
  menu.style.top = `${top}px`;
}

const entries = (menu) => [...menu.querySelectorAll(":scope > .entry > [role^=menuitem]")];
const first = (menu) => entries(menu)[0];

function build(items, label, close) {
  const menu = h("div", { class: "menu", role: "menu", "aria-label": label, popover: "auto", id: freshId("menu") });
  for (const item of items) menu.append(entry(item, menu, close));
  menu.addEventListener("keydown", (event) => key(event, menu));
  return menu;
}

function entry(item, menu, close) {
  const isCheck = item.checked !== undefined;
  const isEnabled = item.enabled !== false;
  const hint = !isEnabled && item.reason ? item.reason : "";
  const button = h(
    "button",
    {
      type: "button",
      role: isCheck ? (item.isRadio ? "menuitemradio" : "menuitemcheckbox") : "menuitem",
      tabindex: "-1",
      "aria-checked": isCheck ? String(Boolean(item.checked)) : null,
      "aria-disabled": isEnabled ? null : "true",
      "aria-haspopup": item.items ? "menu" : null,
      "aria-description": hint || null,
      title: hint || null,
      "data-key": accessKey(item.text) || null,
    },
    h("span", { class: "mark", "aria-hidden": "true" }, item.checked ? icon("check") : null),
    h("span", { class: "text" }, mnemonic(item.text)),
    h("span", { class: "keys" }, item.items ? icon("right") : (item.keys ?? "")),
  );
  const wrapper = h("div", { class: "entry", role: "none", "data-group": Boolean(item.group) }, button);
  if (item.items) {
    const inner = build(item.items, item.text, close);
    wrapper.append(inner);
    const openInner = () => {
      if (inner.matches(":popover-open")) return;
      inner.showPopover();
      lay(inner, { box: button.getBoundingClientRect(), isBeside: true });
    };
    button.addEventListener("click", () => {
      openInner();
      first(inner)?.focus();
    });
    wrapper.addEventListener("pointerenter", () => isEnabled && openInner());
    wrapper.addEventListener("pointerleave", () => inner.hidePopover());
  } else {
    button.addEventListener("click", () => {
      if (!isEnabled) return;
      close();
      item.run();
    });
  }
  button.addEventListener("pointerenter", () => button.focus({ preventScroll: true }));
  return wrapper;
}

function key(event, menu) {
  const all = entries(menu);
  const at = all.indexOf(document.activeElement);
  if (at < 0) return;
  const goTo = (place) => all[(place + all.length) % all.length].focus();
  if (event.key === "ArrowDown") goTo(at + 1);
  else if (event.key === "ArrowUp") goTo(at - 1);
  else if (event.key === "Home") goTo(0);
  else if (event.key === "End") goTo(-1);
  else if (event.key === "ArrowRight" && all[at].getAttribute("aria-haspopup")) all[at].click();
  else if (event.key === "ArrowLeft" && menu.parentElement.classList.contains("entry")) {
    menu.parentElement.firstElementChild.focus();
    menu.hidePopover();
  } else if (event.key === "Tab" || event.key === "Escape") closeOpen?.();
  else if (event.key.length === 1 && event.key !== " " && !event.ctrlKey) {
    const wanted = event.key.toLowerCase();
    const fits = (button) =>
      button.dataset.key === wanted || button.querySelector(".text").textContent.toLowerCase().startsWith(wanted);
    const found = [...all.slice(at + 1), ...all.slice(0, at + 1)].find(fits);
    if (!found) return;
    found.focus();
    if (event.altKey) found.click();
  } else return;
  event.preventDefault();
  event.stopPropagation();
}
