// The slides on the stage: the current one in front, the next one loaded behind it.

import { loadChartsFor } from "./chart_loader.js";
import { finishGlide, finishGlides, glide } from "./glides.js";
import { frameAt, isAhead, momentPassed, timeOf } from "./moment.js";
import { isInsideSvg, parse, patch } from "./patch.js";
import { finishTransition, isTransitionRunning, playBuild, playTransition } from "./transitions.js";

const longestLoad = 10000;
const sides = ["left", "top", "width", "height"];
const stage = document.getElementById("stage");

// Of a table no more than what has changed, each cell by its index.
function changeCells(shape, cells) {
  if (!stage.contains(shape)) return;
  const places = shape.querySelectorAll("td");
  for (const [index, html] of cells) places[index]?.replaceWith(parse(html));
}

// `isAnimated` lets the texts glide in of the shapes that may.
export function changeShapes(changes, isAnimated) {
  const gliding = [];
  for (const { id, html, cells, glides } of changes) {
    const old = document.getElementById(id);
    if (cells) changeCells(old, cells);
    const fresh = !cells && old && stage.contains(old) && parse(html, isInsideSvg(old));
    if (!fresh) continue;
    finishGlide(id);
    patch(old, fresh);
    if (glides && fresh.isConnected) gliding.push([old, fresh]);
  }
  if (isAnimated) glide(gliding);
}

const isOfOldDeck = (frame) => frame?.dataset.old !== undefined;

// The frame that shows `slide`: one that stands already, with what is new in it,
// or a new one.
function frameFor(slide) {
  const fresh = slide && parse(slide.html);
  if (!fresh) return null;
  for (const frame of stage.children) {
    if (frame.firstElementChild?.id === fresh.id && !isOfOldDeck(frame)) {
      patch(frame.firstElementChild, fresh);
      return frame;
    }
  }
  const frame = document.createElement("div");
  frame.className = "frame";
  frame.append(fresh);
  stage.append(frame);
  return frame;
}

// Films and sounds run while their slide is in front and begin anew when it comes
// back. What a browser does not let be heard unasked plays without its sound.
function playMedia(frame, isCurrent) {
  for (const media of frame.querySelectorAll("[data-plays]")) {
    if (!isCurrent) {
      media.pause();
      if (media.currentTime > 0) media.currentTime = 0;
    } else if (media.paused && !media.ended) {
      media.play().catch(() => {
        media.muted = true;
        media.play().catch(() => {});
      });
    }
  }
}

// Frames that hold neither the current nor the next slide go, once they have left.
let wanted = [];
function dropOthers() {
  for (const frame of [...stage.children]) {
    if (!wanted.includes(frame) && !frame.classList.contains("leaving")) frame.remove();
  }
}

// Where the slide on the stage is another one of the same deck, the frame that it stands in.
function frameToLeave(state) {
  const front = stage.querySelector(".frame.current");
  const isSame = front?.firstElementChild.id === `s${state.current?.index}` || isOfOldDeck(front);
  return state.current && !isSame ? front : null;
}

function putForward(current) {
  for (const frame of stage.children) {
    frame.classList.toggle("current", frame === current);
    frame.inert = frame !== current;
  }
  wanted = [current];
}

// `behind` has the frames that were made for the state before.
function swapTo(state, isAnimated, behind) {
  finishGlides();
  const before = frameToLeave(state);
  if (before || !state.current) finishTransition();
  for (const side of sides) stage.style.setProperty(`--slide-${side}`, `${state[side]}px`);
  const current = behind.current ?? frameFor(state.current);
  const next = behind.next ?? frameFor(state.next);
  putForward(current);
  wanted.push(next);
  for (const frame of stage.children) playMedia(frame, frame === current);
  if (before && isAnimated) playTransition(before, current, state.transition, timeOf(state.at), dropOthers);
  dropOthers();
}

function twoFrames() {
  return new Promise((resolve) => requestAnimationFrame(() => requestAnimationFrame(resolve)));
}

// Resolves when the browser holds what is drawn from files, or will not get it.
function picturesLoaded(html) {
  const names = new Set(html.match(/\bassets\/\w+\.(?:png|jpe?g|gif|svg|webp|bmp)\b/g));
  const load = (name) => {
    const image = new Image();
    image.src = `/${name}`;
    return image.decode().catch(() => {});
  };
  return Promise.all([...names].map(load));
}

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

// Another deck has other slides under the same names. They are drawn behind the old
// ones until all of them can be seen, and then change places with them at once.
async function prepareDeck(state) {
  finishTransition();
  for (const frame of stage.children) frame.dataset.old = "";
  for (const slide of [state.current, state.next]) frameFor(slide);
  const html = `${state.current?.html}${state.next?.html}`;
  await Promise.race([picturesLoaded(html), pause(longestLoad)]);
  await Promise.race([twoFrames(), pause(200)]); // a hidden page has no frames
}

// The link to the slides' styles. Another deck's are loaded before its slides
// are shown, which are thus never seen bare.
async function useStylesheet(name) {
  const old = document.getElementById("slide-styles");
  const href = `/assets/${name}`;
  if (!name || old?.getAttribute("href") === href) return;
  const link = document.createElement("link");
  link.rel = "stylesheet";
  link.href = href;
  const isLoaded = await new Promise((resolve) => {
    link.onload = () => resolve(true);
    link.onerror = () => resolve(false);
    setTimeout(() => resolve(false), longestLoad);
    document.head.append(link);
  });
  if (isLoaded) {
    old?.remove();
    link.id = "slide-styles";
  } else {
    link.remove(); // the next state tries again
  }
}

// What was hidden or marked on a slide stays so while it leaves.
const leavingRules = document.head.appendChild(document.createElement("style"));
function keepRulesForLeaving(rules) {
  leavingRules.textContent = [...rules.sheet.cssRules]
    .map((rule) => `${rule.selectorText.replaceAll("#", ".leaving #")}{${rule.style.cssText}}`)
    .join("\n");
}

// What comes stands behind the slide in front and is drawn out of sight; that one stays as it is.
function standBehind(state) {
  const front = stage.querySelector(".frame.current");
  const isInFront = (slide) => front?.firstElementChild.id === `s${slide.index}` && !isOfOldDeck(front);
  const frames = {};
  for (const place of ["current", "next"]) {
    const slide = state[place];
    const frame = slide && !isInFront(slide) && frameFor(slide);
    if (!frame) continue;
    frame.inert = true;
    wanted.push(frame);
    frames[place] = frame;
  }
  return frames;
}

// Whether nothing is to be done at the moment but to show another slide.
function canBeginAhead(state) {
  const { blank, ended } = document.documentElement.dataset;
  return (
    frameToLeave(state) &&
    !isTransitionRunning() &&
    state.builds.length === 0 &&
    blank === state.blank &&
    (ended !== undefined) === state.ended &&
    sides.every((side) => stage.style.getPropertyValue(`--slide-${side}`) === `${state[side]}px`)
  );
}

// Leaves the whole change to the browser's compositor, which keeps its moment also where many pages have one
// processor: what it shows then is drawn already, and no script runs. The slide that comes next is made after it.
async function swapAhead(state) {
  const before = frameToLeave(state);
  const current = frameFor(state.current);
  putForward(current);
  playTransition(before, current, state.transition, timeOf(state.at), dropOthers);
  await momentPassed(state.at);
  for (const frame of stage.children) playMedia(frame, frame === current);
  wanted.push(frameFor(state.next));
}

function useRules(state) {
  const rules = document.getElementById("rules");
  if (state.current?.index !== currentSlide()) keepRulesForLeaving(rules);
  if (rules.textContent !== state.rules) rules.textContent = state.rules;
}

// Draws a state; `isAnimated` lets another slide come in by its transition.
export async function showState(state, isAnimated) {
  await useStylesheet(state.stylesheet);
  await loadChartsFor(`${state.current?.html}${state.next?.html}`);
  const page = document.documentElement;
  if (page.dataset.deck !== state.deck) await prepareDeck(state);
  let behind = {};
  if (isAhead(state.at)) {
    if (isAnimated && canBeginAhead(state)) {
      useRules(state);
      return swapAhead(state);
    }
    behind = standBehind(state);
    picturesLoaded(`${state.current?.html}`);
    await frameAt(state.at);
  }
  page.dataset.deck = state.deck;
  useRules(state);
  swapTo(state, isAnimated, behind);
  if (!isAnimated) return;
  for (const motion of state.builds) {
    const element = document.getElementById(motion.id);
    if (element && stage.contains(element)) playBuild(element, motion, state);
  }
}

// The slide on the stage; 0 for none.
export function currentSlide() {
  return Number(stage.querySelector(".frame.current > .slide")?.id.slice(1) ?? 0);
}
