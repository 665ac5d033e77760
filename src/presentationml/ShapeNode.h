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

/// An element's name without its prefix, which is another one in diagrams' drawings (dsp:sp) and content
/// parts.
std::string_view localName(pugi::xml_node node);
/// The first child of such a name; null for none.
pugi::xml_node childByLocalName(pugi::xml_node parent, std::string_view name);

/// p:spTree of a slide, layout or master by its root element.
pugi::xml_node shapeTree(pugi::xml_node root);

/// Whether the element is a shape.
bool isShape(pugi::xml_node node);

/// p:nvSpPr, p:nvPicPr and their like, which hold the next two.
pugi::xml_node nonVisualProperties(pugi::xml_node shape);
/// p:cNvPr: id, name.
pugi::xml_node shapeProperties(pugi::xml_node shape);
std::string_view shapeName(pugi::xml_node shape);
/// Any unsigned 32-bit number (ECMA-376 part 1, 20.1.10.21); 0 when unreadable.
std::uint32_t shapeId(pugi::xml_node shape);
PowerPoint::ShapeType shapeType(pugi::xml_node shape);

/// p:nvPr: placeholder, media, tags. Null when the shape lacks it.
pugi::xml_node applicationProperties(pugi::xml_node shape);
/// p:ph; null for shapes that are no placeholders.
pugi::xml_node placeholder(pugi::xml_node shape);
/// The film or sound that a picture plays: a:videoFile, a:audioFile, a:wavAudioFile, a:quickTimeFile or
/// a:audioCd; null for none.
pugi::xml_node media(pugi::xml_node picture);

/// Whether the shape is a frame with a chart, of any kind.
bool isChart(pugi::xml_node shape);
/// c:chart, which refers to the chart's part; null without one and in charts of
/// the newer kind (chartex).
pugi::xml_node chartReference(pugi::xml_node shape);

/// a:tbl of a frame with a table, be it in a placeholder; null without one.
pugi::xml_node table(pugi::xml_node shape);

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
