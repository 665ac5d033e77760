#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "host/powerpoint.h"

/// What a shape can be linked to.
namespace LF2000::modLinkable {

/// What a link makes a shape show.
enum class Shows : std::uint8_t { Nothing, Text, File, Graph, Table };

struct Answer {
  Shows What = Shows::Nothing;
  /// Of Nothing, to follow the shape's name: "is a group, ...".
  std::string Why;
};

[[nodiscard]] Answer Examine(PowerPoint::Shape& shape);

/// Whether a file may be shown in the place of the shape's own picture, which may fill a shape with text.
[[nodiscard]] bool HasPicture(PowerPoint::Shape& shape);

/// What kind of shape it is, for people: "text box", "picture".
[[nodiscard]] std::string KindName(PowerPoint::ShapeType type);

/// How often each name occurs on a slide: links reach the first shape of a name alone.
class NameCounts {
 public:
  explicit NameCounts(PowerPoint::Slide& slide);
  /// Why a shape of the slide cannot be linked by its name; empty when it can.
  [[nodiscard]] std::string WhyNotByName(const PowerPoint::Shape& shape) const;

 private:
  std::unordered_map<std::string, std::int32_t> counts_;  // keys in upper case
};

/// Why a shape of a group cannot be linked, whatever it is: the system walks over the slide's own shapes.
[[nodiscard]] std::string WhyNotInGroup(const PowerPoint::Shape& group);

}  // namespace LF2000::modLinkable
