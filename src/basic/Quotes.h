#pragma once

#include <string>
#include <string_view>

namespace basic {

/// A name as messages show it: 'name'.
inline std::string InQuotes(std::string_view text) {
  return std::string(1, '\'').append(text).append(1, '\'');
}

}  // namespace basic
