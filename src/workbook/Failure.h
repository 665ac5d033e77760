#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "basic/Error.h"

namespace workbook {

/// Throws what this folder throws: a basic::Error with a sentence for a person.
[[noreturn]] inline void fail(std::string description) {
  throw basic::Error(basic::AdapterError, "workbook", std::move(description));
}

inline std::string inQuotes(std::string_view text) {
  return std::string(1, '\'').append(text).append(1, '\'');
}

[[noreturn]] inline void failOpening(std::string_view path, std::string_view reason) {
  fail("workbook " + inQuotes(path) + " cannot be opened: " + std::string(reason));
}

}  // namespace workbook
