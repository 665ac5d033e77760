#include <algorithm>
#include <cmath>
#include <numbers>

#include "render/svg/SvgDefs.h"

// Gradients as SVG has them: what it has no kind for is put together of steps.

namespace render {

namespace {

double radians(double degrees) { return degrees * std::numbers::pi / 180; }

Point centreOf(const Rect& area) { return {area.x + area.w / 2, area.y + area.h / 2}; }

/// The upright box around a turned one, with the same centre.
Rect boxAround(const Rect& area, double degrees) {
  const double c = std::abs(std::cos(radians(degrees)));
  const double s = std::abs(std::sin(radians(degrees)));
  const auto centre = centreOf(area);
  const double w = area.w * c + area.h * s;
  const double h = area.w * s + area.h * c;
  return {centre.x - w / 2, centre.y - h / 2, w, h};
}

Rect inset(const Rect& area, const std::array<double, 4>& shares) {
  return {area.x + area.w * shares[0], area.y + area.h * shares[1], area.w * (1 - shares[0] - shares[2]),
          area.h * (1 - shares[1] - shares[3])};
}

/// The focus; where its sides cross, the line or point between them.
Rect focusOf(const Gradient& gradient, const Rect& area) {
  Rect focus = inset(area, gradient.focus);
  if (focus.w < 0) focus = {focus.x + focus.w / 2, focus.y, 0, focus.h};
  if (focus.h < 0) focus = {focus.x, focus.y + focus.h / 2, focus.w, 0};
  return focus;
}

Color colorAt(const Gradient& gradient, double position) {
  const auto& stops = gradient.stops;
  auto next = std::find_if(stops.begin(), stops.end(), [&](const auto& s) { return s.position >= position; });
  if (next == stops.end()) return stops.back().color;
  if (next == stops.begin()) return next->color;
  const auto& before = *(next - 1);
  const double k = (position - before.position) / std::max(1e-9, next->position - before.position);
  const auto mix = [k](double a, double b) { return a + (b - a) * k; };
  const Color& a = before.color;
  const Color& b = next->color;
  return {mix(a.r, b.r), mix(a.g, b.g), mix(a.b, b.b), mix(a.a, b.a)};
}

bool isOpaque(const Gradient& gradient) {
  return std::all_of(gradient.stops.begin(), gradient.stops.end(),
                     [](const auto& s) { return s.color.a >= 1; });
}

}  // namespace

/// The stops in what is left of the way after `from`.
void SvgDefs::stops(const Gradient& gradient, double from) {
  for (const auto& stop : gradient.stops) {
    out_ << "<stop offset=\"" << (from + stop.position * (1 - from)) * 100 << "%\" stop-color=\""
         << stop.color << "\"/>";
  }
}

std::string SvgDefs::gradient(const Gradient& gradient, const Rect& whole, double turned,
                              const Outline& outline) {
  // A gradient that stays as the page is lies in the turned shape's box on the page.
  const double back = gradient.turnsWithShape ? 0 : -turned;
  const Rect area = back == 0 ? whole : boxAround(whole, turned);
  switch (gradient.shape) {
    case Gradient::Shape::Linear:
      return linear(gradient, area, back);
    case Gradient::Shape::Circle:
      return circular(gradient, area, back);
    case Gradient::Shape::Outline:
      if (!outline.isRectangle) return alongOutline(gradient, whole, outline);
      break;
    case Gradient::Shape::Rectangle:
      break;
  }
  return rectangular(gradient, area, back);
}

std::string SvgDefs::linear(const Gradient& gradient, const Rect& box, double back) {
  auto id = newId();
  const auto& tile = gradient.tile;
  const bool isTile = std::any_of(tile.begin(), tile.end(), [](double v) { return v != 0; });
  const Rect area = isTile ? inset(box, tile) : box;
  double angle = radians(gradient.angle);
  if (gradient.scaled) angle = std::atan2(area.w * std::sin(angle), area.h * std::cos(angle));
  const double reach = (std::abs(area.w * std::cos(angle)) + std::abs(area.h * std::sin(angle))) / 2;
  const auto [x, y] = centreOf(area);
  out_ << "<linearGradient gradientUnits=\"userSpaceOnUse\" id=\"" << id << "\" x1=\""
       << x - reach * std::cos(angle) << "\" y1=\"" << y - reach * std::sin(angle) << "\" x2=\""
       << x + reach * std::cos(angle) << "\" y2=\"" << y + reach * std::sin(angle) << '"';
  if (isTile) out_ << " spreadMethod=\"" << (gradient.flips ? "reflect" : "repeat") << '"';
  if (back != 0) {
    const auto centre = centreOf(box);
    out_ << " gradientTransform=\"rotate(" << back << ' ' << centre.x << ' ' << centre.y << ")\"";
  }
  out_ << '>';
  stops(gradient, 0);
  out_ << "</linearGradient>";
  return id;
}

std::string SvgDefs::circular(const Gradient& gradient, const Rect& area, double back) {
  auto id = newId();
  const Rect focus = focusOf(gradient, area);
  const auto [x, y] = centreOf(focus);
  const double farX = std::max(x - area.x, area.x + area.w - x);
  const double farY = std::max(y - area.y, area.y + area.h - y);
  const double radius = std::hypot(farX, farY);
  out_ << "<radialGradient gradientUnits=\"userSpaceOnUse\" id=\"" << id << "\" cx=\"" << x << "\" cy=\"" << y
       << "\" r=\"" << radius << '"';
  if (back != 0) {
    const auto centre = centreOf(area);
    out_ << " gradientTransform=\"rotate(" << back << ' ' << centre.x << ' ' << centre.y << ")\"";
  }
  out_ << '>';
  stops(gradient, radius > 0 ? std::min(1.0, std::hypot(focus.w, focus.h) / 2 / radius) : 0);
  out_ << "</radialGradient>";
  return id;
}

std::string SvgDefs::rectangular(const Gradient& gradient, const Rect& area, double back) {
  const Rect focus = focusOf(gradient, area);
  const double left = area.x;
  const double top = area.y;
  const double right = area.x + area.w;
  const double bottom = area.y + area.h;
  const Point inner[] = {{focus.x, focus.y},
                         {focus.x + focus.w, focus.y},
                         {focus.x + focus.w, focus.y + focus.h},
                         {focus.x, focus.y + focus.h}};
  const Point outer[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
  // From the focus to each side: top, right, bottom, left.
  const Rect ways[] = {{0, focus.y, 0, top},
                       {focus.x + focus.w, 0, right, 0},
                       {0, focus.y + focus.h, 0, bottom},
                       {focus.x, 0, left, 0}};
  std::string ids[4];
  for (int side = 0; side < 4; ++side) {
    const auto& [x1, y1, x2, y2] = ways[side];
    if (x1 == x2 && y1 == y2) continue;
    ids[side] = newId();
    out_ << "<linearGradient gradientUnits=\"userSpaceOnUse\" id=\"" << ids[side] << "\" x1=\"" << x1
         << "\" y1=\"" << y1 << "\" x2=\"" << x2 << "\" y2=\"" << y2 << "\">";
    stops(gradient, 0);
    out_ << "</linearGradient>";
  }
  auto id = newId();
  // Three times the box, as outlines may leave it.
  out_ << "<pattern id=\"" << id << "\" patternUnits=\"userSpaceOnUse\" x=\"" << left - area.w << "\" y=\""
       << top - area.h << "\" width=\"" << std::max(1.0, area.w * 3) << "\" height=\""
       << std::max(1.0, area.h * 3) << '"';
  const auto centre = centreOf(area);
  out_ << " patternTransform=\"";
  if (back != 0) out_ << "rotate(" << back << ' ' << centre.x << ' ' << centre.y << ')';
  // Inside a pattern the origin is the tile's corner.
  out_ << "\"><g transform=\"translate(" << area.w - left << ' ' << area.h - top
       << ")\" shape-rendering=\"crispEdges\"><rect x=\"" << left - area.w << "\" y=\"" << top - area.h
       << "\" width=\"" << area.w * 3 << "\" height=\"" << area.h * 3 << "\" fill=\""
       << gradient.stops.front().color << "\"/>";
  const auto beyond = [](const Point& from, const Point& to) {
    return Point{to.x + (to.x - from.x), to.y + (to.y - from.y)};
  };
  for (std::size_t side = 0; side < 4; ++side) {
    if (ids[side].empty()) continue;
    const std::size_t next = (side + 1) % 4;
    const Point corners[] = {inner[side], beyond(inner[side], outer[side]), beyond(inner[next], outer[next]),
                             inner[next]};
    out_ << "<path fill=\"url(#" << ids[side] << ")\" d=\"";
    for (int i = 0; i < 4; ++i) out_ << (i == 0 ? 'M' : 'L') << corners[i].x << ' ' << corners[i].y;
    out_ << "Z\"/>";
  }
  out_ << "</g></pattern>";
  return id;
}

std::string SvgDefs::alongOutline(const Gradient& gradient, const Rect& area, const Outline& outline) {
  // Copies that grow smaller would show through each other.
  if (!isOpaque(gradient)) return circular(gradient, area, 0);
  constexpr int Steps = 48;
  const auto shape = newId();
  auto id = newId();
  out_ << "<path id=\"" << shape << "\" d=\"";
  for (const auto& path : outline.paths) {
    if (path.fill != PathFill::None) pathData(path.commands);
  }
  out_ << "\"/><pattern id=\"" << id << "\" patternUnits=\"userSpaceOnUse\" x=\"" << area.x - area.w
       << "\" y=\"" << area.y - area.h << "\" width=\"" << std::max(1.0, area.w * 3) << "\" height=\""
       << std::max(1.0, area.h * 3) << "\"><g transform=\"translate(" << area.w - area.x << ' '
       << area.h - area.y << ")\"><rect x=\"" << area.x - area.w << "\" y=\"" << area.y - area.h
       << "\" width=\"" << area.w * 3 << "\" height=\"" << area.h * 3 << "\" fill=\""
       << gradient.stops.back().color << "\"/>";
  const auto focus = centreOf(focusOf(gradient, area));
  for (int step = Steps; step > 0; --step) {
    const double scale = static_cast<double>(step) / Steps;
    out_ << "<use href=\"#" << shape << "\" fill=\"" << colorAt(gradient, scale - 0.5 / Steps)
         << "\" transform=\"translate(" << focus.x * (1 - scale) << ' ' << focus.y * (1 - scale) << ")scale(";
    out_.precise(scale) << ")\"/>";
  }
  out_ << "</g></pattern>";
  return id;
}

}  // namespace render
