// A picture is taken apart into its symbols.

#include "basic/FormatSymbols.h"

#include <algorithm>
#include <array>

#include "basic/Strings.h"

namespace basic {
namespace {

constexpr char lowerOf(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Whether a character means something in a picture (c is of lower case).
constexpr bool isSpecial(char c) {
  return std::string_view("\"\\/:acdhmnqstwy").find(c) != std::string_view::npos;
}

/// How often the first letter stands at the beginning, in either case.
std::size_t runLength(std::string_view text) {
  const char first = lowerOf(text.front());
  const auto end = std::find_if(text.begin(), text.end(), [first](char c) { return lowerOf(c) != first; });
  return static_cast<std::size_t>(end - text.begin());
}

/// Length of the AM/PM symbol at the beginning of the text, 0 without one.
std::size_t amPmLength(std::string_view text) {
  constexpr std::array<std::string_view, 3> Symbols = {"AM/PM", "AMPM", "A/P"};
  for (const std::string_view symbol : Symbols) {
    if (EqualsIgnoreCase(text.substr(0, symbol.size()), symbol)) return symbol.size();
  }
  return 0;
}

}  // namespace

std::optional<FormatSymbol> FormatSymbols::next() {
  if (rest_.empty()) return std::nullopt;
  const char first = lowerOf(rest_.front());
  switch (first) {
    case '"':
      return quoted();
    case '\\':
      return rest_.size() == 1 ? literal(0, 1, 1) : literal(1, 1, 2);
    case '/':
      return take(FormatSymbol::DateSeparator, 1);
    case ':':
      return take(FormatSymbol::TimeSeparator, 1);
    default:
      return isSpecial(first) ? letter(first) : otherText();
  }
}

FormatSymbol FormatSymbols::take(FormatSymbol::Kind kind, std::size_t length) {
  const FormatSymbol symbol{kind, static_cast<int>(length), rest_.substr(0, length)};
  rest_.remove_prefix(length);
  const bool keepsHour = kind == FormatSymbol::DateSeparator || kind == FormatSymbol::TimeSeparator;
  afterHour_ = kind == FormatSymbol::Hour || (afterHour_ && keepsHour);
  return symbol;
}

FormatSymbol FormatSymbols::literal(std::size_t begin, std::size_t length, std::size_t taken) {
  const FormatSymbol symbol{FormatSymbol::Literal, static_cast<int>(length), rest_.substr(begin, length)};
  rest_.remove_prefix(taken);
  return symbol;
}

/// Without its closing mark, a quoted text goes on to the end.
FormatSymbol FormatSymbols::quoted() {
  const std::size_t close = rest_.find('"', 1);
  if (close == std::string_view::npos) return literal(1, rest_.size() - 1, rest_.size());
  return literal(1, close - 1, close + 1);
}

FormatSymbol FormatSymbols::otherText() {
  const auto end = std::find_if(rest_.begin(), rest_.end(), [](char c) { return isSpecial(lowerOf(c)); });
  const auto length = static_cast<std::size_t>(end - rest_.begin());
  return literal(0, length, length);
}

FormatSymbol FormatSymbols::letter(char lower) {
  const std::size_t run = runLength(rest_);
  const std::size_t upToTwo = std::min<std::size_t>(run, 2);
  switch (lower) {
    case 'd':
      if (run >= 6) return take(FormatSymbol::LongDate, 6);
      return take(run == 5 ? FormatSymbol::ShortDate : FormatSymbol::Day, run);
    case 'm':
      if (afterHour_ && run <= 2) return take(FormatSymbol::Minute, run);
      return take(FormatSymbol::Month, std::min<std::size_t>(run, 4));
    case 'y':
      if (run >= 4) return take(FormatSymbol::Year, 4);
      return take(run == 1 ? FormatSymbol::DayOfYear : FormatSymbol::Year, upToTwo);
    case 'h':
      return take(FormatSymbol::Hour, upToTwo);
    case 'n':
      return take(FormatSymbol::Minute, upToTwo);
    case 's':
      return take(FormatSymbol::Second, upToTwo);
    case 'w':
      return take(run == 1 ? FormatSymbol::Weekday : FormatSymbol::Week, upToTwo);
    case 'q':
      return take(FormatSymbol::Quarter, 1);
    case 'c':
      return take(FormatSymbol::General, 1);
    case 't':
      if (run >= 5) return take(FormatSymbol::LongTime, 5);
      break;
    case 'a':
      if (const std::size_t length = amPmLength(rest_)) return take(FormatSymbol::AmPm, length);
      return literal(0, 1, 1);
    default:
      break;
  }
  return literal(0, run, run);
}

bool HasAmPm(std::string_view picture) {
  FormatSymbols symbols(picture);
  while (const auto symbol = symbols.next()) {
    if (symbol->kind == FormatSymbol::AmPm) return true;
  }
  return false;
}

}  // namespace basic
