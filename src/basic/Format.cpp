// A date and time written by a picture, symbol by symbol.

#include "basic/Format.h"

#include <array>
#include <cstddef>
#include <utility>

#include "basic/FormatSymbols.h"
#include "basic/Strings.h"

namespace basic {
namespace {

/// The picture of a named format, any other picture as it is.
std::string_view withoutName(std::string_view picture, const Locale& locale) {
  struct NamedFormat {
    std::string_view name;
    std::string_view picture;
  };
  const std::array<NamedFormat, 8> formats = {{{"", "c"},
                                               {"General Date", "c"},
                                               {"Long Date", "dddddd"},
                                               {"Medium Date", "dd-mmm-yy"},
                                               {"Short Date", "ddddd"},
                                               {"Long Time", "ttttt"},
                                               {"Medium Time", "hh:nn AM/PM"},
                                               {"Short Time", locale.shortTime}}};
  for (const NamedFormat& format : formats) {
    if (EqualsIgnoreCase(format.name, picture)) return format.picture;
  }
  return picture;
}

class Writer {
 public:
  Writer(const DateParts& parts, const Locale& locale) : parts_(parts), locale_(locale) {}

  /// `nested` for a picture of the locale, whose symbols for pictures of the
  /// locale then stand for nothing, lest it contain itself.
  void write(std::string_view picture, bool nested) {
    const bool twelveHours = HasAmPm(picture);
    FormatSymbols symbols(picture);
    while (const auto symbol = symbols.next()) writeSymbol(*symbol, twelveHours, nested);
  }

  std::string text;

 private:
  void writeSymbol(const FormatSymbol& symbol, bool twelveHours, bool nested) {
    const int count = symbol.count;
    switch (symbol.kind) {
      case FormatSymbol::Literal:
        text += symbol.literal;
        break;
      case FormatSymbol::DateSeparator:
        text += locale_.dateSeparator;
        break;
      case FormatSymbol::TimeSeparator:
        text += locale_.timeSeparator;
        break;
      case FormatSymbol::Day:
        writeDay(count);
        break;
      case FormatSymbol::Month:
        writeMonth(count);
        break;
      case FormatSymbol::Year:
        count == 4 ? number(parts_.year, 4) : number(parts_.year % 100, 2);
        break;
      case FormatSymbol::DayOfYear:
        number(parts_.dayOfYear, 1);
        break;
      case FormatSymbol::Quarter:
        number((parts_.month - 1) / 3 + 1, 1);
        break;
      case FormatSymbol::Weekday:
        number(parts_.weekday, 1);
        break;
      case FormatSymbol::Week:
        number(week(), 1);
        break;
      case FormatSymbol::Hour:
        number(twelveHours ? (parts_.hour + 11) % 12 + 1 : parts_.hour, count);
        break;
      case FormatSymbol::Minute:
        number(parts_.minute, count);
        break;
      case FormatSymbol::Second:
        number(parts_.second, count);
        break;
      case FormatSymbol::AmPm:
        writeAmPm(symbol.literal);
        break;
      case FormatSymbol::ShortDate:
        localePicture(locale_.shortDate, nested);
        break;
      case FormatSymbol::LongDate:
        localePicture(locale_.longDate, nested);
        break;
      case FormatSymbol::LongTime:
        localePicture(locale_.longTime, nested);
        break;
      case FormatSymbol::General:
        writeGeneral(nested);
        break;
    }
  }

  void number(int value, int width) {
    const std::string digits = std::to_string(value);
    for (int i = static_cast<int>(digits.size()); i < width; ++i) text += '0';
    text += digits;
  }

  void writeDay(int count) {
    const auto weekday = static_cast<std::size_t>(parts_.weekday - 1);
    switch (count) {
      case 3:
        text += locale_.shortDays[weekday];
        break;
      case 4:
        text += locale_.days[weekday];
        break;
      default:
        number(parts_.day, count);
    }
  }

  void writeMonth(int count) {
    const auto month = static_cast<std::size_t>(parts_.month - 1);
    switch (count) {
      case 3:
        text += locale_.shortMonths[month];
        break;
      case 4:
        text += locale_.months[month];
        break;
      default:
        number(parts_.month, count);
    }
  }

  /// The week of the year that has 1 January in its first; weeks begin on Sunday.
  [[nodiscard]] int week() const {
    const int weekdayOfNewYear = (parts_.weekday - parts_.dayOfYear % 7 + 7) % 7;
    return (parts_.dayOfYear - 1 + weekdayOfNewYear) / 7 + 1;
  }

  void writeAmPm(std::string_view symbol) {
    const bool afternoon = parts_.hour >= 12;
    if (EqualsIgnoreCase(symbol, "AMPM")) {
      text += afternoon ? locale_.pm : locale_.am;
    } else {
      const std::size_t half = symbol.find('/');
      text += afternoon ? symbol.substr(half + 1) : symbol.substr(0, half);
    }
  }

  void localePicture(std::string_view picture, bool nested) {
    if (!nested) write(picture, true);
  }

  void writeGeneral(bool nested) {
    const bool hasDate = parts_.year != 1899 || parts_.month != 12 || parts_.day != 30;
    const bool hasTime = parts_.hour != 0 || parts_.minute != 0 || parts_.second != 0;
    if (hasDate) localePicture(locale_.shortDate, nested);
    if (hasDate && hasTime && !nested) text += ' ';
    if (hasTime || !hasDate) localePicture(locale_.longTime, nested);
  }

  const DateParts& parts_;
  const Locale& locale_;
};

}  // namespace

std::string Format(Date date, std::string_view picture, const Locale& locale) {
  const DateParts parts = Split(date);
  Writer writer(parts, locale);
  writer.write(withoutName(picture, locale), false);
  return std::move(writer.text);
}

}  // namespace basic
