#pragma once

#include <string_view>

#include "render/chart/ChartPlot.h"
#include "render/html/ChartJson.h"

namespace render {

/// The list of what is drawn in a chart's plot, in drawing order: series, and behind each what goes with it.
/// src/web/charts/ documents the members.
json::Json seriesJson(ChartPlot& plot, std::string_view assetPrefix);

}  // namespace render
