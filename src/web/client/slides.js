// The slides on the stage: the current one in front, the next one loaded behind
// it. An element is touched only when it has changed.

const stage = document.getElementById("stage");

// The element that `html` describes; inside of an SVG picture it is an SVG element.
function parse(html, isSvg) {
  const template = document.createElement("template");
  template.innerHTML = isSvg ? `<svg>${html}</svg>` : html;
  const element = template.content.firstElementChild;
  return isSvg ? element?.firstElementChild : element;
}

function isInsideSvg(element) {
  return element.namespaceURI === "http://www.w3.org/2000/svg" && element.localName !== "svg";
}

// Whether both are the same element around children with the same ids, so that
// the children can be compared one by one.
function haveSameFrame(old, fresh) {
  const isChild = (node) => node.nodeType === Node.ELEMENT_NODE && node.id;
  return (
    old.childNodes.length === fresh.childNodes.length &&
    old.cloneNode(false).isEqualNode(fresh.cloneNode(false)) &&
    [...old.childNodes].every((node, i) => isChild(node) && node.id === fresh.childNodes[i].id)
  );
}

function patch(old, fresh) {
  if (old.isEqualNode(fresh)) return;
  if (old.childNodes.length > 0 && haveSameFrame(old, fresh)) {
    const freshChildren = [...fresh.childNodes];
    [...old.childNodes].forEach((child, i) => patch(child, freshChildren[i]));
  } else {
    old.replaceWith(fresh);
  }
}

export function changeShapes(changes) {
  for (const { id, html } of changes) {
    const old = document.getElementById(id);
    const fresh = old && stage.contains(old) && parse(html, isInsideSvg(old));
    if (fresh) patch(old, fresh);
  }
}

// The frame that shows `slide`: one that stands already, with what is new in it,
// or a new one.
function frameFor(slide) {
  const fresh = slide && parse(slide.html);
  if (!fresh) return null;
  for (const frame of stage.children) {
    if (frame.firstElementChild?.id === fresh.id) {
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

function swapTo(picture) {
  stage.style.setProperty("--slide-width", `${picture.width}px`);
  stage.style.setProperty("--slide-height", `${picture.height}px`);
  const current = frameFor(picture.current);
  const next = frameFor(picture.next);
  for (const frame of [...stage.children]) {
    frame.classList.toggle("current", frame === current);
    frame.inert = frame !== current;
    if (frame !== current && frame !== next) frame.remove();
  }
}

let wanted = 0;

// Another deck's slides wait for its styles, so that they are never seen bare.
export async function showPicture(picture) {
  const turn = ++wanted;
  const link = document.getElementById("slide-styles");
  const href = picture.stylesheet && `/assets/${picture.stylesheet}`;
  if (href && link?.getAttribute("href") !== href) {
    const fresh = document.createElement("link");
    fresh.rel = "stylesheet";
    fresh.href = href;
    await new Promise((resolve) => {
      fresh.onload = fresh.onerror = resolve;
      document.head.append(fresh);
    });
    if (turn !== wanted) return fresh.remove();
    link?.remove();
    fresh.id = "slide-styles";
  }
  swapTo(picture);
}
