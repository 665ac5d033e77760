#pragma once

#include <array>
#include <string>

namespace basic {

/// The user's regional settings, as far as conversions and format pictures ask
/// for them. Pictures are in the language of Format ("dd/mm/yyyy").
/// The order of day, month and year in the short date is also the order in which
/// CDate reads numbers. The default is en-US. A host fills it from its operating
/// system.
struct Locale {
  std::string decimalSeparator = ".";
  std::string thousandsSeparator = ",";
  std::string dateSeparator = "/";
  std::string timeSeparator = ":";
  std::string shortDate = "m/d/yyyy";
  std::string longDate = "dddd, mmmm d, yyyy";
  std::string longTime = "h:nn:ss AM/PM";
  std::string shortTime = "hh:nn";
  std::string am = "AM";
  std::string pm = "PM";
  std::array<std::string, 12> months = {"January",   "February", "March",    "April",
                                        "May",       "June",     "July",     "August",
                                        "September", "October",  "November", "December"};
  std::array<std::string, 12> shortMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::array<std::string, 7> days = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                     "Thursday", "Friday", "Saturday"};
  std::array<std::string, 7> shortDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
};

/// The regional settings in force: process-wide, set once by the host at
/// start, before another thread asks for them.
const Locale& UserLocale();
void SetUserLocale(Locale locale);

}  // namespace basic
