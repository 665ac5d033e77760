#pragma once

#include <compare>
#include <cstdint>

namespace basic {

/// A date and time as the automation world counts it: days since 30 December
/// 1899, the time of day being the fraction. Before that day the fraction still
/// counts forward from midnight (-1.25 is 29 December 1899, 06:00). Local time,
/// no zone. The default is the zero date.
struct Date {
  double serial = 0.0;

  friend auto operator<=>(const Date&, const Date&) = default;
};

/// A date taken apart. Years 100 to 9999, months 1 to 12, weekday 1 (Sunday) to 7.
struct DateParts {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int weekday = 7;
  int dayOfYear = 364;
};

/// Whether the date lies in the years 100 to 9999. A serial that is no number
/// does not.
bool IsInRange(Date date);

/// Takes a date apart, rounded to the nearest second (31 December 9999 is the
/// exception, it ends at 23:59:59). A date out of range raises
/// InvalidProcedureCall.
DateParts Split(Date date);

/// Puts a date together. Parts outside their range carry over, as DateSerial
/// and TimeSerial do (month 13 is January of the next year, hour -1 is 23:00 of
/// the day before); a year of two digits is taken as FullYear takes it. A
/// result out of range raises InvalidProcedureCall.
Date DateFrom(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

/// Whether the two integers name a real day of years 100 to 9999.
bool IsValidDay(int year, int month, int day);

/// The year that two digits mean: 0 to 29 the 2000s, 30 to 99 the 1900s. Other
/// years are themselves.
int FullYear(int year);

/// DateAdd("s", seconds, date), to the millisecond; whole seconds give exactly
/// the date that DateFrom gives. A result out of range raises InvalidProcedureCall.
Date AddSeconds(Date date, double seconds);

}  // namespace basic
