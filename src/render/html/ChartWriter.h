#pragma once

#include <string>
#include <string_view>

#include "render/chart/ChartModel.h"

namespace render {

/// A chart as JSON for the script that draws it (src/web/charts/, which documents the
/// members): every number formatted, every axis scaled, every look resolved. Sizes
/// are px; the script measures texts and lays out. Never more than a few megabytes: very many points are
/// thinned.
std::string chartDescription(const ChartModel& model, double width, double height,
                             std::string_view assetPrefix);

}  // namespace render
