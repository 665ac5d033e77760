#include "render/svg/SvgDefs.h"

#include <algorithm>
#include <cmath>

#include "render/svg/PatternPath.h"

namespace render {

std::string SvgDefs::newId() { return idPrefix_ + "-" + std::to_string(++lastId_); }

void SvgDefs::pathData(const std::vector<PathCommand>& commands) {
  if (!commands.empty() && commands.front().op != 'M') out_ << "M0 0";
  for (const auto& command : commands) {
    out_ << command.op;
    for (int i = 0; i < operands(command.op); ++i) {
      if (i > 0) out_ << ' ';
      out_ << command.v[i];
    }
  }
}

void SvgDefs::pictureAddress(const Asset& asset) {
  // Decoded when it is painted: a picture that a page has anew does not flash.
  out_ << "href=\"" << assetPrefix_ << asset.name << "\" decoding=\"sync\"";
}

std::string SvgDefs::pattern(const PatternFill& pattern) {
  auto id = newId();
  out_ << "<pattern id=\"" << id
       << "\" patternUnits=\"userSpaceOnUse\" width=\"8\" height=\"8\"><rect width=\"8\" height=\"8\" fill=\""
       << pattern.background << "\"/><path shape-rendering=\"crispEdges\" fill=\"" << pattern.foreground
       << "\" d=\"";
  patternPath(out_, pattern.rows);
  out_ << "\"/></pattern>";
  return id;
}

std::string SvgDefs::tiles(const PictureFill& fill, const Rect& area) {
  const auto filter = fill.effects.empty() ? std::string() : pictureFilter(fill.effects);
  auto id = newId();
  const auto& tile = *fill.tile;
  // Of a cropped picture the rest is the tile.
  const double keepX = std::max(0.01, 1 - fill.crop[0] - fill.crop[2]);
  const double keepY = std::max(0.01, 1 - fill.crop[1] - fill.crop[3]);
  const double wholeW = fill.asset->width * std::abs(tile.scaleX);
  const double wholeH = fill.asset->height * std::abs(tile.scaleY);
  const double w = std::max(1.0, wholeW * keepX);
  const double h = std::max(1.0, wholeH * keepY);
  const double x = area.x + tile.offsetX + (area.w - w) * tile.alignX;
  const double y = area.y + tile.offsetY + (area.h - h) * tile.alignY;
  out_ << "<pattern id=\"" << id << "\" patternUnits=\"userSpaceOnUse\" x=\"" << x << "\" y=\"" << y
       << "\" width=\"" << w * (tile.flipX ? 2 : 1) << "\" height=\"" << h * (tile.flipY ? 2 : 1) << "\">";
  for (int i = 0; i < (tile.flipX ? 2 : 1); ++i) {
    for (int j = 0; j < (tile.flipY ? 2 : 1); ++j) {
      out_ << "<svg width=\"" << w << "\" height=\"" << h << "\" overflow=\"hidden\"";
      if (i + j > 0) {
        out_ << " transform=\"translate(" << (i > 0 ? 2 * w : 0.0) << ' ' << (j > 0 ? 2 * h : 0.0)
             << ")scale(" << (i > 0 ? -1 : 1) << ' ' << (j > 0 ? -1 : 1) << ")\"";
      }
      out_ << "><image ";
      pictureAddress(*fill.asset);
      out_ << " x=\"" << -wholeW * fill.crop[0] << "\" y=\"" << -wholeH * fill.crop[1] << "\" width=\""
           << std::max(1.0, wholeW) << "\" height=\"" << std::max(1.0, wholeH)
           << "\" preserveAspectRatio=\"none\"";
      if (!filter.empty()) out_ << " filter=\"url(#" << filter << ")\"";
      out_ << "/></svg>";
    }
  }
  out_ << "</pattern>";
  return id;
}

}  // namespace render
