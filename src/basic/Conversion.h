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

/// Text to 32-bit integer: blanks around it, a sign, a fraction (rounded half
/// to even), an exponent, thousands separators and &H/&O prefixes are accepted;
/// the words True and False too (-1 and 0).
std::int32_t CLng(std::string_view text, const Locale& locale = UserLocale());
/// Rounds half to even.
std::int32_t CLng(double value);

double CDbl(std::string_view text, const Locale& locale = UserLocale());

/// The words True and False in any case, or a number, non-zero meaning true.
bool CBool(std::string_view text, const Locale& locale = UserLocale());

/// Dates as people write them: the order of the user's short date, ISO 8601,
/// month names, two-digit years (0-29 mean 2000s), times with or without
/// seconds and AM/PM; date alone, time alone or both; a plain number is a serial.
Date CDate(std::string_view text, const Locale& locale = UserLocale());

/// Default text of a value: doubles with 15 significant digits and the user's
/// decimal separator, "True"/"False", dates as "short date", "long time" or
/// both (a zero part is left out). Null raises InvalidUseOfNull's text through
/// TypeMismatch; Empty is the empty string; Binary is "0x" and hexadecimal digits.
std::string CStr(const Variant& value, const Locale& locale = UserLocale());
std::string CStr(double value, const Locale& locale = UserLocale());
std::string CStr(std::int32_t value);
std::string CStr(bool value);
std::string CStr(Date value, const Locale& locale = UserLocale());

/// Half to even, as every conversion to an integer rounds.
double RoundHalfEven(double value);

/// One fixed form whatever the locale, for what is stored in a presentation:
/// "yyyy-mm-dd hh:nn:ss". Reading accepts what CDate accepts.
std::string StoredDate(Date value);

}  // namespace basic
