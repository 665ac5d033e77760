#include "support/PackageCheck.h"

#include <pugixml.hpp>
#include <set>

#include "opc/Package.h"
#include "opc/Xml.h"

namespace support {
namespace {

bool isStored(const opc::Part& part) {
  return part.name() == "[Content_Types].xml" || part.name().ends_with(".rels");
}

void checkReferences(opc::Part& part, std::vector<std::string>& faults) {
  std::set<std::string> shapeIds;
  opc::xml::forEachNode(part.xml().document_element(), [&](pugi::xml_node node, int) {
    for (pugi::xml_attribute attribute : node.attributes()) {
      const std::string id = attribute.value();
      if (std::string_view(attribute.name()).starts_with("r:") && !id.empty() &&
          part.relationship(id) == nullptr) {
        faults.push_back(part.name() + " refers to " + id + ", which is missing");
      }
    }
    if (std::string_view(node.name()) == "p:cNvPr" && !shapeIds.insert(node.attribute("id").value()).second) {
      faults.push_back(part.name() + " has two shapes of id " + node.attribute("id").value());
    }
    return true;
  });
}

}  // namespace

std::vector<std::string> faultsOf(const std::string& deck) {
  std::vector<std::string> faults;
  const auto package = opc::Package::fromBytes(deck, "checked");
  std::set<const opc::Part*> reached;
  const auto reach = [&](const std::string& source, const std::vector<opc::Relationship>& relationships,
                         const auto& targetOf) {
    std::set<std::string> ids;
    for (const opc::Relationship& relationship : relationships) {
      if (!ids.insert(relationship.id).second) faults.push_back(source + " has two " + relationship.id);
      if (relationship.external) continue;
      if (const opc::Part* target = targetOf(relationship)) {
        reached.insert(target);
      } else {
        faults.push_back(source + " leads to " + relationship.target + ", which is missing");
      }
    }
  };
  for (const char* type : {"officeDocument", "thumbnail", "core-properties", "extended-properties"}) {
    if (const opc::Part* part = package->related(type)) reached.insert(part);
  }
  for (opc::Part* part : package->parts()) {
    if (isStored(*part)) continue;
    reach(part->name(), part->relationships(), [&](const opc::Relationship& r) { return part->target(r); });
    if (part->contentType().empty()) faults.push_back(part->name() + " has no content type");
    if (part->name().ends_with(".xml")) checkReferences(*part, faults);
  }
  for (const opc::Part* part : package->parts()) {
    if (!isStored(*part) && !reached.contains(part)) faults.push_back("nothing leads to " + part->name());
    if (part->name().ends_with(".rels")) {
      std::string source = part->name().substr(0, part->name().size() - 5);
      source.erase(source.find("_rels/"), 6);
      if (!source.empty() && package->find(source) == nullptr) {
        faults.push_back(part->name() + " belongs to no part");
      }
    }
  }
  for (pugi::xml_node node :
       package->part("[Content_Types].xml").xml().document_element().children("Override")) {
    if (package->find(node.attribute("PartName").value()) == nullptr) {
      faults.push_back(std::string("a type is given for the missing ") + node.attribute("PartName").value());
    }
  }
  return faults;
}

}  // namespace support
