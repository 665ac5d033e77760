#pragma once

#include <string>

#include "basic/Error.h"

namespace ppt {

/// Throws what this folder throws: a basic::Error with the reason alone, to follow the file's name.
[[noreturn]] inline void fail(std::string reason) {
  throw basic::Error(basic::AdapterError, "presentation", std::move(reason));
}

[[noreturn]] inline void failDamaged(const std::string& detail) {
  fail("it is damaged or not complete (" + detail + ")");
}

}  // namespace ppt
