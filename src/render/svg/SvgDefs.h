#pragma once

#include <string>
#include <string_view>

#include "render/geometry/Geometry.h"
#include "render/paint/Paint.h"
#include "render/scene/Scene.h"
#include "render/svg/HtmlOut.h"

namespace render {

/// Writes what a drawing refers to by name: gradients, patterns, tiles, filters.
/// Each gives the name of what it wrote.
class SvgDefs {
 public:
  /// Names start with `idPrefix`, so that they are unique in the document.
  SvgDefs(HtmlOut& out, std::string idPrefix, std::string_view assetPrefix)
      : out_(out), idPrefix_(std::move(idPrefix)), assetPrefix_(assetPrefix) {}

  std::string newId();

  /// `area` is what the gradient fills, `turned` the rotation of the shape in
  /// degrees, `outline` what a gradient along the outline follows.
  std::string gradient(const Gradient& gradient, const Rect& area, double turned, const Outline& outline);
  std::string pattern(const PatternFill& pattern);
  /// The asset's size must be known.
  std::string tiles(const PictureFill& fill, const Rect& area);
  /// What is done to a picture's pixels.
  std::string pictureFilter(const std::vector<PictureEffect>& effects);
  /// Everything but reflections and shadows that are more than moved. `area` is where
  /// the shape draws.
  std::string effectFilter(const Effects& effects, const Rect& area);
  /// The colour of a shadow in the shape of what it is applied to.
  std::string shadowFilter(const Shadow& shadow, const Rect& area);
  /// What fades a reflection: `area` is what is reflected, its foot the lower side.
  std::string fadingMask(const Reflection& reflection, const Rect& area);

  /// d="..." of a path element, without the quotes.
  void pathData(const std::vector<PathCommand>& commands);
  /// href="..." of a picture and how it is to be loaded.
  void pictureAddress(const Asset& asset);

 private:
  void stops(const Gradient& gradient, double from);
  std::string linear(const Gradient& gradient, const Rect& area, double turned);
  std::string circular(const Gradient& gradient, const Rect& area, double turned);
  std::string rectangular(const Gradient& gradient, const Rect& area, double turned);
  std::string alongOutline(const Gradient& gradient, const Rect& area, const Outline& outline);
  void openFilter(const std::string& id, const Rect& area, double margin);
  void flood(const Color& color);

  HtmlOut& out_;
  std::string idPrefix_;
  std::string_view assetPrefix_;
  int lastId_ = 0;
};

}  // namespace render
