// Characters of a database as values of the types that their columns have.

#include "ado/CellText.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <limits>
#include <optional>

#include "ado/Encoding.h"
#include "basic/Date.h"
#include "basic/Strings.h"

namespace ado {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

template <typename Number>
std::optional<Number> wholeNumber(std::string_view text) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// The digits in plain notation with one before the point ("-.5" is "-0.5");
/// nothing if it is no plain number.
std::optional<std::string> plainDecimal(std::string_view text) {
  std::string_view digits = text;
  const bool minus = basic::StartsWith(digits, "-");
  if (minus || basic::StartsWith(digits, "+")) digits.remove_prefix(1);
  std::size_t points = 0;
  std::size_t count = 0;
  for (const char c : digits) {
    if (c == '.') {
      ++points;
    } else if (isDigit(c)) {
      ++count;
    } else {
      return std::nullopt;
    }
  }
  if (count == 0 || points > 1) return std::nullopt;
  if (digits.back() == '.') digits.remove_suffix(1);
  return std::string(minus ? "-" : "") + (digits.front() == '.' ? "0" : "") + std::string(digits);
}

bool isClock(int hour, int minute, int second) {
  return hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
}

/// Takes two or more digits of exactly that count off the front.
bool takeNumber(std::string_view& text, std::size_t digits, int& number) {
  if (text.size() < digits) return false;
  const auto value = wholeNumber<int>(text.substr(0, digits));
  if (!value || !isDigit(text[0])) return false;
  number = *value;
  text.remove_prefix(digits);
  return true;
}

bool take(std::string_view& text, char c) {
  if (text.empty() || text.front() != c) return false;
  text.remove_prefix(1);
  return true;
}

bool takeDay(std::string_view& text, int& year, int& month, int& day) {
  return takeNumber(text, 4, year) && take(text, '-') && takeNumber(text, 2, month) && take(text, '-') &&
         takeNumber(text, 2, day);
}

bool takeTime(std::string_view& text, int& hour, int& minute, int& second) {
  if (!takeNumber(text, 2, hour) || !take(text, ':') || !takeNumber(text, 2, minute)) return false;
  if (take(text, ':') && !takeNumber(text, 2, second)) return false;
  if (take(text, '.')) {
    while (!text.empty() && isDigit(text.front())) text.remove_prefix(1);
  }
  return true;
}

bool addMomentText(ResultTableBuilder& row, std::string_view text) {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  if (text.size() > 2 && text[2] == ':') {
    if (!takeTime(text, hour, minute, second) || !text.empty() || !isClock(hour, minute, second))
      return false;
    addTime(row, hour, minute, second);
    return true;
  }
  if (!takeDay(text, year, month, day)) return false;
  if ((take(text, ' ') || take(text, 'T')) && !takeTime(text, hour, minute, second)) return false;
  if (!text.empty() || !basic::IsValidDay(year, month, day) || !isClock(hour, minute, second)) return false;
  row.addDate(basic::DateFrom(year, month, day, hour, minute, second));
  return true;
}

bool addBooleanText(ResultTableBuilder& row, std::string_view text) {
  for (const std::string_view yes : {"1", "true", "t"}) {
    if (!basic::EqualsIgnoreCase(text, yes)) continue;
    row.addBoolean(true);
    return true;
  }
  for (const std::string_view no : {"0", "false", "f"}) {
    if (!basic::EqualsIgnoreCase(text, no)) continue;
    row.addBoolean(false);
    return true;
  }
  return false;
}

bool addIntegerText(ResultTableBuilder& row, std::string_view text) {
  if (const auto number = wholeNumber<std::int64_t>(text)) {
    const bool isShort = *number >= std::numeric_limits<std::int32_t>::min() &&
                         *number <= std::numeric_limits<std::int32_t>::max();
    if (isShort) {
      row.addInt32(static_cast<std::int32_t>(*number));
    } else {
      row.addInt64(*number);
    }
    return true;
  }
  const auto digits = plainDecimal(text);
  if (digits) row.addDecimal(*digits);
  return digits.has_value();
}

bool addMeant(ResultTableBuilder& row, TextMeaning meaning, std::string_view text) {
  switch (meaning) {
    case TextMeaning::Text:
      return false;
    case TextMeaning::Integer:
      return addIntegerText(row, text);
    case TextMeaning::Real: {
      const auto number = wholeNumber<double>(text);
      if (number) row.addDouble(*number);
      return number.has_value();
    }
    case TextMeaning::Decimal: {
      const auto digits = plainDecimal(text);
      if (digits) row.addDecimal(*digits);
      return digits.has_value();
    }
    case TextMeaning::Boolean:
      return addBooleanText(row, text);
    case TextMeaning::Moment:
      return addMomentText(row, text);
  }
  return false;
}

}  // namespace

void addFromText(ResultTableBuilder& row, TextMeaning meaning, std::string_view text) {
  if (addMeant(row, meaning, text)) return;
  if (basic::IsValidUtf8(text)) {
    row.addText(text);
  } else {
    row.addText(utf8FromDriver(text));
  }
}

void addMoment(ResultTableBuilder& row, int year, int month, int day, int hour, int minute, int second) {
  if (basic::IsValidDay(year, month, day) && isClock(hour, minute, second)) {
    row.addDate(basic::DateFrom(year, month, day, hour, minute, second));
    return;
  }
  std::array<char, 96> text{};
  const bool midnight = hour == 0 && minute == 0 && second == 0;
  const int length = midnight ? std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", year, month, day)
                              : std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", year,
                                              month, day, hour, minute, second);
  row.addText({text.data(), static_cast<std::size_t>(length)});
}

void addTime(ResultTableBuilder& row, int hour, int minute, int second) {
  if (isClock(hour, minute, second)) {
    row.addDate(basic::DateFrom(1899, 12, 30, hour, minute, second));
    return;
  }
  std::array<char, 48> text{};
  const int length = std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", hour, minute, second);
  row.addText({text.data(), static_cast<std::size_t>(length)});
}

}  // namespace ado
