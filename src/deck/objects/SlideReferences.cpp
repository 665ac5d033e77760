#include "deck/objects/SlideReferences.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "opc/Xml.h"

namespace deck {
namespace {

constexpr const char* SectionsExtension = "{521415D9-36F7-43E2-AB2F-B90AF26B5E84}";

pugi::xml_node entryOf(pugi::xml_node sections, std::uint32_t id) {
  for (const pugi::xml_node section : sections.children("p14:section")) {
    const pugi::xml_node list = section.child("p14:sldIdLst");
    if (const pugi::xml_node entry = list.find_child_by_attribute("id", std::to_string(id).c_str())) {
      return entry;
    }
  }
  return {};
}

bool usesAny(pugi::xml_node node, const std::set<std::string, std::less<>>& ids) {
  for (const pugi::xml_attribute attribute : node.attributes()) {
    if (std::string_view(attribute.name()).starts_with("r:") && ids.contains(attribute.value())) return true;
  }
  return false;
}

}  // namespace

pugi::xml_node sectionsOf(pugi::xml_node presentation) {
  return presentation.child("p:extLst")
      .find_child_by_attribute("p:ext", "uri", SectionsExtension)
      .child("p14:sectionLst");
}

void addToSection(pugi::xml_node sections, std::uint32_t id, std::uint32_t before) {
  pugi::xml_node neighbour = entryOf(sections, before);
  pugi::xml_node added;
  if (neighbour) {
    added = neighbour.parent().insert_child_after("p14:sldId", neighbour);
  } else if (pugi::xml_node section = sections.child("p14:section")) {
    pugi::xml_node list = section.child("p14:sldIdLst");
    if (!list) list = section.prepend_child("p14:sldIdLst");
    added = list.prepend_child("p14:sldId");
  }
  if (added) added.append_attribute("id") = id;
}

void removeFromSections(pugi::xml_node sections, std::uint32_t id) {
  const pugi::xml_node entry = entryOf(sections, id);
  entry.parent().remove_child(entry);
}

void removeReferencesTo(opc::Package& package, const opc::Part& slide) {
  for (opc::Part* part : package.parts()) {
    if (part == &slide) continue;
    std::set<std::string, std::less<>> ids;
    for (const opc::Relationship& relationship : part->relationships()) {
      if (part->target(relationship) == &slide) ids.insert(relationship.id);
    }
    if (ids.empty()) continue;
    std::vector<pugi::xml_node> users;
    opc::xml::forEachNode(part->xml().document_element(), [&](pugi::xml_node node, int) {
      if (usesAny(node, ids)) users.push_back(node);
      return true;
    });
    // From the last, as one may stand within another.
    for (auto user = users.rbegin(); user != users.rend(); ++user) user->parent().remove_child(*user);
    for (const std::string& id : ids) package.removeRelationship(*part, id);
    part->markChanged();
  }
}

}  // namespace deck
