#pragma once

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

}  // namespace support
