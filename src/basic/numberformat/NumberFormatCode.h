#pragma once

// Inside NumberFormat: a format code taken apart.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace basic {

struct NumberFormatToken {
  enum Kind : std::uint8_t {
    Literal,
    Text,
    General,
    // Numbers. Their texts are the placeholders 0 # ?.
    Whole,
    Point,
    Decimals,
    ExponentMark,
    Exponent,
    Numerator,
    Denominator,
    // Dates and times.
    DateSeparator,
    TimeSeparator,
    Year,
    BuddhistYear,
    Month,
    Day,
    Weekday,
    Hour,
    Minute,
    Second,
    SecondDecimals,
    HalfOfDay,
    ElapsedHours,
    ElapsedMinutes,
    ElapsedSeconds,
  };

  Kind kind = Literal;
  /// How often the letter stands there, of SecondDecimals the places.
  int count = 0;
  /// Of a Literal what it shows, of numbers' parts the placeholders, of an
  /// ExponentMark and of HalfOfDay the symbol as written.
  std::string text;
};

/// [>=100] and the like.
struct NumberFormatCondition {
  enum Relation : std::uint8_t { Less, LessOrEqual, Equal, NotEqual, GreaterOrEqual, Greater };

  Relation relation = Equal;
  double limit = 0.0;

  [[nodiscard]] bool accepts(double value) const;
};

struct NumberFormatSection {
  enum Kind : std::uint8_t { Literals, General, Number, Scientific, Fraction, DateTime, Text };

  Kind kind = Literals;
  int color = 0;
  std::optional<NumberFormatCondition> condition;
  std::vector<NumberFormatToken> tokens;
  /// Only negative numbers come here: their sign is not shown.
  bool dropsSign = false;

  // Numbers.
  int wholePlaces = 0;
  int decimalPlaces = 0;
  /// Power of ten that the number is multiplied with: percent and commas.
  int scale = 0;
  bool grouped = false;

  // Scientific: no # or ? before the point, so as many whole digits as places.
  bool fixedWholeDigits = false;

  // Fractions.
  bool mixed = false;
  /// 0 where the denominator is looked for.
  double denominator = 0.0;
  int numeratorPlaces = 0;
  /// At most this many digits are looked for.
  int denominatorPlaces = 0;

  // Dates and times.
  bool twelveHours = false;
  bool islamic = false;
  bool showsTime = false;
  /// Decimals of the second, the most that stand together.
  int secondDecimals = 0;
};

struct NumberFormatCode {
  /// For numbers, in the order in which they are tried.
  std::vector<NumberFormatSection> numbers;
  std::optional<NumberFormatSection> text;

  /// Where a number belongs; none if no condition accepts it.
  [[nodiscard]] const NumberFormatSection* sectionFor(double value) const;
};

NumberFormatCode ParseNumberFormat(std::string_view code);

}  // namespace basic
