// Elements, made and brought up to date. What stands in them is text and never markup.

// Attributes by their names, listeners as on…; `text` is what stands inside, `value` and `checked` are
// properties. Null and false take an attribute away.
export function set(element, properties) {
  for (const [name, value] of Object.entries(properties)) {
    if (name.startsWith("on")) element.addEventListener(name.slice(2), value);
    else if (name === "text") setText(element, value ?? "");
    else if (name === "value" || name === "checked") {
      if (element[name] !== value) element[name] = value;
    } else if (value === null || value === undefined || value === false) element.removeAttribute(name);
    else if (element.getAttribute(name) !== String(value === true ? "" : value)) {
      element.setAttribute(name, value === true ? "" : value);
    }
  }
  return element;
}

function setText(element, text) {
  if (element.textContent !== String(text)) element.textContent = text;
}

// h("button", {class: "quiet", onclick: run}, "Save")
export function h(name, properties = {}, ...children) {
  const element = set(document.createElement(name), properties);
  element.append(...children.flat().filter((child) => child !== null && child !== undefined && child !== false));
  return element;
}

const made = new WeakMap();

// The children of `parent` are one element for each item: made once, kept by its key, brought up to date
// and into the items' order.
export function fill(parent, items, keyOf, make, update) {
  const old = made.get(parent) ?? new Map();
  const fresh = new Map();
  let place = parent.firstElementChild;
  items.forEach((item, index) => {
    const key = keyOf(item, index);
    const element = old.get(key) ?? make(item);
    old.delete(key);
    fresh.set(key, element);
    if (element === place) place = place.nextElementSibling;
    else parent.insertBefore(element, place);
    update?.(element, item, index);
  });
  for (const element of old.values()) element.remove();
  made.set(parent, fresh);
  return fresh;
}

// The children are exactly these. Those that stand already keep their focus.
export function place(parent, ...children) {
  const wanted = children.flat().filter(Boolean);
  const isSame =
    parent.childNodes.length === wanted.length && wanted.every((child, i) => parent.childNodes[i] === child);
  if (!isSame) parent.replaceChildren(...wanted);
}

// What is not to be used stays within reach of the keyboard, and says why.
export function enable(element, isEnabled, reason = "") {
  set(element, { "aria-disabled": isEnabled ? null : "true", title: isEnabled ? null : reason || null });
  if (!isEnabled && reason) element.setAttribute("aria-description", reason);
  else element.removeAttribute("aria-description");
}

export const isUsable = (element) => element.getAttribute("aria-disabled") !== "true";

let ids = 0;
export const freshId = (prefix) => `${prefix}-${++ids}`;

// "&Column…" with its access key underlined, which is seen while Alt is held.
export function mnemonic(caption) {
  const at = caption.search(/&[^&]/);
  const plain = (text) => text.replaceAll("&&", "&");
  if (at < 0) return [plain(caption)];
  return [plain(caption.slice(0, at)), h("u", { class: "key", text: caption[at + 1] }), plain(caption.slice(at + 2))];
}

export const withoutKey = (caption) => caption.replace(/&(.)/g, "$1");
export const accessKey = (caption) => caption.match(/&([^&])/)?.[1].toLowerCase() ?? "";

// Several elements of which one is in the tab order; `next` leads from the present one to another.
export function rove(elements, focused) {
  for (const element of elements) element.tabIndex = element === focused ? 0 : -1;
}
