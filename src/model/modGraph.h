#pragma once

#include <functional>

#include "connections/clsConnection.h"
#include "host/powerpoint.h"

namespace LF2000::modGraph {

/// Whether the shape is a chart with a datasheet. Raises why when it is a chart
/// that cannot be refilled.
[[nodiscard]] bool IsGraph(PowerPoint::Shape& shape);

/// Reads all rows of the connection for the chart, which may then be filled with them. Without a row
/// the chart stays as it is. Raises what keeps the chart from taking them.
[[nodiscard]] std::function<void()> PrepareGraph(PowerPoint::Shape& shape, clsConnection& connection);

/// Refills the chart's datasheet with all rows of the connection; without a row
/// the chart stays as it is. Raises what keeps the chart from taking them.
void FillGraph(PowerPoint::Shape& shape, clsConnection& connection);

/// Puts the author's own data back into the chart. A chart that cannot be
/// refilled holds them still.
void RestoreGraph(PowerPoint::Shape& shape);

}  // namespace LF2000::modGraph
