// The slides of a presentation: read when it is opened, and how they come, go and change places.

#include <algorithm>
#include <iterator>

#include "basic/Strings.h"
#include "deck/Failure.h"
#include "deck/objects/Presentation.h"
#include "deck/objects/SlideParts.h"
#include "deck/objects/SlideReferences.h"

namespace deck {

void Presentation::SlideEntry::readShapes() {
  shapes =
      std::make_unique<presentationml::ShapeIndex>(presentationml::shapeTree(part->xml().document_element()));
}

void Presentation::loadSlides() {
  for (pugi::xml_node node : part_->xml().document_element().child("p:sldIdLst").children("p:sldId")) {
    slides_.push_back(entryOf(node));
  }
}

Presentation::SlideEntry Presentation::entryOf(pugi::xml_node sldId) const {
  const std::string id = sldId.attribute("r:id").value();
  const std::string which =
      basic::InQuotes(package_->name()) + " cannot be opened: slide " + std::to_string(slides_.size() + 1);
  const opc::Relationship* relationship = part_->relationship(id);
  if (relationship == nullptr)
    fail(which + " refers to the relationship " + basic::InQuotes(id) + ", which is missing");
  opc::Part* target = part_->target(*relationship);
  if (target == nullptr) fail(which + ": its part " + relationship->target + " is missing");
  const pugi::xml_node root = target->xml().document_element();
  if (std::string_view(root.name()) != "p:sld") fail(which + ": " + target->name() + " holds no slide");
  SlideEntry entry{target, sldId.attribute("id").as_uint(), id, nullptr};
  entry.readShapes();
  return entry;
}

std::string Presentation::slideRelationship(std::uint32_t id) const {
  const auto found =
      std::find_if(slides_.begin(), slides_.end(), [&](const SlideEntry& entry) { return entry.id == id; });
  return found == slides_.end() ? std::string() : found->relationshipId;
}

void Presentation::requireNobodyWatches() const {
  if (listeners_.empty() && editListeners_.empty()) return;
  fail("The slides of " + basic::InQuotes(package_->name()) +
       " cannot come, go or change places while it is shown or edited.");
}

std::uint32_t Presentation::freeSlideId() const {
  std::uint32_t id =
      256;  // the smallest there may be, as the one below is the largest (ECMA-376 part 1, 19.7.13)
  constexpr std::uint32_t Largest = 2'147'483'647;
  for (const SlideEntry& entry : slides_) {
    if (entry.id < Largest) id = std::max(id, entry.id + 1);
  }
  return id;
}

void Presentation::duplicateSlide(std::int32_t index) {
  requireNobodyWatches();
  const SlideEntry& original = slide(index);
  tags_.write();
  charts_.write();
  const auto copyPart = [&]() -> opc::Part& {
    const LivePictures::Absence ownPictures(pictures_, /*theyStay=*/false);
    return copySlidePart(*package_, *original.part);
  };
  opc::Part& copy = copyPart();
  const std::string type = part_->relationship(original.relationshipId)->type;

  const pugi::xml_node root = part_->xml().document_element();
  const auto nodes = root.child("p:sldIdLst").children("p:sldId");
  const std::uint32_t id = freeSlideId();
  pugi::xml_node before = *std::next(nodes.begin(), index - 1);
  pugi::xml_node node = before.parent().insert_child_after("p:sldId", before);
  node.append_attribute("id") = id;
  node.append_attribute("r:id") = package_->addRelationship(*part_, type, copy).c_str();
  addToSection(sectionsOf(root), id, original.id);
  slides_.insert(slides_.begin() + index, entryOf(node));
  owners_.reset();
  noteChange(*part_);
  loadLinkedPictures(index + 1);
}

void Presentation::removeSlide(std::int32_t index) {
  requireNobodyWatches();
  const SlideEntry& entry = slide(index);
  opc::Part& part = *entry.part;
  const pugi::xml_node root = part_->xml().document_element();
  removeFromSections(sectionsOf(root), entry.id);
  pugi::xml_node list = root.child("p:sldIdLst");
  list.remove_child(*std::next(list.children("p:sldId").begin(), index - 1));
  slides_.erase(slides_.begin() + (index - 1));
  owners_.reset();
  // A broken deck may list a slide twice.
  const bool isGone = std::none_of(slides_.begin(), slides_.end(),
                                   [&](const SlideEntry& other) { return other.part == &part; });
  if (isGone) removeSlidePart(part);
  noteChange(*part_);
}

void Presentation::removeSlidePart(opc::Part& part) {
  pictures_.forget(part);
  authorsCells_.forget(part.xml());
  tags_.forget(part);
  const std::vector<opc::Part*> parts = partsOfSlide(*package_, part);
  removeReferencesTo(*package_, part);
  for (opc::Part* each : parts) {
    charts_.forget(*each);
    package_->remove(*each);
  }
}

void Presentation::moveSlide(std::int32_t index, std::int32_t place) {
  requireNobodyWatches();
  static_cast<void>(slide(place));
  if (place == index) return;
  const std::uint32_t id = slide(index).id;
  const auto from = slides_.begin() + (index - 1);
  const auto to = slides_.begin() + (place - 1);
  if (index < place) {
    std::rotate(from, from + 1, to + 1);
  } else {
    std::rotate(to, from, from + 1);
  }
  const pugi::xml_node root = part_->xml().document_element();
  pugi::xml_node list = root.child("p:sldIdLst");
  const auto nodes = list.children("p:sldId");
  const pugi::xml_node moved = *std::next(nodes.begin(), index - 1);
  const pugi::xml_node at = *std::next(nodes.begin(), place - 1);
  if (index < place) {
    list.insert_move_after(moved, at);
  } else {
    list.insert_move_before(moved, at);
  }
  const pugi::xml_node sections = sectionsOf(root);
  removeFromSections(sections, id);
  addToSection(sections, id, place > 1 ? slide(place - 1).id : 0);
  owners_.reset();
  noteChange(*part_);
}

}  // namespace deck
