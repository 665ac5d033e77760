#pragma once

#include <pugixml.hpp>

#include "render/scene/Scene.h"

namespace render {

/// How the coordinates of a group's children become px of the group (ECMA-376 part 1, 20.1.7.5), and what
/// else they take over from it.
struct Space {
  double offsetX = 0;  // EMU, of the children's coordinates
  double offsetY = 0;
  double scaleX = 1;
  double scaleY = 1;
  double width = 0;  // px, of the group
  double height = 0;
  bool flipX = false;
  bool flipY = false;
  /// Of a:grpFill; null for none.
  const Fill* fill = nullptr;
  /// Groups around.
  int depth = 0;
  /// The shape's text changes while it is shown.
  bool isLive = false;
};

/// Sets frame, rotation and flips from an a:xfrm or p:xfrm; what it leaves out is 0.
void place(Box& box, pugi::xml_node xfrm, const Space& space);

}  // namespace render
