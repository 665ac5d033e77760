#pragma once

#include <string>

#include "basic/Locale.h"

namespace platform {

/// The user's regional settings as LC_ALL, LC_TIME, LC_NUMERIC and LANG name them, from ICU's data, whether
/// the system has these locales or not; en-US for what they do not name, for the C locale and for an unknown
/// language. Digits are European, years those of the Gregorian calendar.
basic::Locale readUserLocale();

/// What the environment names ("xx_XX.UTF-8") where that is no known language; otherwise empty.
std::string unknownLocaleName();

}  // namespace platform
