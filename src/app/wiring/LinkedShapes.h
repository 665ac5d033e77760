#pragma once

#include <cstdint>
#include <memory>
#include <optional>
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

/// In few words: "001 Price 2", "001 photos\Photo.jpg 2", "clock hh:nn", "001, all of it".
std::string linkText(const LinkedShape& link);

/// Of a shape of a deck; nothing when it is not linked.
std::optional<LinkedShape> linkOf(const std::shared_ptr<PowerPoint::Shape>& shape);

/// The linked shapes of one slide, in drawing order.
std::vector<LinkedShape> linkedShapes(deck::Presentation& presentation, std::int32_t slideIndex);

}  // namespace app
