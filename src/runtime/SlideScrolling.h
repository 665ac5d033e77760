#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/clsShape.h"
#include "model/clsSlide.h"
#include "runtime/clsRTScrollInfo.h"
#include "runtime/clsRTShapeInfo.h"

namespace LF2000 {

/// What a show knows of a shape that shows data; nothing of one whose connection has no number from 1 to 999.
[[nodiscard]] std::optional<clsRTShapeInfo> DataShapeOf(const clsShape& link);

/// The numbers of the entries by which something could scroll: those that are on and take steps.
[[nodiscard]] std::vector<std::int32_t> ScrollingEntries(const clsSlide& properties);

/// The entries at work on a slide with these shapes, each of which is told which one moves it
/// (clsRTShapeInfo::Scroll). An entry moves the shapes that have its number for a name, or without any those
/// of the connection of that number.
[[nodiscard]] std::vector<clsRTScrollInfo> JoinScrolling(const clsSlide& properties,
                                                         std::vector<clsRTShapeInfo>& shapes);

}  // namespace LF2000
