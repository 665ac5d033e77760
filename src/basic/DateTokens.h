#pragma once

// Inside CDate: a text taken apart into numbers, names and separators.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "basic/Locale.h"

namespace basic {

struct DateToken {
  enum Kind : std::uint8_t {
    Number,
    Month,  // value 1 to 12
    Am,
    Pm,
    Colon,          // between the parts of a time
    DateSeparator,  // / - . or the locale's
    Comma,
    T,  // between date and time of ISO 8601
  };

  Kind kind = Number;
  /// Blanks, or the beginning of the text, stand before it.
  bool spaceBefore = true;
  /// The character of a DateSeparator.
  char separator = 0;
  int value = 0;
  /// How many digits a number is written with.
  int digits = 0;
};

using Tokens = std::span<const DateToken>;

/// No date needs more: "2026-01-05T10:20:30.5 PM" has 14.
class DateTokens {
 public:
  /// Takes a text apart; false where something in it belongs to no date.
  bool read(std::string_view text, const Locale& locale);

  [[nodiscard]] Tokens all() const { return {tokens_.data(), count_}; }

 private:
  bool add(DateToken token);

  static constexpr std::size_t Most = 24;
  std::array<DateToken, Most> tokens_;
  std::size_t count_ = 0;
};

/// Whether text begins with the word, letters of either case being equal in the
/// Latin, Greek and Cyrillic alphabets.
bool BeginsWithWord(std::string_view text, std::string_view word);

}  // namespace basic
