#pragma once

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "opc/Package.h"
#include "ppt/Deck.h"

namespace app {

/// A shape of a converted slide, with what it can be known again by.
struct NewShape {
  pugi::xml_node node;
  std::string text;
  ppt::Frame frame;
  /// Of a group, in drawing order.
  std::vector<NewShape> members;
};

/// Those of a slide in drawing order.
std::vector<NewShape> newShapesOf(opc::Part& slide);

}  // namespace app
