#pragma once

#include <string>
#include <string_view>

#include "basic/Error.h"
#include "basic/Quotes.h"

namespace opc {

/// Throws what this folder throws: a basic::Error with a sentence for a person.
[[noreturn]] inline void fail(std::string description) {
  throw basic::Error(basic::AdapterError, "package", std::move(description));
}

}  // namespace opc
