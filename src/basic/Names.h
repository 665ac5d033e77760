#pragma once

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "basic/Strings.h"

namespace basic {

/// Whether the name is among them, in any case of ASCII letters.
template <typename Names>
bool HasName(const Names& names, std::string_view name) {
  return std::any_of(names.begin(), names.end(),
                     [name](std::string_view each) { return EqualsIgnoreCase(each, name); });
}
inline bool HasName(std::initializer_list<std::string_view> names, std::string_view name) {
  return HasName<std::initializer_list<std::string_view>>(names, name);
}

}  // namespace basic
