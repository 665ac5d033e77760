#include "opc/ContentTypes.h"

#include "basic/Strings.h"
#include "opc/Package.h"

namespace opc {
namespace {

std::string_view extensionOf(std::string_view partName) {
  const std::size_t dot = partName.find_last_of("./");
  return dot == std::string_view::npos || partName[dot] == '/' ? std::string_view()
                                                               : partName.substr(dot + 1);
}

}  // namespace

ContentTypes::ContentTypes(Part& part) : part_(part) {
  for (pugi::xml_node node : part_.xml().document_element().children()) {
    const std::string_view element = node.name();
    if (element == "Default") {
      byExtension_.emplace(basic::UCase(node.attribute("Extension").value()),
                           node.attribute("ContentType").value());
    } else if (element == "Override") {
      std::string_view name = node.attribute("PartName").value();
      if (name.starts_with('/')) name.remove_prefix(1);
      overrides_.emplace(basic::UCase(name), node);
    }
  }
}

std::string ContentTypes::of(std::string_view partName) const {
  if (const auto own = overrides_.find(basic::UCase(partName)); own != overrides_.end()) {
    return own->second.attribute("ContentType").value();
  }
  const auto common = byExtension_.find(basic::UCase(extensionOf(partName)));
  return common == byExtension_.end() ? std::string() : common->second;
}

void ContentTypes::set(std::string_view partName, std::string_view type) {
  if (of(partName) == type) return;
  forget(partName);
  pugi::xml_node node = part_.xml().document_element().append_child("Override");
  node.append_attribute("PartName") = std::string("/").append(partName).c_str();
  node.append_attribute("ContentType") = std::string(type).c_str();
  overrides_.emplace(basic::UCase(partName), node);
  part_.markChanged();
}

void ContentTypes::forget(std::string_view partName) {
  const auto own = overrides_.find(basic::UCase(partName));
  if (own == overrides_.end()) return;
  own->second.parent().remove_child(own->second);
  overrides_.erase(own);
  part_.markChanged();
}

}  // namespace opc
