#include "runtime/ScrollIndexes.h"

#include <algorithm>
#include <cmath>

namespace LF2000 {

std::int64_t StepsInData(const clsRTScrollInfo& scroll, double recordCount) {
  const double room = scroll.Step > 0 ? recordCount - scroll.FirstRow : scroll.LastRow - 1;
  if (scroll.Step == 0 || !(room > 0)) return 1;
  constexpr double Largest = 1E15;
  return static_cast<std::int64_t>(std::min(std::floor(room / std::abs(1.0 * scroll.Step)), Largest)) + 1;
}

void PassTime(clsRTScrollInfo& scroll, double milliseconds, double tolerance, double recordCount) {
  const std::int64_t cycle = StepsInData(scroll, recordCount);
  if (scroll.Steps >= cycle) scroll.Steps = 0;  // the data have become fewer
  scroll.Elapsed += milliseconds;
  double due = std::floor((scroll.Elapsed + std::min(tolerance, scroll.Time / 2.0)) / scroll.Time);
  if (due < 1) return;
  scroll.Elapsed -= due * scroll.Time;
  // Timers are late by a little every time. Were it added up, one tick in many would pass over rows.
  const double atOnce = std::max(std::floor(milliseconds / scroll.Time), 1.0);
  if (due > atOnce && scroll.Time >= 2 * tolerance) {
    due = atOnce;
    scroll.Elapsed = 0;
  }
  scroll.Steps = (scroll.Steps + static_cast<std::int64_t>(due)) % cycle;
}

}  // namespace LF2000
