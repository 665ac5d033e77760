#pragma once

// Inside the conversions: numbers from and to text.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "basic/Locale.h"

namespace basic {

enum class Grouping { Allowed, Refused };

/// A number as the language reads it: blanks around it, a sign before or after
/// it or parentheses for a minus, thousands separators anywhere in the whole
/// part, an exponent with E or D, or &H and &O digits (unsigned, at most 64
/// bits). Nothing where the text is no number; one too large for a double
/// raises Overflow, one too small is 0.
std::optional<double> ParseNumber(std::string_view text, const Locale& locale, Grouping grouping);

/// The digits of "&H1F" or "&O17" as a number; nothing without such a prefix or
/// with other characters in it. More than 64 bits raise Overflow.
std::optional<std::uint64_t> ParsePrefixed(std::string_view text);

/// 15 significant digits; plain notation from 0.0001 up to below 1E+15.
std::string NumberText(double value, std::string_view decimalSeparator);

/// Without blanks, tabulators and line ends around it, as the conversions
/// ignore them (Trim takes blanks alone).
std::string_view WithoutWhite(std::string_view text);

constexpr bool IsWhite(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace basic
