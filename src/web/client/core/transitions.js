// How one slide takes the place of another. Directions say where the movement goes.

const start = { l: [1, 0], r: [-1, 0], u: [0, 1], d: [0, -1], lu: [1, 1], ru: [-1, 1], ld: [1, -1], rd: [-1, -1] };
const shift = ([x, y]) => `translate(${x * 100}%, ${y * 100}%)`;
const still = "translate(0, 0)";
const whole = "inset(0)";
const wipes = {
  l: "inset(0 0 0 100%)",
  r: "inset(0 100% 0 0)",
  u: "inset(100% 0 0 0)",
  d: "inset(0 0 100% 0)",
};

const kinds = {
  fade: () => ({ entering: { opacity: [0, 1] } }),
  push: (direction) => {
    const [x, y] = start[direction];
    return {
      entering: { transform: [shift([x, y]), still] },
      leaving: { transform: [still, shift([-x, -y])] },
    };
  },
  cover: (direction) => ({ entering: { transform: [shift(start[direction]), still] } }),
  uncover: (direction) => {
    const [x, y] = start[direction];
    return { leaving: { transform: [still, shift([-x, -y])] }, isLeavingAbove: true };
  },
  wipe: (direction) => ({ entering: { clipPath: [wipes[direction] ?? wipes.l, whole] } }),
  split: (direction) => {
    const [way, sense] = direction.split("-");
    const closed = way === "horz" ? "inset(50% 0)" : "inset(0 50%)";
    return sense === "in"
      ? { leaving: { clipPath: [whole, closed] }, isLeavingAbove: true }
      : { entering: { clipPath: [closed, whole] } };
  },
  cut: () => null,
  none: () => null,
};
const throughBlack = {
  fade: { entering: { opacity: [0, 0, 1] }, leaving: { opacity: [1, 0, 0] } },
  cut: {
    entering: { opacity: [0, 0, 1, 1], offset: [0, 0.5, 0.5, 1] },
    leaving: { opacity: [1, 0, 0], offset: [0, 0.01, 1] },
  },
};

// From one frame to the next, for what must not be seen before its time. What is left behind goes a while later, so
// that pages on one processor do not tidy up while others have yet to change.
const sudden = { plan: { entering: { opacity: [0, 1, 1], offset: [0, 0.004, 1] } }, duration: 250 };

const motion = matchMedia("(prefers-reduced-motion: reduce)");
const nothing = () => {};
let finish = nothing;

export function isMotionWanted() {
  return !motion.matches;
}

// Ends the transition that is under way, if one is.
export function finishTransition() {
  finish();
}

export function isTransitionRunning() {
  return finish !== nothing;
}

// Moves from one frame to the other, from the time `begin` on where that is known, and not seen before; `done` is
// called once, when it is over.
export function playTransition(leaving, entering, { kind, direction, duration, throughBlack: isThroughBlack }, begin, done) {
  let plan = isThroughBlack ? throughBlack[kind] : (kinds[kind] ?? kinds.fade)(direction);
  if (!plan || !(duration > 0) || !isMotionWanted()) {
    if (begin > performance.now()) ({ plan, duration } = sudden);
    else return done();
  }
  const timing = { duration, easing: plan.entering?.opacity ? "linear" : "ease-in-out", fill: "both" };
  leaving.classList.add("leaving");
  leaving.classList.toggle("above", Boolean(plan.isLeavingAbove));
  const animations = [
    plan.leaving && leaving.animate(plan.leaving, timing),
    plan.entering && entering.animate(plan.entering, timing),
  ].filter(Boolean);
  // Screens of one wall are in step, whenever each has its frames.
  if (begin !== null) for (const animation of animations) animation.startTime = begin;
  finish = () => {
    finish = nothing;
    for (const animation of animations) animation.cancel();
    leaving.classList.remove("leaving", "above");
    done();
  };
  const own = finish;
  animations[0].onfinish = () => finish === own && finish();
}

// A shape that comes or goes by a click. (What has gone is hidden by the page's rules.)
export function playBuild(element, { isEntrance, kind, direction, duration }, { width, height }) {
  if (!isMotionWanted() || kind === "appear" || !(duration > 0)) return;
  if (!isEntrance) {
    element.animate({ visibility: ["visible", "visible"], opacity: [1, 0] }, { duration });
  } else if (kind === "wipe") {
    element.animate({ clipPath: [wipes[direction] ?? wipes.l, "inset(0)"] }, { duration });
  } else if (kind === "fly") {
    const [x, y] = start[direction] ?? start.u;
    element.animate({ translate: [`${x * width}px ${y * height}px`, "0 0"] }, { duration, easing: "ease-out" });
  } else {
    element.animate({ opacity: [0, 1] }, { duration });
  }
}
