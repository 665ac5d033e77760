#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "basic/Date.h"
#include "basic/Locale.h"

namespace render {

/// How much of the present moment something shows.
enum class TimeShown : std::uint8_t { None, Date, Time };

struct DateField {
  std::string text;
  /// A date alone, or also or only a time.
  TimeShown shown = TimeShown::Date;
};

/// What a field of a type of ECMA-376 part 1, 21.1.2.2.4 ("datetime4") shows at a moment; nothing for
/// types that are neither dates nor times. The order of what a format puts together is PowerPoint's,
/// names, separators and the short, long and time forms are the locale's.
std::optional<DateField> dateField(std::string_view type, basic::Date now, const basic::Locale& locale);

}  // namespace render
