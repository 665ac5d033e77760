// The control panel's regional settings, and its pictures of dates and times.

#include "windows/platform/UserLocale.h"

#include <algorithm>
#include <cstddef>

#include "windows/com/Text.h"
#include "windows/com/WindowsApi.h"

namespace windows::platform {

namespace {

void read(LCTYPE what, std::string& value) {
  wchar_t text[256] = {};
  const int length =
      ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, what, text, static_cast<int>(std::size(text)));
  if (length > 1) value = com::narrow(text);
}

void readPicture(LCTYPE what, std::string& value) {
  std::string picture;
  read(what, picture);
  if (!picture.empty()) value = formatPicture(picture);
}

template <std::size_t Size>
void readNames(LCTYPE first, std::array<std::string, Size>& names) {
  for (std::size_t i = 0; i < Size; ++i) read(first + static_cast<LCTYPE>(i), names[i]);
}

/// What stands for a letter that is repeated so often.
std::string symbol(char letter, std::size_t count) {
  switch (letter) {
    case 'M':
      return std::string(count, 'm');
    case 'm':
      return std::string(count, 'n');
    case 'H':
      return std::string(count, 'h');
    case 'y':
      return count > 2 ? "yyyy" : "yy";
    case 't':
      return "AM/PM";
    case 'g':
      return {};  // the era
    default:
      return std::string(count, letter);
  }
}

}  // namespace

std::string formatPicture(std::string_view picture) {
  std::string format;
  for (std::size_t i = 0; i < picture.size();) {
    if (picture[i] == '\'') {
      const std::size_t end = std::min(picture.find('\'', i + 1), picture.size());
      format.append("\"").append(picture.substr(i + 1, end - i - 1)).append("\"");
      i = end + 1;
      continue;
    }
    const std::size_t end = std::min(picture.find_first_not_of(picture[i], i), picture.size());
    format += symbol(picture[i], end - i);
    i = end;
  }
  return format;
}

basic::Locale readUserLocale() {
  basic::Locale locale;
  read(LOCALE_SDECIMAL, locale.decimalSeparator);
  read(LOCALE_STHOUSAND, locale.thousandsSeparator);
  read(LOCALE_SDATE, locale.dateSeparator);
  read(LOCALE_STIME, locale.timeSeparator);
  readPicture(LOCALE_SSHORTDATE, locale.shortDate);
  readPicture(LOCALE_SLONGDATE, locale.longDate);
  readPicture(LOCALE_STIMEFORMAT, locale.longTime);
  readPicture(LOCALE_SSHORTTIME, locale.shortTime);
  read(LOCALE_S1159, locale.am);
  read(LOCALE_S2359, locale.pm);
  readNames(LOCALE_SMONTHNAME1, locale.months);
  readNames(LOCALE_SABBREVMONTHNAME1, locale.shortMonths);
  // The system's first day is Monday.
  readNames(LOCALE_SDAYNAME1, locale.days);
  readNames(LOCALE_SABBREVDAYNAME1, locale.shortDays);
  std::rotate(locale.days.begin(), locale.days.end() - 1, locale.days.end());
  std::rotate(locale.shortDays.begin(), locale.shortDays.end() - 1, locale.shortDays.end());
  return locale;
}

}  // namespace windows::platform
