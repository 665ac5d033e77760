#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "runtime/clsRTScrollInfo.h"

namespace LF2000 {

/// One state of a scrolling slide, for a copy in which nothing scrolls.
struct OfflinePage {
  /// By scroll entry, the steps taken.
  std::vector<std::int64_t> Steps;
  /// How long the entries leave it standing.
  double Milliseconds = 0;
};

/// No slide becomes more than this.
inline constexpr std::size_t MostOfflinePages = 1000;

/// The states that a slide goes through until every entry has shown all of its rows, at most
/// MostOfflinePages. `recordCounts` are those of the entries' data, 0 for what cannot be read. A slide that
/// stands still has one page, of no time.
[[nodiscard]] std::vector<OfflinePage> OfflinePagesOf(const std::vector<clsRTScrollInfo>& scrolls,
                                                      const std::vector<double>& recordCounts);

}  // namespace LF2000
