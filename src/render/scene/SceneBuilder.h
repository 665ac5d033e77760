#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string>

#include "render/scene/Inheritance.h"
#include "render/scene/Placement.h"
#include "render/scene/Scene.h"
#include "render/scene/ShapeStyle.h"
#include "render/text/TextReader.h"

namespace render {

/// Makes boxes of the shapes of one part: a slide, a layout or a master. Both arguments must outlive it.
class SceneBuilder {
 public:
  SceneBuilder(Inheritance& inheritance, opc::Part& part, Fields fields);

  /// A child of p:spTree; nothing for elements that are no shapes. The text of a live shape may have become
  /// longer than the file's fitting allows for. Throws basic::Error when outlines ask for more points than
  /// any author draws; what else is wrong costs what it concerns.
  std::optional<Box> build(pugi::xml_node shape, bool isLive = false);

  /// The background that the part states itself; nothing when it takes over another's.
  std::optional<Fill> background();

 private:
  std::optional<Box> build(pugi::xml_node shape, const Space& space);
  Box shape(pugi::xml_node node, const Space& space);
  Box picture(pugi::xml_node node, const Space& space);
  Box group(pugi::xml_node node, const Space& space);
  Box frame(pugi::xml_node node, const Space& space);
  void diagram(Box& box, pugi::xml_node relIds, const Space& space);
  void readChildren(Box& box, pugi::xml_node tree, const Space& space);

  /// Of a shape or a picture, by itself and what it inherits; its properties in that order.
  ShapeProperties placeAndOutline(Box& box, pugi::xml_node node, const Inherited& inherited,
                                  const Space& space);
  void outline(Box& box, pugi::xml_node geometry);
  void text(Box& box, pugi::xml_node node, pugi::xml_node txBody, const Inherited& inherited);
  /// Shrinks text that does not fit and may shrink.
  static void fit(Box& box, bool isLive);

  /// Commands of paths that a top-level shape may still take.
  std::size_t room_ = 0;
  Inheritance& inheritance_;
  opc::Part& part_;
  TextContext context_;
  /// The part is a diagram's drawing, which holds no further diagrams.
  bool isDiagram_ = false;
};

}  // namespace render
