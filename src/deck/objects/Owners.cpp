#include "deck/objects/Owners.h"

#include "deck/objects/Presentation.h"
#include "opc/Xml.h"
#include "presentationml/ShapeNode.h"

namespace deck {

Owners::Owners(const Presentation& presentation) {
  add({}, {0, &presentation.part(), presentation.part().xml().document_element()});
  for (std::int32_t slide = 1; slide <= presentation.slideCount(); ++slide) {
    opc::Part& part = presentation.slidePart(slide);
    const pugi::xml_node root = part.xml().document_element();
    const std::uint32_t id = presentation.slideId(slide);
    add({id, 0, 0}, {slide, &part, root});
    std::unordered_map<std::uint32_t, std::uint32_t> count;
    opc::xml::forEachNode(presentationml::shapeTree(root), [&](pugi::xml_node node, int) {
      if (!presentationml::isShape(node)) return true;
      const std::uint32_t shape = presentationml::shapeId(node);
      add({id, shape, count[shape]++}, {slide, &part, node});
      return true;
    });
  }
}

void Owners::add(OwnerId id, const OwnerPlace& place) {
  while (!places_.emplace(id, place).second) ++id.twin;
  ids_.emplace(place.node.internal_object(), id);
}

std::optional<OwnerPlace> Owners::find(const OwnerId& id) const {
  const auto found = places_.find(id);
  return found == places_.end() ? std::nullopt : std::optional(found->second);
}

OwnerId Owners::idOf(pugi::xml_node node) const {
  const auto found = ids_.find(node.internal_object());
  return found == ids_.end() ? OwnerId() : found->second;
}

}  // namespace deck
