#pragma once

#include <nlohmann/json.hpp>

#include "render/chart/ChartModel.h"

// Looks as the chart script takes them: see src/web/charts/paint.js.

namespace render {

using ChartJson = nlohmann::ordered_json;

/// "#rrggbb", a gradient, a pattern or a picture; null for nothing.
ChartJson paintJson(const Fill& fill, std::string_view assetPrefix);
/// {color, width, dashes}; null for nothing.
ChartJson lineJson(const std::optional<Line>& line);
/// {family, size, bold, italic, color}
ChartJson fontJson(const RunStyle& style);
/// Shares x, y, w, h as stated; null when none is.
ChartJson placeJson(const ChartPlace& place);
/// At most two decimals.
double pixels(double value);

}  // namespace render
