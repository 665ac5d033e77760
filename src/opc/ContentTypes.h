#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>

namespace opc {

class Part;

/// The types of a package's parts, [Content_Types].xml (ECMA-376 part 2, 10.1.2):
/// by extension, overridden by part name.
class ContentTypes {
 public:
  explicit ContentTypes(Part& part);

  /// Empty when neither the part's name nor its extension has a type.
  [[nodiscard]] std::string of(std::string_view partName) const;
  /// Makes the type the part's; writes nothing when its extension says the same.
  void set(std::string_view partName, std::string_view type);
  /// Takes the part's own type away, if it has one.
  void forget(std::string_view partName);

 private:
  Part& part_;
  std::unordered_map<std::string, std::string> byExtension_;   // key in upper case
  std::unordered_map<std::string, pugi::xml_node> overrides_;  // key in upper case, without slash
};

}  // namespace opc
