#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "basic/Date.h"
#include "basic/Locale.h"
#include "basic/Variant.h"

namespace basic {

// The host language's conversions. All follow the given regional settings, by
// default the user's. Text that does not convert raises TypeMismatch (13), a
// number out of the target's range raises Overflow (6).

/// Text to 32-bit integer: what CDbl accepts, rounded half to even; the words
/// True and False too (-1 and 0). The digits after &H and &O are the bits of the
/// result (&HFFFFFFFF is -1).
std::int32_t CLng(std::string_view text, const Locale& locale = UserLocale());
/// Rounds half to even. What is no number raises Overflow.
std::int32_t CLng(double value);

/// Text to number: blanks around it, a sign before or after it or parentheses
/// for a minus, thousands separators anywhere in the whole part, an exponent
/// with E or D, &H and &O prefixes. Not the words True and False, nor names of
/// infinities; a number too small for a double is 0.
double CDbl(std::string_view text, const Locale& locale = UserLocale());

/// The words True and False in any case, or a number, non-zero meaning true.
bool CBool(std::string_view text, const Locale& locale = UserLocale());

/// Dates as people write them. A date in numbers goes by the order of the user's
/// short date, and by another one where that gives no date ("13/5/2026" under
/// m/d/y); a year of more than two digits in front makes it year, month, day
/// (ISO 8601, also with T before the time). Months may have their names, the
/// user's or the English ones, full or short. Years of two digits follow
/// FullYear, a missing year is this year, a missing day the first. Times come
/// with or without seconds and AM/PM; fractions of seconds are dropped. Date
/// alone, time alone or both in either order; a plain number is a serial.
/// Where the user writes times with the point of dates ("20.30.45"), a colon is
/// accepted as well, and numbers that can be a date are one.
///
/// Names of weekdays and time zones are not accepted. A serial outside the
/// calendar raises Overflow.
Date CDate(std::string_view text, const Locale& locale = UserLocale());

/// Default text of a value: doubles as below, integers and decimals in plain
/// notation, "True"/"False", dates as below, text as it is. Null raises
/// TypeMismatch's number with the text "Invalid use of Null"; Empty is the empty
/// string; Binary is "0x" and hexadecimal digits.
std::string CStr(const Variant& value, const Locale& locale = UserLocale());
/// 15 significant digits and the user's decimal separator; below 0.0001 and from
/// 1E+15 with an exponent ("1E-05"). What is no finite number is "1.#INF",
/// "-1.#INF" or "-1.#IND".
std::string CStr(double value, const Locale& locale = UserLocale());
std::string CStr(std::int32_t value);
std::string CStr(std::int64_t value);
std::string CStr(bool value);
/// "Short date", "long time" or both with a blank between; a zero part is left
/// out, and when both are zero the time is written.
std::string CStr(Date value, const Locale& locale = UserLocale());
/// A pointer would silently be a bool.
std::string CStr(const char* value) = delete;

/// Half to even, as every conversion to an integer rounds.
double RoundHalfEven(double value);

/// One fixed form whatever the locale, for what is stored in a presentation:
/// "yyyy-mm-dd hh:nn:ss". Reading accepts what CDate accepts.
std::string StoredDate(Date value);

}  // namespace basic
