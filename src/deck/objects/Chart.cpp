#include "deck/objects/Chart.h"

#include "deck/Failure.h"
#include "opc/Xml.h"

namespace deck {

/// Runs a step whose errors know the reason alone.
template <typename Step>
auto Chart::explain(const Step& step) const {
  try {
    return step();
  } catch (const basic::Error& error) {
    fail("The chart " + basic::InQuotes(presentationml::shapeName(frame_)) + " on slide " +
         std::to_string(slideIndex_) + " cannot be refilled: " + error.description + ".");
  }
}

RefillableChart& Chart::chart() const {
  return presentation_->charts().of(presentation_->slidePart(slideIndex_), frame_);
}

std::shared_ptr<MSGraph::DataSheet> Chart::DataSheet() {
  explain([this] { static_cast<void>(chart()); });
  return shared_from_this();
}

MSGraph::Table Chart::Cells() const {
  return explain([this] { return chart().data().table(); });
}

void Chart::Cells(const MSGraph::Table& table) {
  if (explain([&] { return chart().fill(table); })) presentation_->noteChartChange(slideIndex_, frame_);
}

void Chart::Check(const MSGraph::Table& table) const {
  explain([&] { chart().check(table); });
}

void Chart::Restore() {
  if (explain([this] { return chart().restore(); })) presentation_->noteChartChange(slideIndex_, frame_);
}

opc::Part* Chart::part() const {
  const pugi::xml_node reference =
      presentationml::childByLocalName(frame_.child("a:graphic").child("a:graphicData"), "chart");
  return presentation_->slidePart(slideIndex_).target(reference.attribute("r:id").value());
}

pugi::xml_node Chart::linkedData() const {
  opc::Part* const chart = part();
  if (chart == nullptr) return {};
  pugi::xml_node found;
  opc::xml::forEachNode(chart->xml().document_element(), [&](pugi::xml_node node, int) {
    if (presentationml::localName(node) == "externalData") found = node;
    return !found;
  });
  const opc::Relationship* link = chart->relationship(found.attribute("r:id").value());
  return link != nullptr && link->external ? found : pugi::xml_node();
}

void Chart::BreakLink() {
  pugi::xml_node linked = linkedData();
  if (!linked) return;
  opc::Part& chart = *part();
  presentation_->package().removeRelationship(chart, linked.attribute("r:id").value());
  linked.parent().remove_child(linked);
  presentation_->charts().forget(chart);
  presentation_->noteChange(chart);
}

}  // namespace deck
