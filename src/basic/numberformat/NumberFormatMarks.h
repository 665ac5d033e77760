#pragma once

// Inside NumberFormat: the symbols of a format code, before it is known what
// their section shows.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "basic/numberformat/NumberFormatCode.h"

namespace basic {

struct NumberFormatMark {
  enum Kind : std::uint8_t {
    Literal,
    Blank,         ///< a literal that is nothing but blanks
    Digit,         ///< 1 to 9
    Placeholders,  ///< 0 # ? standing together
    Point,
    Comma,
    Percent,
    Slash,
    Colon,
    Exponent,  ///< E+ or E-, between placeholders
    General,
    Text,
    Year,
    BuddhistYear,
    Era,
    Month,  ///< or minute
    Day,
    Weekday,
    Hour,
    Second,
    HalfOfDay,
    ElapsedHours,
    ElapsedMinutes,
    ElapsedSeconds,
    Calendar,  ///< B1 or B2
  };

  Kind kind = Literal;
  /// As written; of a Literal what it shows.
  std::string text;
};

struct NumberFormatMarks {
  std::vector<NumberFormatMark> marks;
  int color = 0;
  std::optional<NumberFormatCondition> condition;

  [[nodiscard]] bool has(NumberFormatMark::Kind kind) const;
  /// Letters of dates beside digits are but letters ("0 items").
  [[nodiscard]] bool isDateTime() const;
  /// ".000", which in a date are decimals of the second: the mark behind the point.
  [[nodiscard]] bool isSecondDecimals(std::size_t index) const;
};

/// The sections of a code, at least one and at most four.
std::vector<NumberFormatMarks> ScanNumberFormat(std::string_view code);

}  // namespace basic
