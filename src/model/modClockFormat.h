#pragma once

#include <optional>
#include <string_view>

#include "host/date_time_format.h"

namespace LF2000::modClockFormat {

/// Whether the format picture tells anything of a date or a time; a clock without would stand.
[[nodiscard]] bool ShowsTime(std::string_view format);

/// The field of the host that shows what the format picture does, or comes nearest to it; nothing for one
/// that shows no time.
[[nodiscard]] std::optional<PowerPoint::DateTimeFormat> FieldFor(std::string_view format);

}  // namespace LF2000::modClockFormat
