#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "basic/Error.h"
#include "basic/Quotes.h"

namespace workbook {

/// Throws what this folder throws: a basic::Error with a sentence for a person.
[[noreturn]] inline void fail(std::string description) {
  throw basic::Error(basic::AdapterError, "workbook", std::move(description));
}

[[noreturn]] inline void failOpening(std::string_view path, std::string_view reason) {
  fail("workbook " + basic::InQuotes(path) + " cannot be opened: " + std::string(reason));
}

}  // namespace workbook
