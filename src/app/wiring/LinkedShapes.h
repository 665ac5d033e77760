#pragma once

#include <cstdint>
#include <string>
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
  /// Takes a connection as a whole, as a chart does.
  bool isTable = false;

  /// What the runtime calls the connection, "007"; empty when the tag holds no number.
  [[nodiscard]] std::string connectionKey() const;
};

/// The linked shapes of one slide, in drawing order.
std::vector<LinkedShape> linkedShapes(deck::Presentation& presentation, std::int32_t slideIndex);

}  // namespace app
