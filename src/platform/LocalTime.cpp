#include "platform/LocalTime.h"

#include <ctime>

#include <algorithm>

namespace platform {
namespace {

std::tm localParts(std::time_t moment) {
  tzset();  // localtime_r alone need not see that the zone was changed
  std::tm parts{};
  localtime_r(&moment, &parts);
  parts.tm_sec = std::min(parts.tm_sec, 59);  // a leap second
  return parts;
}

double fractionOf(const std::timespec& moment) { return static_cast<double>(moment.tv_nsec) / 1e9; }

}  // namespace

basic::Date localDate(const std::timespec& moment) {
  const std::tm parts = localParts(moment.tv_sec);
  basic::Date date = basic::DateFrom(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour,
                                     parts.tm_min, parts.tm_sec);
  const double fraction = fractionOf(moment) / 86400.0;
  date.serial += date.serial < 0 ? -fraction : fraction;
  return date;
}

double secondsSinceMidnight(const std::timespec& moment) {
  const std::tm parts = localParts(moment.tv_sec);
  return parts.tm_hour * 3600 + parts.tm_min * 60 + parts.tm_sec + fractionOf(moment);
}

}  // namespace platform
