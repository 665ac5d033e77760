// Markup of slides on its way into the page, which it enters here and nowhere else. An element is
// touched only when it has changed.

// Pages make elements of trusted texts alone (Trusted Types). Of slides', these are the ones.
const policy = globalThis.trustedTypes?.createPolicy("slides", { createHTML: (html) => html });
const trusted = (html) => policy?.createHTML(html) ?? html;

// Puts the markup of slides in the place of what stands in a tree of its own.
export function fillTree(tree, html) {
  tree.innerHTML = trusted(html);
}

// The element that `html` describes; inside of an SVG picture it is an SVG element.
export function parse(html, isSvg) {
  const template = document.createElement("template");
  template.innerHTML = trusted(isSvg ? `<svg>${html}</svg>` : html);
  const element = template.content.firstElementChild;
  return isSvg ? element?.firstElementChild : element;
}

export function isInsideSvg(element) {
  return element.namespaceURI === "http://www.w3.org/2000/svg" && element.localName !== "svg";
}

// A chart draws itself anew when its description changes.
const isChart = (node) => node.localName === "deck-chart";
const holdsChart = (node) => isChart(node) || Boolean(node.querySelector?.("deck-chart"));

// Whether both are the same element around children that stay as they are or have
// the same ids, so that they can be compared one by one.
function haveSameFrame(old, fresh) {
  const isSame = (node, other) =>
    node.isEqualNode(other) ||
    (node.nodeType === Node.ELEMENT_NODE && node.id === other.id && (node.id || holdsChart(node)));
  return (
    old.childNodes.length === fresh.childNodes.length &&
    old.cloneNode(false).isEqualNode(fresh.cloneNode(false)) &&
    [...old.childNodes].every((node, i) => isSame(node, fresh.childNodes[i]))
  );
}

// Makes `old` what `fresh` is.
export function patch(old, fresh) {
  if (old.isEqualNode(fresh)) return;
  if (isChart(old) && isChart(fresh)) {
    for (const { name, value } of fresh.attributes) {
      if (old.getAttribute(name) !== value) old.setAttribute(name, value);
    }
  } else if (old.childNodes.length > 0 && haveSameFrame(old, fresh)) {
    const freshChildren = [...fresh.childNodes];
    [...old.childNodes].forEach((child, i) => patch(child, freshChildren[i]));
  } else {
    old.replaceWith(fresh);
  }
}
