#include "render/svg/CssFill.h"

#include <algorithm>

#include "render/geometry/Units.h"
#include "render/svg/PatternPath.h"

namespace render {

namespace {

void gradientFill(HtmlOut& out, const Gradient& gradient) {
  if (gradient.shape == Gradient::Shape::Linear) {
    out << "background:linear-gradient(" << gradient.angle + 90 << "deg";
  } else {
    const auto& [left, top, right, bottom] = gradient.focus;
    out << "background:radial-gradient(circle farthest-corner at " << (left + 1 - right) * 50 << "% "
        << (top + 1 - bottom) * 50 << '%';
  }
  for (const auto& stop : gradient.stops) out << ',' << stop.color << ' ' << stop.position * 100 << '%';
  out << ");";
}

void pictureFill(HtmlOut& out, const PictureFill& fill, std::string_view assetPrefix) {
  const auto& [left, top, right, bottom] = fill.crop;
  out << "background:";
  // There is no opacity of a background; on paper it comes to the same.
  if (fill.alpha < 1) {
    const Color paper{1, 1, 1, 1 - fill.alpha};
    out << "linear-gradient(" << paper << ',' << paper << "),";
  }
  out << "url(" << assetPrefix << fill.asset->name << ')';
  if (fill.tile && fill.asset->width > 0 && fill.asset->height > 0) {
    const auto& tile = *fill.tile;
    out << " left " << fine(tile.offsetX) << "px top " << fine(tile.offsetY) << "px/"
        << fine(fill.asset->width * tile.scaleX) << "px " << fine(fill.asset->height * tile.scaleY) << "px;";
    return;
  }
  // A position in percent is a share of the room that the picture leaves or lacks.
  const auto position = [](double before, double after) {
    return before + after == 0 ? 0.0 : before / (before + after) * 100;
  };
  const auto size = [](double before, double after) { return 100 / std::max(0.01, 1 - before - after); };
  out << ' ' << position(left, right) << "% " << position(top, bottom) << "%/" << size(left, right) << "% "
      << size(top, bottom) << "% no-repeat;";
}

/// As a picture of its own, since a background cannot refer to the page's patterns.
void patternFill(HtmlOut& out, const PatternFill& fill) {
  HtmlOut color;
  color << fill.foreground;
  out << "background:" << fill.background
      << " url(&quot;data:image/svg+xml,%3Csvg xmlns='http://www.w3.org/2000/svg'"
      << " width='8' height='8'%3E%3Cpath shape-rendering='crispEdges' fill='%23" << color.str().substr(1)
      << "' d='";
  patternPath(out, fill.rows);
  out << "'/%3E%3C/svg%3E&quot;) 0 0/" << fine(8) << "px;";
}

}  // namespace

void cssFill(HtmlOut& out, const Fill& fill, std::string_view assetPrefix) {
  if (const auto* color = std::get_if<Color>(&fill)) {
    out << "background:" << *color << ';';
  } else if (const auto* gradient = std::get_if<Gradient>(&fill)) {
    gradientFill(out, *gradient);
  } else if (const auto* pattern = std::get_if<PatternFill>(&fill)) {
    patternFill(out, *pattern);
  } else if (const auto* picture = std::get_if<PictureFill>(&fill)) {
    pictureFill(out, *picture, assetPrefix);
  }
}

}  // namespace render
