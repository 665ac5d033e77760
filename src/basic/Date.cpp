// Dates as numbers of days: the calendar, and the parts of a day.

#include "basic/Date.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

#include "basic/Error.h"

namespace basic {
namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr sys_days Epoch = std::chrono::year(1899) / 12 / 30;
constexpr std::int64_t FirstDay = (sys_days(std::chrono::year(100) / 1 / 1) - Epoch).count();
constexpr std::int64_t LastDay = (sys_days(std::chrono::year(9999) / 12 / 31) - Epoch).count();
constexpr std::int64_t SecondsPerDay = 86400;

struct DayAndTime {
  std::int64_t day;
  double seconds;  // from midnight, below 86400
};

/// The whole part counts days in either direction, the fraction always forward.
DayAndTime takeApart(Date date) {
  if (!IsInRange(date)) Raise(RuntimeError::InvalidProcedureCall);
  const double day = std::trunc(date.serial);
  return {static_cast<std::int64_t>(day), std::abs(date.serial - day) * SecondsPerDay};
}

Date putTogether(std::int64_t day, double seconds) {
  if (day < FirstDay || day > LastDay) Raise(RuntimeError::InvalidProcedureCall);
  const double time = seconds / static_cast<double>(SecondsPerDay);
  const auto whole = static_cast<double>(day);
  return {day < 0 ? whole - time : whole + time};
}

std::int64_t floorDivide(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

}  // namespace

bool IsInRange(Date date) {
  return date.serial > static_cast<double>(FirstDay - 1) && date.serial < static_cast<double>(LastDay + 1);
}

DateParts Split(Date date) {
  auto [day, exact] = takeApart(date);
  auto seconds = static_cast<int>(std::floor(exact + 0.5));
  if (seconds == SecondsPerDay) {
    // The last moment of the calendar has no next day to go to.
    if (day == LastDay) {
      seconds -= 1;
    } else {
      day += 1;
      seconds = 0;
    }
  }
  const sys_days midnight = Epoch + days(day);
  const std::chrono::year_month_day civil(midnight);
  const sys_days newYear = civil.year() / 1 / 1;

  DateParts parts;
  parts.year = static_cast<int>(civil.year());
  parts.month = static_cast<int>(static_cast<unsigned>(civil.month()));
  parts.day = static_cast<int>(static_cast<unsigned>(civil.day()));
  parts.hour = seconds / 3600;
  parts.minute = seconds / 60 % 60;
  parts.second = seconds % 60;
  parts.weekday = static_cast<int>(std::chrono::weekday(midnight).c_encoding()) + 1;
  parts.dayOfYear = static_cast<int>((midnight - newYear).count()) + 1;
  return parts;
}

Date DateFrom(int year, int month, int day, int hour, int minute, int second) {
  const std::int64_t months = std::int64_t{FullYear(year)} * 12 + month - 1;
  const std::int64_t carriedYear = floorDivide(months, 12);
  // Beyond this no number of days that fits an int leads back into the calendar.
  constexpr std::int64_t FarthestYear = 6'000'000;
  if (carriedYear < -FarthestYear || carriedYear > FarthestYear) Raise(RuntimeError::InvalidProcedureCall);

  // The Gregorian calendar repeats after 400 years (146097 days), which keeps
  // the year within what the calendar of the standard library can hold.
  const std::int64_t era = floorDivide(carriedYear, 400);
  const auto yearOfEra = static_cast<int>(carriedYear - era * 400);
  const auto monthOfYear = static_cast<unsigned>(months - carriedYear * 12 + 1);
  const sys_days first = std::chrono::year(yearOfEra) / std::chrono::month(monthOfYear) / 1;

  const std::int64_t seconds = std::int64_t{hour} * 3600 + std::int64_t{minute} * 60 + second;
  const std::int64_t carriedDays = floorDivide(seconds, SecondsPerDay);
  const std::int64_t serialDay = (first - Epoch).count() + era * 146097 + day - 1 + carriedDays;
  return putTogether(serialDay, static_cast<double>(seconds - carriedDays * SecondsPerDay));
}

bool IsValidDay(int year, int month, int day) {
  if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return false;
  const std::chrono::year_month_day civil(std::chrono::year(year),
                                          std::chrono::month(static_cast<unsigned>(month)),
                                          std::chrono::day(static_cast<unsigned>(day)));
  return civil.ok();
}

int FullYear(int year) {
  if (year < 0 || year > 99) return year;
  return year + (year < 30 ? 2000 : 1900);
}

Date AddSeconds(Date date, double seconds) {
  const auto [day, time] = takeApart(date);
  // Whole milliseconds: a serial does not hold a second exactly, and adding a
  // second 86400 times has to come out at the same time of the next day.
  const double milliseconds = std::round(time * 1000.0) + std::round(seconds * 1000.0);
  constexpr double PerDay = 1000.0 * SecondsPerDay;
  const double carried = std::floor(milliseconds / PerDay);
  if (!(std::abs(carried) <= static_cast<double>(LastDay - FirstDay)))
    Raise(RuntimeError::InvalidProcedureCall);
  return putTogether(day + static_cast<std::int64_t>(carried), (milliseconds - carried * PerDay) / 1000.0);
}

}  // namespace basic
