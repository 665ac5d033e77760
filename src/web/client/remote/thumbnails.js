// Small pictures of all slides, fetched when they come into sight, each in a tree of
// its own, as ids occur on the stage as well.

import { loadChartsFor } from "../core/chart_loader.js";
import { fillTree } from "../core/patch.js";

const oldest = 3000;

export function thumbnails(container, choose) {
  const buttons = new Map();

  // One after the other, or an older answer could come last.
  async function load(button) {
    if (button.isLoading || Date.now() - (button.loadedAt ?? 0) < oldest) return;
    button.isLoading = true;
    button.loadedAt = Date.now();
    await draw(button).catch(() => {}); // the next time will do
    button.isLoading = false;
  }

  async function draw(button) {
    const answer = await fetch(`/slides/${button.dataset.slide}`);
    if (!answer.ok) return;
    const html = await answer.text();
    await loadChartsFor(html);
    const styles = document.getElementById("slide-styles")?.outerHTML ?? "";
    button.tree ??= button.firstElementChild.attachShadow({ mode: "open" });
    if (button.shown === styles + html) return;
    button.shown = styles + html;
    fillTree(button.tree, button.shown);
  }

  const inSight = new IntersectionObserver(
    (entries) => {
      for (const { target, isIntersecting } of entries) {
        target.isInSight = isIntersecting;
        if (isIntersecting) load(target);
      }
    },
    { root: container, rootMargin: "120px" },
  );

  function add(slide) {
    const button = document.createElement("button");
    button.type = "button";
    button.className = "thumbnail";
    button.dataset.slide = slide;
    button.ariaLabel = `Slide ${slide}`;
    const small = document.createElement("div");
    small.className = "stage";
    button.append(small, document.createElement("span"));
    button.lastElementChild.textContent = slide;
    button.addEventListener("click", () => choose(slide));
    buttons.set(slide, button);
    container.append(button);
    inSight.observe(button);
  }

  return {
    count(slides) {
      for (let slide = buttons.size + 1; slide <= slides; ++slide) add(slide);
      for (const [slide, button] of buttons) {
        if (slide <= slides) continue;
        button.remove();
        buttons.delete(slide);
      }
    },
    mark(current, hidden) {
      for (const [slide, button] of buttons) {
        const isCurrent = slide === current;
        if (isCurrent && button.ariaCurrent !== "true") button.scrollIntoView({ block: "nearest" });
        button.ariaCurrent = isCurrent;
        button.classList.toggle("hidden", hidden.includes(slide));
      }
    },
    // Those in sight that have grown old.
    renew() {
      for (const button of buttons.values()) if (button.isInSight) load(button);
    },
  };
}
