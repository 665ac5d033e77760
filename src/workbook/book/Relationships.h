#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbook/book/Parts.h"

namespace workbook {

/// One relationship of a part (ECMA-376 part 2, 9.3).
struct Relationship {
  std::string id;
  /// The last word of its type's address: "worksheet", "styles".
  std::string kind;
  /// The part that it leads to; empty for one outside the workbook.
  std::string target;
};

/// The relationships of a part (of the package for ""), none without a part of
/// them.
std::vector<Relationship> readRelationships(const Parts& parts, std::string_view part);

/// The target of the first one of a kind; empty when there is none.
std::string targetOfKind(const std::vector<Relationship>& relationships, std::string_view kind);

}  // namespace workbook
