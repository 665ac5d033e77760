#pragma once

#include <string>
#include <string_view>

#include "basic/Date.h"
#include "basic/Locale.h"

namespace basic {

/// Format(date, picture): a date and time written by a format picture.
///
/// Symbols, in either case of letters:
///
///     c                 short date and long time, a zero part left out
///     d dd              day of the month (dd, and likewise all pairs: two digits)
///     ddd dddd          name of the weekday, short and full
///     ddddd dddddd      the locale's short date and long date
///     w ww              weekday (1 is Sunday), week of the year (the first has
///                       1 January, weeks begin on Sunday)
///     m mm              month; after h or hh, with nothing but separators and
///                       literal text between, the minute
///     mmm mmmm          name of the month, short and full
///     q y               quarter, day of the year
///     yy yyyy           year
///     h hh n nn s ss    hour, minute, second
///     ttttt             the locale's long time
///     AM/PM A/P         as written, the half that applies ("am/pm" gives "pm")
///     AMPM              the locale's names of the halves of the day
///     / :               the locale's separators
///     "text" \x         the text or character itself
///
/// Every other character stands for itself. With one of the AM/PM symbols hours
/// run from 1 to 12. An empty picture is General Date. The named formats are
/// General Date, Long Date, Medium Date (dd-mmm-yy), Short Date, Long Time,
/// Medium Time (hh:nn AM/PM) and Short Time, in any case.
///
/// The time is rounded to the second. A date out of range raises
/// InvalidProcedureCall.
std::string Format(Date date, std::string_view picture, const Locale& locale = UserLocale());

}  // namespace basic
