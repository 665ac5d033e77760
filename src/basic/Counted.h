#pragma once

#include <concepts>
#include <string>
#include <string_view>

namespace basic {

/// "1 row", "2 rows": what takes an s in the plural.
template <std::integral Integer>
std::string Counted(Integer count, std::string_view thing) {
  return std::to_string(count).append(" ").append(thing).append(count == 1 ? "" : "s");
}

}  // namespace basic
