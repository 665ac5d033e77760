// Dates, times and elapsed times are written by their marks.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "basic/Strings.h"
#include "basic/numberformat/NumberFormatWriter.h"

namespace basic {
namespace {

using Token = NumberFormatToken;

constexpr std::int64_t SecondsOfDay = 86400;
/// Day 0 of the 1904 system as the 1900 system counts it.
constexpr double FirstDayOf1904 = 1462.0;
/// 1 January 10000.
constexpr double EndOfDays = 2958466.0;
constexpr const char* NoDate = "#####";

struct Parts {
  std::int64_t days = 0;
  int year = 0;
  int month = 0;
  int day = 0;
  /// 0 is Sunday.
  int weekday = 0;
  int second = 0;
  /// What is left of the second, in units of the decimals asked for.
  std::int64_t rest = 0;
};

std::int64_t powerOfTen(int exponent) {
  std::int64_t power = 1;
  while (exponent-- > 0) power *= 10;
  return power;
}

/// Days and seconds of a serial, rounded to the decimals of a second.
void splitTime(double serial, int decimals, Parts& parts) {
  const double day = std::floor(serial);
  const std::int64_t unitsOfSecond = powerOfTen(decimals);
  const std::int64_t unitsOfDay = SecondsOfDay * unitsOfSecond;
  // A serial keeps a time to some microseconds: a half that it missed by less is one.
  constexpr double Epsilon = 2.3e-16;
  const double noise = 2.0 * Epsilon * serial;
  auto units =
      static_cast<std::int64_t>(std::floor((serial - day + noise) * static_cast<double>(unitsOfDay) + 0.5));
  parts.days = static_cast<std::int64_t>(day);
  if (units >= unitsOfDay) {
    units -= unitsOfDay;
    ++parts.days;
  }
  parts.second = static_cast<int>(units / unitsOfSecond);
  parts.rest = units % unitsOfSecond;
}

/// By days since 1 January 1900 as the 1900 system counts them: day 0 and
/// 29 February 1900 are its own.
void splitGregorian(std::int64_t days, Parts& parts) {
  constexpr std::int64_t PhantomDay = 60;
  if (days == 0 || days == PhantomDay) {
    parts.year = 1900;
    parts.month = days == 0 ? 1 : 2;
    parts.day = days == 0 ? 0 : 29;
    return;
  }
  using namespace std::chrono;
  constexpr sys_days BeforeFirst = year(1899) / December / 31;
  const std::int64_t real = days > PhantomDay ? days - 1 : days;
  const year_month_day date(BeforeFirst + std::chrono::days(real));
  parts.year = static_cast<int>(date.year());
  parts.month = static_cast<int>(static_cast<unsigned>(date.month()));
  parts.day = static_cast<int>(static_cast<unsigned>(date.day()));
}

/// The tabular Islamic calendar: years of 354 days, in 30 years 11 times 355.
void splitIslamic(std::int64_t days, Parts& parts) {
  constexpr std::int64_t DaysOf30Years = 10631;
  /// From 1 Muharram 1 to 31 December 1899.
  constexpr std::int64_t Offset = 466580;
  std::int64_t rest = days + Offset - (days > 60 ? 1 : 0);
  const std::int64_t cycles = rest / DaysOf30Years;
  rest %= DaysOf30Years;
  const std::int64_t yearOfCycle = std::min<std::int64_t>((30 * rest + 15) / DaysOf30Years, 29);
  rest -= 354 * yearOfCycle + (11 * yearOfCycle + 14) / 30;
  const std::int64_t month = std::min<std::int64_t>(2 * rest / 59, 11);
  parts.year = static_cast<int>(30 * cycles + yearOfCycle + 1);
  parts.month = static_cast<int>(month + 1);
  parts.day = static_cast<int>(rest - (59 * month + 1) / 2 + 1);
}

class DateWriter {
 public:
  DateWriter(std::string& to, const NumberFormatSection& section, const Parts& parts, const Locale& locale)
      : to_(to), section_(section), parts_(parts), locale_(locale) {}

  void write() {
    for (const Token& token : section_.tokens) write(token);
  }

 private:
  void write(const Token& token) {
    const int pair = std::min(token.count, 2);
    const int hour = parts_.second / 3600;
    const std::int64_t seconds = parts_.days * SecondsOfDay + parts_.second;
    switch (token.kind) {
      case Token::DateSeparator:
        to_ += locale_.dateSeparator;
        return;
      case Token::TimeSeparator:
        to_ += locale_.timeSeparator;
        return;
      case Token::Year:
        return year(parts_.year, token.count);
      case Token::BuddhistYear:
        return year(parts_.year + 543, token.count);
      case Token::Month:
        return month(token.count);
      case Token::Day:
        if (token.count > 2) return weekday(token.count);
        return AppendPadded(to_, parts_.day, token.count);
      case Token::Weekday:
        return weekday(token.count);
      case Token::Hour:
        return AppendPadded(to_, section_.twelveHours ? (hour + 11) % 12 + 1 : hour, pair);
      case Token::Minute:
        return AppendPadded(to_, parts_.second / 60 % 60, pair);
      case Token::Second:
        return AppendPadded(to_, parts_.second % 60, pair);
      case Token::SecondDecimals:
        return secondDecimals(token.count);
      case Token::HalfOfDay:
        return halfOfDay(token.text, hour >= 12);
      case Token::ElapsedHours:
        return AppendPadded(to_, seconds / 3600, token.count);
      case Token::ElapsedMinutes:
        return AppendPadded(to_, seconds / 60, token.count);
      case Token::ElapsedSeconds:
        return AppendPadded(to_, seconds, token.count);
      default:
        to_ += token.text;
    }
  }

  void year(int year, int count) {
    if (count > 2) return AppendPadded(to_, year, 4);
    AppendPadded(to_, year % 100, 2);
  }

  void month(int count) {
    const auto index = static_cast<std::size_t>(parts_.month - 1);
    constexpr int FirstLetter = 5;
    if (count <= 2) {
      AppendPadded(to_, parts_.month, count);
    } else if (count == 3) {
      to_ += locale_.shortMonths[index];
    } else if (count == FirstLetter) {
      to_ += Left(locale_.months[index], 1);
    } else {
      to_ += locale_.months[index];
    }
  }

  void weekday(int count) {
    const auto index = static_cast<std::size_t>(parts_.weekday);
    to_ += count == 3 ? locale_.shortDays[index] : locale_.days[index];
  }

  void secondDecimals(int count) {
    to_ += locale_.decimalSeparator;
    const int known = std::min(count, section_.secondDecimals);
    AppendPadded(to_, parts_.rest / powerOfTen(section_.secondDecimals - known), known);
    to_.append(static_cast<std::size_t>(count - known), '0');
  }

  /// As written, except for the locale's own names for AM/PM.
  void halfOfDay(const std::string& symbol, bool afternoon) {
    if (EqualsIgnoreCase(symbol, "AM/PM")) {
      const std::string& name = afternoon ? locale_.pm : locale_.am;
      if (!name.empty()) {
        to_ += name;
      } else {
        to_ += afternoon ? "PM" : "AM";
      }
    } else {
      const std::size_t slash = symbol.find('/');
      to_ += afternoon ? symbol.substr(slash + 1) : symbol.substr(0, slash);
    }
  }

  std::string& to_;
  const NumberFormatSection& section_;
  const Parts& parts_;
  const Locale& locale_;
};

}  // namespace

void AppendDateSection(std::string& to, const NumberFormatSection& section, double serial,
                       const Locale& locale, DateSystem system) {
  const bool from1904 = system == DateSystem::From1904;
  const bool negative = serial < 0.0;
  const double magnitude = negative ? -serial : serial;
  const double first = from1904 ? FirstDayOf1904 : 0.0;
  if ((negative && !from1904) || !(magnitude + first < EndOfDays)) {
    to += NoDate;
    return;
  }
  // Where no time is shown, what is but rounding must not lose a day.
  constexpr int Milliseconds = 3;
  Parts parts;
  splitTime(magnitude, section.showsTime ? section.secondDecimals : Milliseconds, parts);
  const std::int64_t days = parts.days + static_cast<std::int64_t>(first);
  if (static_cast<double>(days) >= EndOfDays) {
    to += NoDate;
    return;
  }
  section.islamic ? splitIslamic(days, parts) : splitGregorian(days, parts);
  parts.weekday = static_cast<int>((days + 6) % 7);
  if (negative) to += '-';
  DateWriter(to, section, parts, locale).write();
}

}  // namespace basic
