#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "basic/Locale.h"

namespace basic {

// What a spreadsheet's cell shows for a value under a number format code
// (ECMA-376 part 1, 18.8.30 and 18.8.31). For worksheets and chart labels.

/// A value of a cell that is an error ("#DIV/0!").
struct CellError {
  std::string_view text;
};

/// What a cell holds. Texts are views: they have to live as long as the call.
using CellValue = std::variant<double, bool, std::string_view, CellError>;

/// What day serials count from. Under From1900 day 1 is 1 January 1900, day 0
/// reads 0 January, and 29 February 1900 stands there though no calendar has it;
/// under From1904 day 0 is 1 January 1904.
enum class DateSystem : std::uint8_t { From1900, From1904 };

struct NumberFormatCode;

/// A number format code, taken apart once to be applied to many values. A copy
/// shares what was taken apart, so that every style can keep one; a format never
/// changes and can be used by many threads.
///
/// No code is refused, since a cell has to show something: a quote or bracket
/// left open is text to the end, letters without a meaning stand for
/// themselves, as do those of dates beside digits ("0 items"), and sections
/// beyond the fourth are ignored. Of what stands in brackets, locale codes
/// ([$-409]) and forms of digits ([DBNum1]) have no effect: names and separators
/// are those of the Locale.
class NumberFormat {
 public:
  /// General.
  NumberFormat();
  /// Codes are in the language of the file format ("#,##0.00"), whatever the
  /// locale. An empty one is General.
  explicit NumberFormat(std::string_view code);

  /// Whether numbers are shown as a date or time (by the first section).
  [[nodiscard]] bool isDateTime() const;

  /// The colour that the value's section asks for, 1 to 56 as in [Color12];
  /// [Black] [White] [Red] [Green] [Blue] [Yellow] [Magenta] [Cyan] are 1 to 8.
  /// 0 if it asks for none. Plus 7 it is an index into 18.8.27 indexedColors.
  [[nodiscard]] int color(const CellValue& value) const;

 private:
  friend void AppendFormatted(std::string& to, const NumberFormat& format, const CellValue& value,
                              const Locale& locale, DateSystem system);

  std::shared_ptr<const NumberFormatCode> code_;
};

/// The text of a value under a format.
///
/// Numbers are rounded half away from zero at their 15 significant digits. A
/// minus stands in front of everything, also where rounding leaves zeros
/// ("-0.00"); a section for negative numbers alone drops it, and so does one
/// without any digits. A number that no condition accepts is General. General
/// is what fits into 11 characters, the minus aside.
///
/// Times are rounded to the last part of a second shown, without seconds to the
/// second; then hours and minutes are cut, not rounded. Days outside 1900 to
/// 9999 are "#####"; under From1904 days before the first are shown with a minus.
/// B2 is the tabular Islamic calendar, which may be a day or two from the
/// observed one.
///
/// _x is a blank, *x nothing. Fractions are the last convergent of the continued
/// fraction that fits, with at most seven digits in the denominator. Text is
/// shown as it is where the code has no section for it; truth values are TRUE
/// and FALSE, errors and numbers that are not finite ("#NUM!") their text, under
/// any format.
std::string FormatNumber(const NumberFormat& format, const CellValue& value,
                         const Locale& locale = UserLocale(), DateSystem system = DateSystem::From1900);

/// The same, appended to a text that the caller uses again.
void AppendFormatted(std::string& to, const NumberFormat& format, const CellValue& value,
                     const Locale& locale = UserLocale(), DateSystem system = DateSystem::From1900);

/// The code of a format that files name by its number alone (18.8.30), nothing
/// for a number that has none. 14 and 22 are the locale's short date, as are the
/// date formats of East Asian editions (27 to 36, 50 to 58) elsewhere; 5 to 8
/// and 42 and 44 are in dollars.
std::optional<std::string> BuiltInNumberFormat(int number, const Locale& locale = UserLocale());

}  // namespace basic
