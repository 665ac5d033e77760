#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "opc/Package.h"

namespace opc {

/// The relationships of one source (ECMA-376 part 2, 9.3) behind an index, over
/// the part that stores them.
class Relationships {
 public:
  /// Null: the source has none.
  explicit Relationships(Part* stored);

  [[nodiscard]] bool isStored() const { return stored_ != nullptr; }
  [[nodiscard]] const std::vector<Relationship>& all() const { return all_; }
  [[nodiscard]] const Relationship* find(std::string_view id) const;
  /// Returns the new id.
  std::string add(std::string_view type, std::string_view target);
  void remove(std::string_view id);

 private:
  Part* stored_;
  std::vector<Relationship> all_;
  std::vector<pugi::xml_node> nodes_;  // of all_
  std::unordered_map<std::string, std::size_t> byId_;
  int lastNumber_ = 0;  // the largest N of an id "rIdN"
};

/// What an element Relationship says (ECMA-376 part 2, 9.3.2.2).
Relationship relationshipOf(pugi::xml_node element);

/// The name of the part that stores a source's relationships; the source of the
/// package's own has the empty name.
std::string relationshipsPartName(std::string_view source);

/// The part name that a target names, seen from its source; empty when it leads
/// out of the package.
std::string resolveTarget(std::string_view source, std::string_view target);

/// The target that names a part, seen from its source.
std::string relativeTarget(std::string_view source, std::string_view partName);

}  // namespace opc
