// The locale's names, separators and pictures, as ICU has them.

#include "platform/UserLocale.h"

#include <unicode/dcfmtsym.h>
#include <unicode/dtfmtsym.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/DatePicture.h"

namespace platform {
namespace {

/// By the precedence of POSIX; empty for none, and for the locales of no language.
std::string localeName(const char* category) {
  for (const char* variable : {"LC_ALL", category, "LANG"}) {
    const char* const value = std::getenv(variable);
    if (value == nullptr || *value == '\0') continue;
    const std::string_view name = value;
    const bool isNeutral = name == "C" || name == "POSIX" || name.starts_with("C.");
    return isNeutral ? std::string() : std::string(name);
  }
  return {};
}

/// "de_DE.UTF-8@euro" is "de_DE", and "sr_RS@latin" is "sr_Latn_RS".
std::string withoutCodeset(std::string_view name) {
  std::string plain(name.substr(0, name.find_first_of(".@")));
  const std::size_t modifier = name.find('@');
  const std::string_view script = modifier == std::string_view::npos ? "" : name.substr(modifier + 1);
  const std::size_t country = std::min(plain.find('_'), plain.size());
  if (script == "latin") plain.insert(country, "_Latn");
  if (script == "cyrillic") plain.insert(country, "_Cyrl");
  return plain;
}

/// Nothing for a language that is not known.
std::optional<icu::Locale> knownLocale(const std::string& name) {
  if (name.empty()) return std::nullopt;
  icu::Locale wanted = icu::Locale::createCanonical(withoutCodeset(name).c_str());
  std::int32_t count = 0;
  const icu::Locale* const all = icu::Locale::getAvailableLocales(count);
  const bool isKnown = std::any_of(all, all + count, [&](const icu::Locale& each) {
    return std::string_view(each.getLanguage()) == wanted.getLanguage();
  });
  if (!isKnown) return std::nullopt;
  UErrorCode status = U_ZERO_ERROR;
  wanted.setKeywordValue("calendar", "gregorian", status);
  wanted.setKeywordValue("numbers", "latn", status);
  return wanted;
}

std::string utf8(const icu::UnicodeString& text) {
  std::string bytes;
  text.toUTF8String(bytes);
  return bytes;
}

void readNumbers(const icu::Locale& wanted, basic::Locale& locale) {
  using Symbols = icu::DecimalFormatSymbols;
  UErrorCode status = U_ZERO_ERROR;
  const Symbols symbols(wanted, status);
  if (U_FAILURE(status)) return;
  locale.decimalSeparator = utf8(symbols.getConstSymbol(Symbols::kDecimalSeparatorSymbol));
  locale.thousandsSeparator = utf8(symbols.getConstSymbol(Symbols::kGroupingSeparatorSymbol));
}

/// Empty where the locale's format has no pattern.
std::string pictureOf(icu::DateFormat* format) {
  const std::unique_ptr<icu::DateFormat> owned(format);
  const auto* const simple = dynamic_cast<const icu::SimpleDateFormat*>(format);
  if (simple == nullptr) return {};
  icu::UnicodeString pattern;
  return picture(utf8(simple->toPattern(pattern)));
}

template <std::size_t Size>
void readNames(std::array<std::string, Size>& names, const icu::UnicodeString* from, std::int32_t count) {
  if (count != static_cast<std::int32_t>(Size)) return;
  for (std::size_t i = 0; i < Size; ++i) names[i] = utf8(from[i]);
}

void readDates(const icu::Locale& wanted, basic::Locale& locale) {
  using icu::DateFormat;
  const auto replace = [](std::string& value, std::string found) {
    if (!found.empty()) value = std::move(found);
  };
  replace(locale.shortDate, pictureOf(DateFormat::createDateInstance(DateFormat::kShort, wanted)));
  replace(locale.longDate, pictureOf(DateFormat::createDateInstance(DateFormat::kFull, wanted)));
  replace(locale.longTime, pictureOf(DateFormat::createTimeInstance(DateFormat::kMedium, wanted)));
  replace(locale.shortTime, pictureOf(DateFormat::createTimeInstance(DateFormat::kShort, wanted)));
  locale.dateSeparator = separatorOf(locale.shortDate, locale.dateSeparator);
  locale.timeSeparator = separatorOf(locale.longTime, locale.timeSeparator);

  using Symbols = icu::DateFormatSymbols;
  UErrorCode status = U_ZERO_ERROR;
  const Symbols symbols(wanted, status);
  if (U_FAILURE(status)) return;
  std::int32_t count = 0;
  if (const icu::UnicodeString* halves = symbols.getAmPmStrings(count); count == 2) {
    locale.am = utf8(halves[0]);
    locale.pm = utf8(halves[1]);
  }
  // Months as they stand behind a day ("2. marta"); short ones and weekdays as they stand alone.
  const icu::UnicodeString* names = symbols.getMonths(count, Symbols::FORMAT, Symbols::WIDE);
  readNames(locale.months, names, count);
  names = symbols.getMonths(count, Symbols::STANDALONE, Symbols::ABBREVIATED);
  readNames(locale.shortMonths, names, count);
  // In front of Sunday is an empty one.
  names = symbols.getWeekdays(count, Symbols::STANDALONE, Symbols::WIDE);
  readNames(locale.days, names + 1, count - 1);
  names = symbols.getWeekdays(count, Symbols::STANDALONE, Symbols::ABBREVIATED);
  readNames(locale.shortDays, names + 1, count - 1);
}

}  // namespace

basic::Locale readUserLocale() {
  basic::Locale locale;
  if (const auto numbers = knownLocale(localeName("LC_NUMERIC"))) readNumbers(*numbers, locale);
  if (const auto dates = knownLocale(localeName("LC_TIME"))) readDates(*dates, locale);
  return locale;
}

std::string unknownLocaleName() {
  for (const char* category : {"LC_NUMERIC", "LC_TIME"}) {
    std::string name = localeName(category);
    if (!name.empty() && !knownLocale(name)) return name;
  }
  return {};
}

}  // namespace platform
