#pragma once

// Inside CDate: dates and times as people write them.

#include <optional>
#include <string_view>

#include "basic/Date.h"
#include "basic/Locale.h"

namespace basic {

/// A date, a time, or both in either order; nothing where the text is none of
/// these. `thisYear` stands in for a year that is not named.
std::optional<Date> ParseDate(std::string_view text, const Locale& locale, int thisYear);

}  // namespace basic
