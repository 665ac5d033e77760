#pragma once

#include <cstdint>
#include <vector>

#include "runtime/clsRTScrollInfo.h"

namespace LF2000 {

/// What the runtime knows of one slide.
struct clsRTSlideInfo {
  bool HideWhenNoData = false;
  bool RefreshLinkedObjects = false;
  /// The scroll entries that shapes of the slide use.
  std::vector<clsRTScrollInfo> Scrolls;
  /// When time was last passed on to them, by the clock's TickCount.
  std::int64_t ScrollClock = 0;
  /// Whether the last refresh found no value for any data shape of the slide.
  bool NoData = false;
};

}  // namespace LF2000
