#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "render/chart/ChartModel.h"

namespace render {

/// The points of a trend line through (x, y), in order of x; nothing when the data
/// do not allow one (a logarithm of what is not positive, too few points).
std::vector<std::pair<double, double>> trendPoints(const ChartTrend& trend, const std::vector<double>& x,
                                                   const std::vector<double>& y);

}  // namespace render
