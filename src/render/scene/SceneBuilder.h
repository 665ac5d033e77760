#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string>

#include "render/scene/Inheritance.h"
#include "render/scene/Scene.h"
#include "render/text/TextReader.h"

namespace render {

/// Makes boxes of the shapes of one part: a slide, a layout or a master.
class SceneBuilder {
 public:
  SceneBuilder(Inheritance& inheritance, opc::Part& part, Fields fields);

  /// A child of p:spTree; nothing for elements that are no shapes. The text of a live shape may have become
  /// longer than the file's fitting allows for.
  std::optional<Box> build(pugi::xml_node shape, bool isLive = false);

  /// The background that a part states itself.
  std::optional<Fill> background();

 private:
  /// How the coordinates of a group's children become the page's.
  struct Space {
    double offsetX = 0;  // EMU
    double offsetY = 0;
    double scaleX = 1;
    double scaleY = 1;
    double width = 0;  // px, of the group
    double height = 0;
    bool flipX = false;
    bool flipY = false;
    const Fill* fill = nullptr;
    int depth = 0;
    bool isLive = false;
  };

  std::optional<Box> build(pugi::xml_node shape, const Space& space);
  Box shape(pugi::xml_node node, const Space& space);
  Box picture(pugi::xml_node node, const Space& space);
  Box group(pugi::xml_node node, const Space& space);
  Box frame(pugi::xml_node node, const Space& space);
  const Asset* olderPreview(pugi::xml_node data);
  void chart(Box& box, pugi::xml_node reference);
  void diagram(Box& box, pugi::xml_node relIds, const Space& space);
  void readChildren(Box& box, pugi::xml_node tree, const Space& space);

  static void place(Box& box, pugi::xml_node xfrm, const Space& space);
  void outline(Box& box, pugi::xml_node geometry);
  void style(Box& box, pugi::xml_node node, const pugi::xml_node (&properties)[3], const Space& space);
  void text(Box& box, pugi::xml_node node, pugi::xml_node txBody, const Inherited& inherited);
  /// Shrinks text that does not fit and may shrink.
  static void fit(Box& box, bool isLive);
  [[nodiscard]] PaintContext themeContext(pugi::xml_node reference) const;

  /// Commands of paths that a top-level shape may still take.
  std::size_t room_ = 0;
  Inheritance& inheritance_;
  opc::Part& part_;
  TextContext context_;
  /// The part is a diagram's drawing, which holds no further diagrams.
  bool isDiagram_ = false;
};

}  // namespace render
