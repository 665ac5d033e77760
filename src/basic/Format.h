#pragma once

#include <string>
#include <string_view>

#include "basic/Date.h"
#include "basic/Locale.h"

namespace basic {

/// Format(date, picture): a date and time written by a format picture.
///
/// Named formats (any case): General Date, Long Date, Medium Date, Short Date,
/// Long Time, Medium Time, Short Time. Symbols: c / : d dd ddd dddd ddddd dddddd
/// w ww m mm mmm mmmm q y yy yyyy h hh n nn s ss ttttt AM/PM am/pm A/P a/p AMPM;
/// m and mm directly after h or hh mean minutes; "quoted" text and \x stand for
/// themselves, as does every other character. With one of the AM/PM symbols,
/// hours run from 1 to 12. An empty picture is General Date.
std::string Format(Date date, std::string_view picture, const Locale& locale = UserLocale());

}  // namespace basic
