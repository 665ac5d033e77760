#include "render/text/GlyphOutline.h"

namespace render {

namespace {

/// Lines that a curve becomes.
constexpr int Pieces = 8;

}  // namespace

void GlyphOutline::add(FT_Outline& outline, double x) {
  x_ = x;
  static constexpr FT_Outline_Funcs take = {
      [](const FT_Vector* to, void* self) {
        auto& glyph = *static_cast<GlyphOutline*>(self);
        glyph.out_.emplace_back();
        glyph.append(glyph.at(*to));
        return 0;
      },
      [](const FT_Vector* to, void* self) {
        auto& glyph = *static_cast<GlyphOutline*>(self);
        const auto start = glyph.last_;
        const auto end = glyph.at(*to);
        // Even pieces.
        const auto along = [&](double share) {
          return Point{start.x + (end.x - start.x) * share, start.y + (end.y - start.y) * share};
        };
        glyph.bend(start, along(1.0 / 3), along(2.0 / 3), end);
        return 0;
      },
      [](const FT_Vector* control, const FT_Vector* to, void* self) {
        auto& glyph = *static_cast<GlyphOutline*>(self);
        const auto c = glyph.at(*control);
        const auto end = glyph.at(*to);
        const auto third = [&](Point p) {
          return Point{p.x + (c.x - p.x) * 2 / 3, p.y + (c.y - p.y) * 2 / 3};
        };
        glyph.bend(glyph.last_, third(glyph.last_), third(end), end);
        return 0;
      },
      [](const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* self) {
        auto& glyph = *static_cast<GlyphOutline*>(self);
        glyph.bend(glyph.last_, glyph.at(*first), glyph.at(*second), glyph.at(*to));
        return 0;
      },
      0,
      0};
  FT_Outline_Decompose(&outline, &take, this);
}

void GlyphOutline::append(Point p) {
  out_.back().push_back(p);
  last_ = p;
}

void GlyphOutline::bend(Point a, Point b, Point c, Point d) {
  for (int i = 1; i <= Pieces; ++i) {
    const double t = static_cast<double>(i) / Pieces;
    const double s = 1 - t;
    const double k[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
    append({k[0] * a.x + k[1] * b.x + k[2] * c.x + k[3] * d.x,
            k[0] * a.y + k[1] * b.y + k[2] * c.y + k[3] * d.y});
  }
}

}  // namespace render
