#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/powerpoint.h"

namespace presentationml {

// A shape as its XML element tells it: p:sp, p:pic, p:graphicFrame, p:cxnSp,
// p:grpSp or p:contentPart (ECMA-376 part 1, 19.3.1).

/// Whether the element is a shape.
bool isShape(pugi::xml_node node);

/// p:cNvPr: id, name.
pugi::xml_node shapeProperties(pugi::xml_node shape);
std::string_view shapeName(pugi::xml_node shape);
std::uint32_t shapeId(pugi::xml_node shape);
PowerPoint::ShapeType shapeType(pugi::xml_node shape);

/// p:nvPr: placeholder, media, tags. Null when the shape lacks it.
pugi::xml_node applicationProperties(pugi::xml_node shape);

/// Whether the shape is a frame with a chart, of any kind.
bool isChart(pugi::xml_node shape);
/// c:chart, which refers to the chart's part; null without one and in charts of
/// the newer kind (chartex).
pugi::xml_node chartReference(pugi::xml_node shape);

/// p:oleObj of an embedded or linked object, else null.
pugi::xml_node oleObject(pugi::xml_node shape);

/// The id of the relationship to what the shape is linked to: a picture, an
/// object, a film or sound. Empty when it is not linked.
std::string_view linkRelationship(pugi::xml_node shape);

/// The top-level shapes of a p:spTree in drawing order, also by name. Of
/// alternative contents the first choice counts.
class ShapeIndex {
 public:
  explicit ShapeIndex(pugi::xml_node shapeTree);
  [[nodiscard]] const std::vector<pugi::xml_node>& all() const { return all_; }
  /// The first of that name in any case; null when there is none.
  [[nodiscard]] pugi::xml_node find(std::string_view name) const;

 private:
  std::vector<pugi::xml_node> all_;
  std::unordered_map<std::string, pugi::xml_node> byName_;  // key in upper case
};

}  // namespace presentationml
