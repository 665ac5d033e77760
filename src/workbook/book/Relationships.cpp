#include "workbook/book/Relationships.h"

#include <utility>

#include "basic/Strings.h"
#include "workbook/book/Xml.h"

namespace workbook {
namespace {

/// A target relative to the folder of the part that names it, or from the root.
std::string resolved(std::string_view folder, std::string_view target) {
  std::vector<std::string> steps;
  if (!target.starts_with('/')) steps = basic::Split(folder, '/');
  for (std::string& step : basic::Split(target, '/')) {
    if (step == ".." && !steps.empty()) {
      steps.pop_back();
    } else if (!step.empty() && step != "." && step != "..") {
      steps.push_back(std::move(step));
    }
  }
  std::string path;
  for (const std::string& step : steps) path += (path.empty() ? "" : "/") + step;
  return path;
}

}  // namespace

std::vector<Relationship> readRelationships(const Archive& archive, std::string_view part) {
  const std::size_t slash = part.rfind('/');
  const std::string_view folder = slash == std::string_view::npos ? "" : part.substr(0, slash);
  const std::string_view name = slash == std::string_view::npos ? part : part.substr(slash + 1);
  const std::string listed = resolved(folder, "_rels/" + std::string(name) + ".rels");
  std::vector<Relationship> relationships;
  if (!archive.has(listed)) return relationships;

  const auto document = xml::parse(archive, listed);
  for (pugi::xml_node node : document->document_element().children()) {
    const std::string_view type = xml::attribute(node, "Type");
    const bool isOutside = xml::attribute(node, "TargetMode") == "External";
    relationships.push_back({std::string(xml::attribute(node, "Id")),
                             std::string(type.substr(type.rfind('/') + 1)),
                             isOutside ? "" : resolved(folder, xml::attribute(node, "Target"))});
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
