#pragma once

#include <string>
#include <string_view>

#include "basic/Error.h"

namespace opc {

/// Throws what this folder throws: a basic::Error with a sentence for a person.
[[noreturn]] inline void fail(std::string description) {
  throw basic::Error(basic::AdapterError, "package", std::move(description));
}

inline std::string inQuotes(std::string_view text) {
  return std::string(1, '\'').append(text).append(1, '\'');
}

}  // namespace opc
