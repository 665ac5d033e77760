#pragma once

#include <cstdint>

#include "runtime/clsRTScrollInfo.h"

namespace LF2000 {

/// How many steps, counting none as the first, leave a shape within data of so many rows. Down the data the
/// shape of the smallest row leaves last, up the one of the largest.
[[nodiscard]] std::int64_t StepsInData(const clsRTScrollInfo& scroll, double recordCount);

/// Lets time pass for a scroll entry over data of so many rows: takes the steps
/// that have fallen due, all of them after a pause. Once no shape of the entry
/// would show a row of the data, it starts again with no step taken. A step
/// counts as due from `tolerance` milliseconds before its time, half a tick, so that
/// steps fall on the ticks nearest to them; the error is not carried on. An entry that is
/// no faster than the ticks takes one step at a tick, unless the tick was late by whole steps.
void PassTime(clsRTScrollInfo& scroll, double milliseconds, double tolerance, double recordCount);

}  // namespace LF2000
