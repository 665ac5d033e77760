// Conversions and format pictures on any text: nothing but Error may come out,
// and what comes out has to hold what the headers promise.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Format.h"
#include "basic/Locales.h"
#include "basic/Strings.h"

namespace {

using namespace basic;

void require(bool promise) {
  if (!promise) std::abort();
}

template <typename Action>
void attempt(Action action) {
  try {
    action();
  } catch (const Error& error) {
    require(error.number == 5 || error.number == 6 || error.number == 13);
  }
}

void convert(std::string_view text, const Locale& locale) {
  attempt([&] { require(std::isfinite(CDbl(text, locale))); });
  attempt([&] { CLng(text, locale); });
  attempt([&] { CBool(text, locale); });
  attempt([&] {
    const Date date = CDate(text, locale);
    require(IsInRange(date));
    require(StoredDate(CDate(StoredDate(date), locale)) == StoredDate(date));
    // A time alone that is written with points may read as a date.
    if (locale.timeSeparator == ".") return;
    require(CStr(CDate(CStr(date, locale), locale), locale) == CStr(date, locale));
  });
}

void write(std::string_view picture, const Locale& locale) {
  const Date date = DateFrom(2026, 11, 25, 17, 8, 9);
  const std::string text = Format(date, picture, locale);
  // No symbol writes more than a long date or two, nor breaks a character apart.
  require(text.size() <= (picture.size() + 1) * 64);
  require(!IsValidUtf8(picture) || IsValidUtf8(text));

  Locale own = locale;
  own.shortDate = own.longTime = own.shortTime = picture;
  Format(date, "c dddddd Short Time", own);
  attempt([&] { CDate("3/4/2026 5:06", own); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Locale locales[] = {test::american(), test::british(), test::german(), test::finnish(),
                                   test::korean()};
  if (size == 0) return 0;
  const Locale& locale = locales[data[0] % std::size(locales)];
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  convert(text, locale);
  write(text, locale);
  return 0;
}
