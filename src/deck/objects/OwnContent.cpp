// The texts of a shape as XML, and how they come back into the slide.

#include "deck/objects/OwnContent.h"

#include <vector>

#include "basic/Error.h"
#include "deck/objects/Presentation.h"
#include "deck/objects/TextBody.h"
#include "opc/Xml.h"
#include "presentationml/ShapeNode.h"

namespace deck {
namespace {

/// An element that holds a text, and the name of that.
struct TextPlace {
  pugi::xml_node holder;
  const char* element;
};

std::vector<TextPlace> textPlaces(pugi::xml_node shape) {
  if (opc::xml::isNamed(shape, "p:sp")) return {{shape, "p:txBody"}};
  std::vector<TextPlace> places;
  for (const pugi::xml_node row : presentationml::table(shape).children("a:tr")) {
    for (const pugi::xml_node cell : row.children("a:tc")) places.push_back({cell, "a:txBody"});
  }
  return places;
}

void put(TextPlace place, pugi::xml_node body) {
  pugi::xml_node shown = place.holder.child(place.element);
  if (body && !shown) {
    shown = opc::xml::isNamed(place.holder, "p:sp") ? addTextBody(place.holder) : addCellText(place.holder);
  }
  if (body) place.holder.insert_copy_before(body, shown);
  place.holder.remove_child(shown);
}

/// Answers whether there was anything to put.
bool putBodies(std::string text, const std::vector<TextPlace>& places) {
  if (places.empty()) return false;
  try {
    const auto document = opc::xml::parse(text, [] { return std::string(); });
    const auto bodies = document->document_element().children("body");
    if (static_cast<std::size_t>(std::distance(bodies.begin(), bodies.end())) != places.size()) return false;
    auto place = places.begin();
    for (const pugi::xml_node body : bodies) {
      put(*place, body.child(place->element));
      ++place;
    }
    return true;
  } catch (const basic::Error&) {  // as the header says
    return false;
  }
}

/// Null for what is no chart whose data can be replaced.
RefillableChart* chartOf(Presentation& presentation, const OwnerPlace& shape) {
  if (!presentationml::isChart(shape.node)) return nullptr;
  try {
    return &presentation.charts().of(*shape.part, shape.node);
  } catch (const basic::Error&) {
    return nullptr;
  }
}

}  // namespace

OwnContent::OwnContent(Presentation& presentation, const OwnerPlace& shape) : bodies_("<bodies>") {
  for (const TextPlace& place : textPlaces(shape.node)) {
    bodies_ += "<body>";
    if (const pugi::xml_node body = place.holder.child(place.element)) opc::xml::append(bodies_, body);
    bodies_ += "</body>";
  }
  bodies_ += "</bodies>";
  const RefillableChart* chart = chartOf(presentation, shape);
  if (chart != nullptr && chart->isFilled()) chart_ = chart->data().table();
}

void OwnContent::putBack(Presentation& presentation, const OwnerPlace& shape) const {
  if (const pugi::xml_node table = presentationml::table(shape.node))
    presentation.authorsCells().restore(table);
  if (putBodies(bodies_, textPlaces(shape.node))) presentation.noteShapeChange(shape.slide, shape.node);
  presentation.showOwnPicture(shape.slide, shape.node);
  RefillableChart* chart = chartOf(presentation, shape);
  if (chart == nullptr) return;
  if (chart_ ? chart->fill(*chart_) : chart->restore()) presentation.noteChartChange(shape.slide, shape.node);
}

}  // namespace deck
