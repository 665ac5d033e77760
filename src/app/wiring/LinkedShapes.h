#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "deck/objects/Presentation.h"

namespace app {

/// A linked shape as its tags describe it.
struct LinkedShape {
  std::uint32_t id = 0;
  std::string name;
  std::int32_t sourceType = 0;
  std::string connection;
  std::string column;
  double row = 0;
  std::string dateFormat;
  /// Of a picture or a linked object.
  std::string objectFolder;
  std::string objectExtension;

  /// What the runtime calls the connection, "007"; empty when the tag holds no number.
  [[nodiscard]] std::string connectionKey() const;
};

/// The id of a shape's element on a screen.
std::string elementId(std::int32_t slideIndex, std::uint32_t shapeId);

/// The shape's id in it.
std::uint32_t shapeIdOf(std::string_view elementId);

/// The linked shapes of one slide, in drawing order.
std::vector<LinkedShape> linkedShapes(deck::Presentation& presentation, std::int32_t slideIndex);

}  // namespace app
