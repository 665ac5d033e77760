#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/wiring/LinkedShapes.h"
#include "deck/objects/Presentation.h"

namespace app {

/// A shape of a slide as somebody sees it who wants to link it.
struct ListedShape {
  std::uint32_t id = 0;
  std::string name;
  /// "text box", "picture", "group", ...
  std::string kind;
  /// Of those that hold text: paragraphs separated by CR, lines by VT.
  std::string text;
  // Points, as the shape is before it is rotated.
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
  /// The name of the group that it stands in; empty outside of groups.
  std::string group;
  /// What a link can make it show: "text", "picture", "chart", "table"; empty for nothing.
  std::string shows;
  /// Why it cannot be linked, to follow its name; empty when it can.
  std::string whyNot;
  std::optional<LinkedShape> link;
};

/// The shapes of a slide as people read them (LF2000::modPlaces), those of a group behind it.
std::vector<ListedShape> listShapes(deck::Presentation& deck, std::int32_t slideIndex);

}  // namespace app
