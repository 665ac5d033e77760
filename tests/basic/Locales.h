#pragma once

#include "basic/Locale.h"

namespace basic::test {

inline Locale american() { return {}; }

inline Locale british() {
  return {.shortDate = "dd/mm/yyyy", .longDate = "dd mmmm yyyy", .longTime = "hh:nn:ss"};
}

inline Locale german() {
  return {
      .decimalSeparator = ",",
      .thousandsSeparator = ".",
      .dateSeparator = ".",
      .shortDate = "dd.mm.yyyy",
      .longDate = "dddd, d. mmmm yyyy",
      .longTime = "hh:nn:ss",
      .am = "",
      .pm = "",
      .months = {"Januar", "Februar", "März", "April", "Mai", "Juni", "Juli", "August", "September",
                 "Oktober", "November", "Dezember"},
      .shortMonths = {"Jan", "Feb", "Mrz", "Apr", "Mai", "Jun", "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"},
      .days = {"Sonntag", "Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag"},
      .shortDays = {"So", "Mo", "Di", "Mi", "Do", "Fr", "Sa"},
  };
}

/// Dates and times share their separator; thousands stand apart by a blank.
inline Locale finnish() {
  return {.decimalSeparator = ",",
          .thousandsSeparator = "\u00A0",
          .dateSeparator = ".",
          .timeSeparator = ".",
          .shortDate = "d.m.yyyy",
          .longTime = "h.nn.ss"};
}

/// The year first, the half of the day before the hour.
inline Locale korean() {
  return {.dateSeparator = "-",
          .shortDate = "yyyy-mm-dd",
          .longTime = "AMPM h:nn:ss",
          .am = "오전",
          .pm = "오후"};
}

}  // namespace basic::test
