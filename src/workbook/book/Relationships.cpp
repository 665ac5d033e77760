#include "workbook/book/Relationships.h"

#include "basic/Percent.h"
#include "opc/Relationships.h"
#include "workbook/book/Xml.h"

namespace workbook {
namespace {

std::string targetOf(const Parts& parts, std::string_view part, const opc::Relationship& relationship) {
  if (relationship.external) return {};
  std::string target = opc::resolveTarget(part, relationship.target);
  return parts.has(target) ? target : basic::PercentDecoded(target);
}

}  // namespace

std::vector<Relationship> readRelationships(const Parts& parts, std::string_view part) {
  const std::string listed = opc::relationshipsPartName(part);
  std::vector<Relationship> relationships;
  if (!parts.has(listed)) return relationships;
  const auto document = xml::parse(parts, listed);
  for (pugi::xml_node node : document->document_element().children()) {
    const opc::Relationship each = opc::relationshipOf(node);
    relationships.push_back(
        {each.id, each.type.substr(each.type.rfind('/') + 1), targetOf(parts, part, each)});
  }
  return relationships;
}

std::string targetOfKind(const std::vector<Relationship>& relationships, std::string_view kind) {
  for (const Relationship& relationship : relationships) {
    if (relationship.kind == kind) return relationship.target;
  }
  return {};
}

}  // namespace workbook
