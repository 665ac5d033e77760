// The text of a shape that scrolls through rows glides in: the old one rises a little and
// fades, then the new one comes from below, both inside the shape's box. They are
// pictures laid over the shape, which itself holds the new text from the start.

import { isMotionWanted } from "./transitions.js";

const duration = 400;
const shortestPause = 1.5 * duration;
const longestWay = 12; // px of the slide
const mostMoving = 24; // texts; more of them at once only fade, which costs half

const running = new Map(); // by the shape's id
const changed = new Map(); // when each shape changed last

export function finishGlide(id) {
  running.get(id)?.();
}

export function finishGlides() {
  for (const finish of [...running.values()]) finish();
}

const textOf = (shape) => shape.querySelector(":scope > .t");

// Whether the text of the shape that has taken the place of `old` may glide in.
function mayGlide(old, fresh) {
  const now = performance.now();
  const pause = now - (changed.get(fresh.id) ?? -Infinity);
  changed.set(fresh.id, now);
  return (
    pause >= shortestPause &&
    isMotionWanted() &&
    fresh.closest(".frame.current") &&
    textOf(old) &&
    textOf(fresh) &&
    textOf(old).textContent !== textOf(fresh).textContent &&
    getComputedStyle(textOf(fresh)).visibility === "visible"
  );
}

// Texts are laid out larger than they are shown, as the slides' style sheet says.
const finenessOf = (text) => Number(getComputedStyle(text).getPropertyValue("--fineness"));
const heightOf = (text) => [...text.children].reduce((sum, part) => sum + part.offsetHeight, 0) / finenessOf(text);

function start({ fresh, layer, leaving, entering, height }, isMoving) {
  const way = isMoving ? Math.min(height / 4, longestWay) : 0;
  // A text that is higher than its shape is seen outside of it as well.
  layer.style.clipPath = `inset(${Math.min(0, fresh.offsetHeight - height)}px -100vw)`;
  const timing = { duration, fill: "both" };
  const here = { opacity: 1, translate: "0 0" };
  const above = { opacity: 0, translate: `0 ${-way}px` };
  const below = { opacity: 0, translate: `0 ${way}px` };
  const animations = [
    leaving.animate([{ ...here, easing: "ease-in" }, { ...above, offset: 0.55 }, above], timing),
    entering.animate([below, { ...below, offset: 0.45, easing: "ease-out" }, here], timing),
  ];
  fresh.classList.add("gliding");
  const finish = () => {
    fresh.classList.remove("gliding");
    for (const animation of animations) animation.cancel();
    layer.remove();
    running.delete(fresh.id);
  };
  running.set(fresh.id, finish);
  animations[0].onfinish = () => running.get(fresh.id) === finish && finish();
}

// `pairs` are shapes, [old, fresh], of which the fresh ones stand on the page now.
export function glide(pairs) {
  const plans = [];
  for (const [old, fresh] of pairs) {
    if (!mayGlide(old, fresh)) continue;
    const layer = fresh.cloneNode(false);
    layer.removeAttribute("id");
    layer.setAttribute("aria-hidden", "true");
    layer.classList.add("glide");
    const leaving = textOf(old);
    const entering = textOf(fresh).cloneNode(true);
    layer.append(leaving, entering);
    fresh.after(layer);
    plans.push({ fresh, layer, leaving, entering });
  }
  // All are measured before the first is moved, so that the page is laid out once.
  for (const plan of plans) plan.height = Math.max(heightOf(plan.leaving), heightOf(plan.entering));
  for (const plan of plans) start(plan, plans.length <= mostMoving);
}
