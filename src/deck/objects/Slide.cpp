#include "deck/objects/Slide.h"

#include "deck/objects/Shape.h"
#include "deck/objects/Tags.h"
#include "opc/Xml.h"

namespace deck {
namespace {

/// The attribute that holds after how many milliseconds the show goes on; a
/// transition may stand in alternative contents.
pugi::xml_attribute advanceAfter(pugi::xml_node slide) {
  pugi::xml_attribute found;
  opc::xml::forEachPreferred(slide, [&](pugi::xml_node node) {
    if (!found && std::string_view(node.name()) == "p:transition") found = node.attribute("advTm");
  });
  return found;
}

}  // namespace

std::shared_ptr<PowerPoint::Slide> Slides::Item(std::int32_t index) {
  static_cast<void>(presentation_->slidePart(index));  // an error when out of range
  return std::make_shared<Slide>(presentation_, index);
}

std::shared_ptr<PowerPoint::Shapes> Slide::Shapes() {
  return std::make_shared<deck::Shapes>(presentation_, index_);
}

std::shared_ptr<PowerPoint::Tags> Slide::Tags() {
  return std::make_shared<deck::Tags>(presentation_,
                                      presentation_->tagStore().of(part(), part().xml().document_element()));
}

std::shared_ptr<PowerPoint::SlideShowTransition> Slide::SlideShowTransition() {
  return std::make_shared<deck::SlideShowTransition>(presentation_, index_);
}

void SlideShowTransition::Hidden(bool hidden) {
  if (hidden == Hidden()) return;
  pugi::xml_node root = slide();
  root.remove_attribute("show");
  if (hidden) root.append_attribute("show") = "0";
  presentation_->noteHiddenChange(slideIndex_);
}

bool SlideShowTransition::AdvanceOnTime() const { return static_cast<bool>(advanceAfter(slide())); }

double SlideShowTransition::AdvanceTime() const { return advanceAfter(slide()).as_double() / 1000.0; }

}  // namespace deck
