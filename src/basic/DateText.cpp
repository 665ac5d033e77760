#include "basic/DateText.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "basic/DateTokens.h"

namespace basic {
namespace {

using Tokens = std::span<const DateToken>;

struct Day {
  int year = 1899;
  int month = 12;
  int day = 30;
};

struct Time {
  int hour = 0;
  int minute = 0;
  int second = 0;
};

enum class Order : std::uint8_t { MonthDayYear, DayMonthYear, YearMonthDay, YearDayMonth };

/// The order of the parts in a picture, by the place of their first letters.
Order orderOf(std::string_view picture) {
  const std::size_t day = picture.find_first_of("dD");
  const std::size_t month = picture.find_first_of("mM");
  const std::size_t year = picture.find_first_of("yY");
  if (year < day && year < month) return day < month ? Order::YearDayMonth : Order::YearMonthDay;
  return day < month ? Order::DayMonthYear : Order::MonthDayYear;
}

bool is(Tokens tokens, std::size_t at, DateToken::Kind kind) {
  return at < tokens.size() && tokens[at].kind == kind;
}

// --- Times -----------------------------------------------------------------

/// A number of a time: one or two digits, below the limit.
bool timePart(Tokens tokens, std::size_t at, int limit, int& part) {
  if (!is(tokens, at, DateToken::Number) || tokens[at].digits > 2 || tokens[at].value >= limit) return false;
  part = tokens[at].value;
  return true;
}

bool applyHalfOfDay(bool afternoon, int& hour) {
  if (hour > 12) return afternoon;
  hour = hour % 12 + (afternoon ? 12 : 0);
  return true;
}

bool isHalfOfDay(const DateToken& token) {
  return token.kind == DateToken::Am || token.kind == DateToken::Pm;
}

/// A time at the beginning of the tokens, which it is taken off: "h:nn",
/// "h:nn:ss", "h:nn:ss.fff" (the fraction is dropped), each with or without
/// AM/PM (after it, or before it as Eastern Asia writes), or an hour followed by
/// AM/PM. `separator` stands between its parts.
std::optional<Time> takeTime(Tokens& tokens, DateToken::Kind separator) {
  Time time;
  const DateToken* half = nullptr;
  if (!tokens.empty() && isHalfOfDay(tokens.front())) {
    half = &tokens.front();
    tokens = tokens.subspan(1);
  }
  std::size_t at = 1;
  if (!timePart(tokens, 0, 24, time.hour)) return std::nullopt;
  const bool minutes = is(tokens, at, separator);
  if (minutes) {
    if (!timePart(tokens, at + 1, 60, time.minute)) return std::nullopt;
    at += 2;
    if (is(tokens, at, separator)) {
      if (!timePart(tokens, at + 1, 60, time.second)) return std::nullopt;
      at += 2;
      const bool point = is(tokens, at, DateToken::Comma) ||
                         (is(tokens, at, DateToken::DateSeparator) && tokens[at].separator == '.');
      if (point && !tokens[at].spaceBefore && is(tokens, at + 1, DateToken::Number) &&
          !tokens[at + 1].spaceBefore) {
        at += 2;
      }
    }
  }
  const bool halfAfter = half == nullptr && at < tokens.size() && isHalfOfDay(tokens[at]);
  if (halfAfter) half = &tokens[at++];
  if (!minutes && !halfAfter) return std::nullopt;
  if (half != nullptr && !applyHalfOfDay(half->kind == DateToken::Pm, time.hour)) return std::nullopt;
  tokens = tokens.subspan(at);
  return time;
}

// --- Days ------------------------------------------------------------------

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

std::optional<Day> threeNumbers(const std::array<DateToken, 3>& n, Order preferred) {
  const auto tryOrder = [&n](Order order) {
    switch (order) {
      case Order::MonthDayYear:
        return ordered(n[2], n[0], n[1]);
      case Order::DayMonthYear:
        return ordered(n[2], n[1], n[0]);
      case Order::YearMonthDay:
        return ordered(n[0], n[1], n[2]);
      case Order::YearDayMonth:
        return ordered(n[0], n[2], n[1]);
    }
    return std::optional<Day>();
  };
  // A year written in full in front is ISO 8601, whatever the user's order.
  if (n[0].digits > 2) preferred = Order::YearMonthDay;
  for (const Order order :
       {preferred, Order::MonthDayYear, Order::DayMonthYear, Order::YearMonthDay, Order::YearDayMonth}) {
    if (const auto day = tryOrder(order)) return day;
  }
  return std::nullopt;
}

/// Month and day of this year in the user's order or the other one, or month and year.
std::optional<Day> twoNumbers(const DateToken& a, const DateToken& b, Order order, int thisYear) {
  if (a.digits > 2 && b.digits > 2) return std::nullopt;
  if (a.digits > 2) return validDay(yearFrom(a), b.value, 1);
  if (b.digits > 2) return validDay(yearFrom(b), a.value, 1);
  const bool dayFirst = order == Order::DayMonthYear || order == Order::YearDayMonth;
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

/// The parts of a date, at most one separator between two of them; a comma only
/// beside a month's name, and a point may end the whole ("5.1." and "5. 1. 2026.").
std::optional<Day> parseDay(Tokens tokens, Order order, int thisYear) {
  std::array<DateToken, 3> numbers;
  std::size_t count = 0;
  int month = 0;
  bool separated = true;
  bool hasComma = false;
  bool hasSeparator = false;
  for (const DateToken& token : tokens) {
    switch (token.kind) {
      case DateToken::Number:
        if (count == numbers.size()) return std::nullopt;
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

// --- Both ------------------------------------------------------------------

Date dateOf(const Day& day, const Time& time) {
  return DateFrom(day.year, day.month, day.day, time.hour, time.minute, time.second);
}

class Parser {
 public:
  Parser(Tokens tokens, const Locale& locale, int thisYear)
      : tokens_(tokens), order_(orderOf(locale.shortDate)), thisYear_(thisYear) {}

  std::optional<Date> parse() {
    const std::size_t time = timeBegin();
    if (time < tokens_.size()) return withTime(time, DateToken::Colon);
    if (const auto day = parseDay(tokens_, order_, thisYear_)) return dateOf(*day, Time());
    return std::nullopt;
  }

  /// Where times are written with the separator of dates: the time is the last
  /// run of characters.
  std::optional<Date> parseSharedSeparator() {
    std::size_t begin = tokens_.size() - 1;
    while (begin > 0 && !tokens_[begin].spaceBefore) --begin;
    return withTime(begin, DateToken::DateSeparator);
  }

 private:
  /// The hour before the first colon or AM/PM, or an AM/PM before the hour.
  [[nodiscard]] std::size_t timeBegin() const {
    const auto mark = std::find_if(tokens_.begin(), tokens_.end(), [](const DateToken& token) {
      return token.kind == DateToken::Colon || isHalfOfDay(token);
    });
    const auto at = static_cast<std::size_t>(mark - tokens_.begin());
    if (mark == tokens_.end() || at == 0) return at;
    return isHalfOfDay(*mark) && is(tokens_, at + 2, DateToken::Colon) ? at : at - 1;
  }

  std::optional<Date> withTime(std::size_t begin, DateToken::Kind separator) {
    Tokens after = tokens_.subspan(begin);
    const auto time = takeTime(after, separator);
    if (!time) return std::nullopt;
    Tokens before = tokens_.first(begin);
    if (before.empty() && after.empty()) return dateOf(Day(), *time);
    if (!before.empty() && !after.empty()) return std::nullopt;
    if (after.empty()) {
      if (before.back().kind == DateToken::T) {
        if (before.front().digits != 4) return std::nullopt;
        before = before.first(before.size() - 1);
      } else if (before.back().kind == DateToken::Comma) {
        before = before.first(before.size() - 1);
      }
    } else if (after.front().kind == DateToken::Comma) {
      after = after.subspan(1);
    }
    const auto day = parseDay(before.empty() ? after : before, order_, thisYear_);
    if (!day) return std::nullopt;
    return dateOf(*day, *time);
  }

  Tokens tokens_;
  Order order_;
  int thisYear_;
};

}  // namespace

std::optional<Date> ParseDate(std::string_view text, const Locale& locale, int thisYear) {
  DateTokens tokens;
  if (!tokens.read(text, locale)) return std::nullopt;
  Parser parser(tokens.all(), locale, thisYear);
  if (const auto date = parser.parse()) return date;
  if (locale.timeSeparator == ".") return parser.parseSharedSeparator();
  return std::nullopt;
}

}  // namespace basic
