#pragma once

#include <string>
#include <string_view>

#include "basic/Error.h"
#include "basic/Quotes.h"

namespace deck {

/// Throws what this folder throws: a basic::Error with a sentence for a person.
[[noreturn]] inline void fail(std::string description) {
  throw basic::Error(basic::AdapterError, "deck", std::move(description));
}

}  // namespace deck
