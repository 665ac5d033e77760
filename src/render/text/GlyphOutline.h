#pragma once

#include <ft2build.h>

#include <vector>

#include FT_OUTLINE_H

#include "render/geometry/Units.h"

namespace render {

/// Cuts the curves of glyphs into short lines.
class GlyphOutline {
 public:
  /// Adds polygons to `out`, which must outlive it, in font units times `scale`.
  GlyphOutline(std::vector<std::vector<Point>>& out, double scale) : out_(out), scale_(scale) {}

  /// A glyph whose origin lies `x` right of the text's; y runs down from the baseline.
  void add(FT_Outline& outline, double x);

 private:
  [[nodiscard]] Point at(const FT_Vector& v) const {
    return {x_ + static_cast<double>(v.x) * scale_, -static_cast<double>(v.y) * scale_};
  }
  void append(Point p);
  void bend(Point a, Point b, Point c, Point d);

  std::vector<std::vector<Point>>& out_;
  double scale_;
  double x_ = 0;
  Point last_;
};

}  // namespace render
