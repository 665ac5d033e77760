// Where shapes lie, in CSS px of the slide: {left, top, width, height, rotation}, degrees clockwise about the centre.

const centre = ({ left, top, width, height }) => ({ x: left + width / 2, y: top + height / 2 });

// The upright rectangle around a shape as it is turned: {left, top, right, bottom}.
export function bounds(shape) {
  const { x, y } = centre(shape);
  const angle = ((shape.rotation ?? 0) * Math.PI) / 180;
  const [cos, sin] = [Math.abs(Math.cos(angle)), Math.abs(Math.sin(angle))];
  const halfWidth = (shape.width * cos + shape.height * sin) / 2;
  const halfHeight = (shape.width * sin + shape.height * cos) / 2;
  return { left: x - halfWidth, top: y - halfHeight, right: x + halfWidth, bottom: y + halfHeight };
}

export function holds(shape, { x, y }, margin = 0) {
  const middle = centre(shape);
  const angle = (-(shape.rotation ?? 0) * Math.PI) / 180;
  const [dx, dy] = [x - middle.x, y - middle.y];
  const across = Math.abs(dx * Math.cos(angle) - dy * Math.sin(angle));
  const down = Math.abs(dx * Math.sin(angle) + dy * Math.cos(angle));
  return across <= shape.width / 2 + margin && down <= shape.height / 2 + margin;
}

export const isInside = (inner, outer) =>
  inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right && inner.bottom <= outer.bottom;

export const touches = (one, other) =>
  one.left <= other.right && other.left <= one.right && one.top <= other.bottom && other.top <= one.bottom;

// The shapes at a point, the one that a click means first. A hollow shape does not cover what lies inside of it,
// a frame around fields for instance.
export function pileAt(shapes, point, margin = 0) {
  const pile = shapes.filter((shape) => holds(shape, point, margin)).reverse();
  const isAround = (outer) => pile.some((inner) => inner !== outer && isInside(bounds(inner), bounds(outer)));
  const covers = pile.filter((shape) => shape.isFilled || !isAround(shape));
  return [...covers, ...pile.filter((shape) => !covers.includes(shape))];
}

// As one reads: shapes whose centres lie within half a height are one line.
export function inReadingOrder(shapes) {
  const lines = [];
  for (const shape of [...shapes].sort((a, b) => centre(a).y - centre(b).y)) {
    const line = lines.at(-1);
    const isSameLine = line && Math.abs(centre(shape).y - line.y) <= Math.min(shape.height, line.height) / 2;
    if (isSameLine) line.shapes.push(shape);
    else lines.push({ y: centre(shape).y, height: shape.height, shapes: [shape] });
  }
  return lines.flatMap((line) => line.shapes.sort((a, b) => centre(a).x - centre(b).x));
}

// The nearest shape to the "left", "right", "up" or "down" of one: by the gaps between both, of which that to the side
// counts twice. Shapes that begin beside it come after those that lie beyond it.
export function nearest(shapes, from, direction) {
  const isAcross = direction === "left" || direction === "right";
  const sign = direction === "left" || direction === "up" ? -1 : 1;
  const [near, far, low, high] = isAcross ? ["left", "right", "top", "bottom"] : ["top", "bottom", "left", "right"];
  const middle = (box, first = near, last = far) => (box[first] + box[last]) / 2;
  const start = bounds(from);
  let found = null;
  let shortest = Infinity;
  for (const shape of shapes) {
    const box = bounds(shape);
    const ahead = (middle(box) - middle(start)) * sign;
    if (shape.id === from.id || ahead <= 0.5) continue;
    const isBeyond = ahead >= (start[far] - start[near]) / 2;
    const gap = Math.max(0, sign > 0 ? box[near] - start[far] : start[near] - box[far]);
    const aside = Math.max(0, box[low] - start[high], start[low] - box[high]);
    const slant = Math.abs(middle(box, low, high) - middle(start, low, high)) / 10;
    const distance = gap + 2 * aside + slant + (isBeyond ? 0 : 1e6);
    if (distance >= shortest) continue;
    shortest = distance;
    found = shape;
  }
  return found;
}
