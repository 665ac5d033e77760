// The day of a date, from its numbers in whatever order the locale and their sizes allow.

#include "basic/DayText.h"

#include <array>

#include "basic/Date.h"

namespace basic {
namespace {

/// One or two digits are a year of this or the last century.
int yearFrom(const DateToken& number) { return number.digits <= 2 ? FullYear(number.value) : number.value; }

std::optional<Day> validDay(int year, int month, int day) {
  if (!IsValidDay(year, month, day)) return std::nullopt;
  return Day{year, month, day};
}

/// A number that can only be a year: more than two digits, or above any day.
bool mustBeYear(const DateToken& number) { return number.digits > 2 || number.value > 31; }

std::optional<Day> ordered(const DateToken& year, const DateToken& month, const DateToken& day) {
  if (month.digits > 2 || day.digits > 2) return std::nullopt;
  return validDay(yearFrom(year), month.value, day.value);
}

std::optional<Day> threeNumbers(const std::array<DateToken, 3>& n, DayOrder preferred) {
  const auto tryOrder = [&n](DayOrder order) {
    switch (order) {
      case DayOrder::MonthDayYear:
        return ordered(n[2], n[0], n[1]);
      case DayOrder::DayMonthYear:
        return ordered(n[2], n[1], n[0]);
      case DayOrder::YearMonthDay:
        return ordered(n[0], n[1], n[2]);
      case DayOrder::YearDayMonth:
        return ordered(n[0], n[2], n[1]);
    }
    return std::optional<Day>();
  };
  // A year written in full in front is ISO 8601, whatever the user's order.
  if (n[0].digits > 2) preferred = DayOrder::YearMonthDay;
  for (const DayOrder order : {preferred, DayOrder::MonthDayYear, DayOrder::DayMonthYear,
                               DayOrder::YearMonthDay, DayOrder::YearDayMonth}) {
    if (const auto day = tryOrder(order)) return day;
  }
  return std::nullopt;
}

/// Month and day of this year in the user's order or the other one, or month and year.
std::optional<Day> twoNumbers(const DateToken& a, const DateToken& b, DayOrder order, int thisYear) {
  if (a.digits > 2 && b.digits > 2) return std::nullopt;
  if (a.digits > 2) return validDay(yearFrom(a), b.value, 1);
  if (b.digits > 2) return validDay(yearFrom(b), a.value, 1);
  const bool dayFirst = order == DayOrder::DayMonthYear || order == DayOrder::YearDayMonth;
  const auto& day = dayFirst ? a : b;
  const auto& month = dayFirst ? b : a;
  if (const auto found = validDay(thisYear, month.value, day.value)) return found;
  if (const auto found = validDay(thisYear, day.value, month.value)) return found;
  if (const auto found = validDay(yearFrom(b), a.value, 1)) return found;
  return validDay(yearFrom(a), b.value, 1);
}

std::optional<Day> withMonthName(int month, std::span<const DateToken> n, int thisYear) {
  if (n.size() == 1) {
    if (mustBeYear(n[0])) return validDay(yearFrom(n[0]), month, 1);
    if (const auto found = validDay(thisYear, month, n[0].value)) return found;
    return validDay(yearFrom(n[0]), month, 1);
  }
  if (!mustBeYear(n[0])) {
    if (const auto found = validDay(yearFrom(n[1]), month, n[0].value)) return found;
  }
  if (mustBeYear(n[1])) return std::nullopt;
  return validDay(yearFrom(n[0]), month, n[1].value);
}

}  // namespace

DayOrder OrderOf(std::string_view picture) {
  const std::size_t day = picture.find_first_of("dD");
  const std::size_t month = picture.find_first_of("mM");
  const std::size_t year = picture.find_first_of("yY");
  if (year < day && year < month) return day < month ? DayOrder::YearDayMonth : DayOrder::YearMonthDay;
  return day < month ? DayOrder::DayMonthYear : DayOrder::MonthDayYear;
}

std::optional<Day> ParseDay(Tokens tokens, DayOrder order, int thisYear) {
  constexpr int MostDigits = 4;
  std::array<DateToken, 3> numbers;
  std::size_t count = 0;
  int month = 0;
  bool separated = true;
  bool hasComma = false;
  bool hasSeparator = false;
  for (const DateToken& token : tokens) {
    switch (token.kind) {
      case DateToken::Number:
        if (count == numbers.size() || token.digits > MostDigits) return std::nullopt;
        numbers[count++] = token;
        separated = false;
        break;
      case DateToken::Month:
        if (month != 0) return std::nullopt;
        month = token.value;
        separated = false;
        break;
      case DateToken::Comma:
      case DateToken::DateSeparator:
        if (separated) return std::nullopt;
        separated = true;
        (token.kind == DateToken::Comma ? hasComma : hasSeparator) = true;
        break;
      default:
        return std::nullopt;
    }
  }
  if (separated && (tokens.empty() || tokens.back().separator != '.')) return std::nullopt;
  if (month != 0) {
    if (count == 0 || count > 2) return std::nullopt;
    return withMonthName(month, {numbers.data(), count}, thisYear);
  }
  if (hasComma) return std::nullopt;
  if (count == 3) return threeNumbers(numbers, order);
  if (count == 2 && hasSeparator) return twoNumbers(numbers[0], numbers[1], order, thisYear);
  return std::nullopt;
}

}  // namespace basic
