#pragma once

#include <cstdint>
#include <map>

namespace LF2000 {

/// One scroll entry of a slide as the runtime uses it.
struct clsRTScrollInfo {
  /// Rows.
  std::int32_t Step = 0;
  /// Milliseconds.
  std::int32_t Time = 0;
};

/// What the runtime knows of one slide.
struct clsRTSlideInfo {
  bool HideWhenNoData = false;
  bool RefreshLinkedObjects = false;
  /// The enabled scroll entries by their numbers.
  std::map<std::int32_t, clsRTScrollInfo> ScrollEntries;
  /// Whether the last refresh found no value for any data shape of the slide.
  bool NoData = false;
};

}  // namespace LF2000
