#include "runtime/OfflinePages.h"

#include <algorithm>
#include <limits>

#include "runtime/ScrollIndexes.h"

namespace LF2000 {

std::vector<OfflinePage> OfflinePagesOf(const std::vector<clsRTScrollInfo>& scrolls,
                                        const std::vector<double>& recordCounts) {
  struct Course {
    std::int64_t Cycle;
    double Time;
  };
  std::vector<Course> courses;
  double end = 0;
  for (std::size_t i = 0; i < scrolls.size(); ++i) {
    const std::int64_t cycle = StepsInData(scrolls[i], recordCounts[i]);
    courses.push_back({cycle, static_cast<double>(scrolls[i].Time)});
    if (cycle > 1) end = std::max(end, static_cast<double>(cycle) * courses.back().Time);
  }
  std::vector<OfflinePage> pages;
  double now = 0;
  do {
    OfflinePage& page = pages.emplace_back();
    double next = end;
    for (const Course& course : courses) {
      // Whole times divide without a rest.
      const auto steps = static_cast<std::int64_t>(now / course.Time);
      page.Steps.push_back(steps % course.Cycle);
      if (course.Cycle > 1) next = std::min(next, static_cast<double>(steps + 1) * course.Time);
    }
    page.Milliseconds = next - now;
    now = next;
  } while (now < end && pages.size() < MostOfflinePages);
  return pages;
}

}  // namespace LF2000
