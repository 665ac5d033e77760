#pragma once

#include <stdexcept>
#include <string>

#include "basic/Error.h"

namespace app {

/// A command that cannot be carried out: what, on which file or object, why.
[[noreturn]] inline void fail(const std::string& text) {
  throw basic::Error(basic::AdapterError, "lumenfold", text);
}

/// A command line that makes no sense: exit code 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace app
