// A slide and how it comes and goes, over its XML.

#include "deck/objects/Slide.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "deck/objects/Shape.h"
#include "deck/objects/Tags.h"
#include "opc/Xml.h"

namespace deck {
namespace {

bool isTransition(pugi::xml_node node) { return opc::xml::isNamed(node, "p:transition"); }

/// Each p:transition of a slide: in alternative contents one for each choice.
std::vector<pugi::xml_node> transitions(pugi::xml_node slide) {
  std::vector<pugi::xml_node> found;
  for (const pugi::xml_node child : slide.children()) {
    if (isTransition(child)) found.push_back(child);
    if (!opc::xml::isNamed(child, "mc:AlternateContent")) continue;
    for (const pugi::xml_node choice : child.children()) {
      if (const pugi::xml_node transition = choice.child("p:transition")) found.push_back(transition);
    }
  }
  return found;
}

/// The one that counts; null for none.
pugi::xml_node transitionOf(pugi::xml_node slide) {
  pugi::xml_node found;
  opc::xml::forEachPreferred(slide, [&](pugi::xml_node node) {
    if (!found && isTransition(node)) found = node;
  });
  return found;
}

/// Where the schema wants it.
pugi::xml_node addTransition(pugi::xml_node slide) {
  const pugi::xml_node before =
      slide.child("p:clrMapOvr") ? slide.child("p:clrMapOvr") : slide.child("p:cSld");
  return slide.insert_child_after("p:transition", before);
}

void setMilliseconds(pugi::xml_node transition, double seconds) {
  pugi::xml_attribute attribute = transition.attribute("advTm");
  if (!attribute) attribute = transition.append_attribute("advTm");
  constexpr double Longest = 86'400'000;  // a day; the attribute holds what an unsigned number does
  attribute = static_cast<unsigned>(std::lround(std::clamp(seconds * 1000, 0.0, Longest)));
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

std::shared_ptr<PowerPoint::TimeLine> Slide::TimeLine() {
  return std::make_shared<deck::TimeLine>(presentation_, index_);
}

std::shared_ptr<PowerPoint::Slide> Slide::Duplicate() {
  presentation_->duplicateSlide(index_);
  return std::make_shared<Slide>(presentation_, index_ + 1);
}

void SlideShowTransition::Hidden(bool hidden) {
  if (hidden == Hidden()) return;
  pugi::xml_node root = slide();
  root.remove_attribute("show");
  if (hidden) root.append_attribute("show") = "0";
  presentation_->noteHiddenChange(slideIndex_);
}

bool SlideShowTransition::AdvanceOnTime() const {
  return static_cast<bool>(transitionOf(slide()).attribute("advTm"));
}

void SlideShowTransition::AdvanceOnTime(bool advances) {
  if (advances == AdvanceOnTime()) return;
  if (advances) return AdvanceTime(0);
  for (pugi::xml_node transition : transitions(slide())) transition.remove_attribute("advTm");
  noteChange();
}

double SlideShowTransition::AdvanceTime() const {
  return transitionOf(slide()).attribute("advTm").as_double() / 1000.0;
}

void SlideShowTransition::AdvanceTime(double seconds) {
  std::vector<pugi::xml_node> all = transitions(slide());
  if (all.empty()) all.push_back(addTransition(slide()));
  for (const pugi::xml_node transition : all) setMilliseconds(transition, seconds);
  noteChange();
}

void SlideShowTransition::EntryEffect(PowerPoint::EntryEffect /*effect*/) {
  const pugi::xml_node former = transitionOf(slide());
  if (!former) return;
  pugi::xml_node plain = addTransition(slide());
  for (const char* kept : {"advClick", "advTm"}) {
    if (const pugi::xml_attribute attribute = former.attribute(kept)) plain.append_copy(attribute);
  }
  for (const pugi::xml_node each : transitions(slide())) {
    if (each == plain) continue;
    const bool isAlternative = each.parent() != slide();
    pugi::xml_node whole = isAlternative ? each.parent().parent() : each;
    slide().remove_child(whole);
    if (isAlternative) break;
  }
  noteChange();
}

namespace {

bool playsMedia(pugi::xml_node timing) {
  bool plays = false;
  opc::xml::forEachNode(timing, [&](pugi::xml_node node, int) {
    plays = opc::xml::isNamed(node, "p:video") || opc::xml::isNamed(node, "p:audio");
    return !plays;
  });
  return plays;
}

}  // namespace

void TimeLine::Delete() {
  opc::Part& part = presentation_->slidePart(slideIndex_);
  pugi::xml_node root = part.xml().document_element();
  pugi::xml_node timing = root.child("p:timing");
  if (!timing || playsMedia(timing)) return;
  root.remove_child(timing);
  presentation_->noteChange(part);
}

}  // namespace deck
