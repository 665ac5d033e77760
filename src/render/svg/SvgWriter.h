#pragma once

#include <string>
#include <string_view>

#include "render/scene/Scene.h"
#include "render/svg/HtmlOut.h"
#include "render/svg/SvgDefs.h"

namespace render {

/// Draws outlines as inline SVG (SVG 2), one element a box, placed at the box's upper left corner. Names of
/// gradients, clips and markers start with the given prefix, so that they are unique in the document.
class SvgWriter {
 public:
  SvgWriter(HtmlOut& out, std::string idPrefix, std::string_view assetPrefix)
      : out_(out), defs_(out, std::move(idPrefix), assetPrefix) {}

  /// Nothing when the box has neither fill nor line.
  void draw(const Box& box);
  /// A rectangle of this size at the origin, for backgrounds.
  void background(const Fill& fill, double width, double height);

 private:
  void content(const Box& box);
  void openEffects(const Box& box);
  void fillPaths(const Box& box, const Fill& fill);
  void picture(const Outline& outline, const Rect& area, const PictureFill& fill);
  void stroke(const Box& box, const Line& line);
  void marker(const LineEnd& end, const Line& line, const Color& color, const std::string& id);

  HtmlOut& out_;
  SvgDefs defs_;
};

}  // namespace render
