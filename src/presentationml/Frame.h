#pragma once

#include <pugixml.hpp>

#include "opc/Package.h"

namespace presentationml {

/// Where a shape stands on its slide before it is rotated, in EMU (ECMA-376 part 1, 20.1.7.6).
struct Frame {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
};

/// Of a shape of the slide, also one in a group. A placeholder without a frame of its own has that of the
/// slide's layout, or its master. What is stated nowhere is 0. Rotations and flips of groups around it
/// count as none.
Frame frameOf(pugi::xml_node shape, opc::Part& slide);

}  // namespace presentationml
