#pragma once

#include <optional>
#include <string_view>

#include "basic/numberformat/NumberFormat.h"

namespace workbook {

/// The serial, in a date system, of a date or time as cells of the type "d" hold
/// it: "2026-02-03", "2026-02-03T20:30:45.5Z", "20:30:45". Nothing for other text.
std::optional<double> parseIsoDate(std::string_view text, basic::DateSystem system);

}  // namespace workbook
