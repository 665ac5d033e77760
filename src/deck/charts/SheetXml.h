#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace deck {

/// A part of a workbook by the prefix that its root has: most writers use none
/// for spreadsheetml, some one of their own.
class SheetXml {
 public:
  explicit SheetXml(const pugi::xml_document& document) : root_(document.document_element()) {
    const std::string_view name = root_.name();
    prefix_ = name.substr(0, name.find(':') + 1);
  }

  [[nodiscard]] pugi::xml_node root() const { return root_; }
  [[nodiscard]] std::string name(const char* local) const { return prefix_ + local; }
  [[nodiscard]] pugi::xml_node child(pugi::xml_node parent, const char* local) const {
    return parent.child(name(local).c_str());
  }
  [[nodiscard]] std::vector<pugi::xml_node> children(pugi::xml_node parent, const char* local) const {
    std::vector<pugi::xml_node> found;
    const std::string wanted = name(local);
    for (pugi::xml_node child : parent.children(wanted.c_str())) found.push_back(child);
    return found;
  }

 private:
  pugi::xml_node root_;
  std::string prefix_;
};

}  // namespace deck
