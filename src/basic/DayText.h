#pragma once

// Inside CDate: the day, without a time.

#include <cstdint>
#include <optional>
#include <string_view>

#include "basic/DateTokens.h"

namespace basic {

/// The zero date unless said otherwise.
struct Day {
  int year = 1899;
  int month = 12;
  int day = 30;
};

enum class DayOrder : std::uint8_t { MonthDayYear, DayMonthYear, YearMonthDay, YearDayMonth };

/// The order of the parts in a picture, by the place of their first letters.
DayOrder OrderOf(std::string_view picture);

/// A day from its numbers and the name of its month, with at most one separator
/// between two of them; a comma only beside a month's name. A point may end the
/// whole ("5.1." and "2026. 1. 5."). `thisYear` stands in for a year that is not named.
std::optional<Day> ParseDay(Tokens tokens, DayOrder order, int thisYear);

}  // namespace basic
