#pragma once

#include <cstdint>
#include <utility>

#include "basic/Error.h"

namespace basic::test {

/// The number of the error that an action raises, 0 if none.
template <typename Action>
std::int32_t errorNumber(Action&& action) {
  try {
    std::forward<Action>(action)();
  } catch (const Error& error) {
    return error.number;
  }
  return 0;
}

}  // namespace basic::test
