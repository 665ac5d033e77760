#pragma once

#include <string_view>

namespace LF2000::modClockFormat {

/// Whether the format picture tells anything of a date or a time; a clock without would stand.
[[nodiscard]] bool ShowsTime(std::string_view format);

}  // namespace LF2000::modClockFormat
