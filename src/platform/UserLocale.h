#pragma once

#include "basic/Locale.h"

namespace platform {

/// The user's regional settings as LC_ALL, LC_TIME, LC_NUMERIC and LANG name
/// them; en-US for what they do not name, for the C locale, and for a locale
/// that is not installed.
basic::Locale readUserLocale();

}  // namespace platform
