#pragma once

#include "json/Json.h"
#include "render/chart/ChartModel.h"

// Looks as the chart script takes them: see src/web/charts/paint.js.

namespace render {

/// Slices of a pie, and their entries in the legend; more cannot be told apart.
inline constexpr std::size_t MostSlices = 1000;

/// "#rrggbb", a gradient, a pattern or a picture; null for nothing.
json::Json paintJson(const Fill& fill, std::string_view assetPrefix);
/// {fill, line} without what is nothing.
json::Json lookJson(const ChartLook& look, std::string_view assetPrefix);
/// A look with a symbol and its size; null for no marker.
json::Json markerJson(const ChartMarker& marker, std::string_view assetPrefix);
/// {color, width, dashes}; null for nothing.
json::Json lineJson(const std::optional<Line>& line);
/// {family, size, bold, italic, color}
json::Json fontJson(const RunStyle& style);
/// Shares x, y, w, h as stated; null when none is.
json::Json placeJson(const ChartPlace& place);
/// A length, share or angle with at most two decimals.
double pixels(double value);

}  // namespace render
