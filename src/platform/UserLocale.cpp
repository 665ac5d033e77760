// The locale's names, separators and pictures, as the C library tells them.

#include "platform/UserLocale.h"

#include <iconv.h>
#include <langinfo.h>
#include <clocale>

#include <cstdlib>
#include <initializer_list>
#include <string>
#include <string_view>

#include "basic/Strings.h"
#include "platform/DatePicture.h"

namespace platform {
namespace {

/// By the precedence of POSIX; empty for none.
std::string localeName(const char* category) {
  for (const char* variable : {"LC_ALL", category, "LANG"}) {
    if (const char* const name = std::getenv(variable); name != nullptr && *name != '\0') return name;
  }
  return {};
}

bool isNeutral(std::string_view name) {
  return name.empty() || name == "C" || name == "POSIX" || name.starts_with("C.");
}

/// A locale of the system, if there is one of that name; its texts as UTF-8.
class SystemLocale {
 public:
  explicit SystemLocale(const std::string& name)
      : locale_(isNeutral(name) ? locale_t{} : newlocale(LC_ALL_MASK, name.c_str(), locale_t{})) {}
  ~SystemLocale() {
    if (locale_ != locale_t{}) freelocale(locale_);
  }
  SystemLocale(const SystemLocale&) = delete;
  SystemLocale& operator=(const SystemLocale&) = delete;

  explicit operator bool() const { return locale_ != locale_t{}; }

  [[nodiscard]] std::string text(nl_item item) const {
    const std::string original = nl_langinfo_l(item, locale_);
    return basic::IsValidUtf8(original) ? original : fromCodeset(original);
  }

  /// The text, unless the locale leaves it empty.
  void replace(std::string& value, nl_item item) const {
    if (std::string found = text(item); !found.empty()) value = std::move(found);
  }

 private:
  [[nodiscard]] std::string fromCodeset(std::string text) const {
    const iconv_t converter = iconv_open("UTF-8", nl_langinfo_l(CODESET, locale_));
    if (converter == reinterpret_cast<iconv_t>(-1)) return {};
    std::string converted(text.size() * 4, '\0');
    char* from = text.data();
    char* to = converted.data();
    std::size_t fromLeft = text.size();
    std::size_t toLeft = converted.size();
    const bool failed = iconv(converter, &from, &fromLeft, &to, &toLeft) == static_cast<std::size_t>(-1);
    iconv_close(converter);
    converted.resize(failed ? 0 : converted.size() - toLeft);
    return converted;
  }

  locale_t locale_;
};

void readNumbers(const SystemLocale& system, basic::Locale& locale) {
  system.replace(locale.decimalSeparator, RADIXCHAR);
  // A locale may do without one, and must not keep another's.
  locale.thousandsSeparator = system.text(THOUSEP);
}

void readDates(const SystemLocale& system, basic::Locale& locale) {
  const std::string date = picture(system.text(D_FMT));
  if (date.find('d') != std::string::npos && date.find('m') != std::string::npos &&
      date.find('y') != std::string::npos) {
    locale.shortDate = date;
    locale.longDate = longDateFor(date);
    locale.dateSeparator = separatorOf(date, locale.dateSeparator);
  }
  const std::string time = picture(system.text(T_FMT));
  if (time.find('h') != std::string::npos) {
    locale.longTime = time;
    locale.shortTime = withoutSeconds(time);
    locale.timeSeparator = separatorOf(time, locale.timeSeparator);
  }
  system.replace(locale.am, AM_STR);
  system.replace(locale.pm, PM_STR);
  // The items of each kind have consecutive numbers.
  for (int i = 0; i < 12; ++i) {
    system.replace(locale.months[static_cast<std::size_t>(i)], MON_1 + i);
    system.replace(locale.shortMonths[static_cast<std::size_t>(i)], ABMON_1 + i);
  }
  for (int i = 0; i < 7; ++i) {
    system.replace(locale.days[static_cast<std::size_t>(i)], DAY_1 + i);
    system.replace(locale.shortDays[static_cast<std::size_t>(i)], ABDAY_1 + i);
  }
}

}  // namespace

basic::Locale readUserLocale() {
  basic::Locale locale;
  if (const SystemLocale numbers(localeName("LC_NUMERIC")); numbers) readNumbers(numbers, locale);
  if (const SystemLocale dates(localeName("LC_TIME")); dates) readDates(dates, locale);
  return locale;
}

}  // namespace platform
