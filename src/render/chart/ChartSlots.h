#pragma once

#include <string>
#include <vector>

#include "render/chart/ChartModel.h"

// Where the points of series stand along an axis of categories, and which of very
// many are kept.

namespace render {

/// A page gets no more points of a series than this, and of a chart about ten times
/// as many. Of more, runs of equal length keep their lowest and their highest.
inline constexpr std::size_t MostPointsOfSeries = 2000;
inline constexpr std::size_t MostPointsOfChart = 20000;

/// How many points of each of `seriesCount` series are kept.
std::size_t pointsKept(std::size_t seriesCount);

/// The places of those that stay, ascending; all when there are no more than `most`.
/// `columns` are compared with each other: a run keeps where any is lowest and highest.
std::vector<std::size_t> thinned(const std::vector<const std::vector<double>*>& columns, std::size_t most);

/// The slots of an axis: one per category or, on an axis of dates, per day, month or year.
struct ChartSlots {
  /// Which category stands in each slot; NoCategory where no date is.
  static constexpr std::size_t NoCategory = static_cast<std::size_t>(-1);
  std::vector<std::size_t> categoryOf;
  /// The serials of the slots of a date axis, for their labels.
  std::vector<double> dates;
  /// Every how many slots a stated major unit puts a label; 0 is automatic.
  int step = 0;
};

/// `count` is how many points the longest series has.
ChartSlots slotsOf(const ChartAxis& axis, const ChartCategories& categories, std::size_t count,
                   bool from1904);

}  // namespace render
