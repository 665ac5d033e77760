#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "basic/Error.h"

namespace support {

/// The description of the error that an action throws.
inline std::string errorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const basic::Error& error) {
    return error.description;
  }
  return "no error";
}

/// The number of that error, 0 if there is none.
inline std::int32_t errorNumber(const std::function<void()>& action) {
  try {
    action();
  } catch (const basic::Error& error) {
    return error.number;
  }
  return 0;
}

/// "4 Error while opening …": the number of that error among those of the system, and its description.
inline std::string failureOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const basic::Error& error) {
    return std::to_string(error.number + 2147221504) + " " + error.description;
  }
  return "none";
}

}  // namespace support
