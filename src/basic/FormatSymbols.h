#pragma once

// Inside Format: a picture taken apart.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace basic {

struct FormatSymbol {
  enum Kind : std::uint8_t {
    Literal,
    DateSeparator,
    TimeSeparator,
    Day,
    Month,
    Year,
    DayOfYear,
    Quarter,
    Weekday,
    Week,
    Hour,
    Minute,
    Second,
    AmPm,
    ShortDate,
    LongDate,
    LongTime,
    General,
  };

  Kind kind = Literal;
  /// How often the letter stands there, as far as it belongs to this symbol.
  int count = 0;
  /// Of a Literal its text, of AmPm the symbol as written.
  std::string_view literal;
};

/// Walks through a picture from symbol to symbol.
class FormatSymbols {
 public:
  explicit FormatSymbols(std::string_view picture) : rest_(picture) {}

  std::optional<FormatSymbol> next();

 private:
  FormatSymbol take(FormatSymbol::Kind kind, std::size_t length);
  FormatSymbol literal(std::size_t begin, std::size_t length, std::size_t taken);
  FormatSymbol quoted();
  FormatSymbol letter(char lower);
  FormatSymbol otherText();

  std::string_view rest_;
  /// An hour stood there, and since then only separators and literals: m is the minute.
  bool afterHour_ = false;
};

/// Whether a symbol for the half of the day stands in the picture, so that its
/// hours run from 1 to 12.
bool HasAmPm(std::string_view picture);

}  // namespace basic
