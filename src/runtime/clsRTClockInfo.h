#pragma once

#include <string>

namespace LF2000 {

/// What the runtime knows of one clock shape.
struct clsRTClockInfo {
  std::string Name;
  /// A date and time format picture.
  std::string Format;
};

}  // namespace LF2000
