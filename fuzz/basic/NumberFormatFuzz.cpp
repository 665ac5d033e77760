// Any number format code on any value: nothing may come out but text, of a
// length that code and value explain.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "basic/Locales.h"
#include "basic/Strings.h"
#include "basic/numberformat/NumberFormat.h"

namespace {

using namespace basic;

void require(bool promise) {
  if (!promise) std::abort();
}

void requireReadable(double value) {
  if (!std::isfinite(value)) return;
  const Locale locale = test::american();
  const double general = std::strtod(FormatNumber(NumberFormat(), value, locale).c_str(), nullptr);
  require(std::abs(general - value) <= std::abs(value) * 6e-5 || std::isinf(general));
  const double decimals = std::strtod(FormatNumber(NumberFormat("0.00"), value, locale).c_str(), nullptr);
  require(std::abs(decimals - value) <= 0.005 + std::abs(value) * 1e-14 || std::isinf(decimals));
}

void format(std::string_view code, double number, std::string_view text, const Locale& locale) {
  const NumberFormat numberFormat(code);
  for (const CellValue& value : {CellValue(number), CellValue(text)}) {
    for (const DateSystem system : {DateSystem::From1900, DateSystem::From1904}) {
      const std::string shown = FormatNumber(numberFormat, value, locale, system);
      require(shown.size() <= 1000 + (code.size() + 1) * (text.size() + 64));
      require(!IsValidUtf8(code) || !IsValidUtf8(text) || IsValidUtf8(shown));
      std::string twice = shown;
      AppendFormatted(twice, numberFormat, value, locale, system);
      require(twice == shown + shown);
    }
    const int color = numberFormat.color(value);
    require(color >= 0 && color <= 56);
  }
  require(FormatNumber(numberFormat, true, locale) == "TRUE");
  require(FormatNumber(numberFormat, CellError{text}, locale) == text);
}

}  // namespace

/// A byte for the locale, eight for the number, the code up to a line end, the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Locale locales[] = {test::american(), test::german(), test::korean()};
  double number = 0.0;
  if (size < 1 + sizeof number) return 0;
  const Locale& locale = locales[data[0] % std::size(locales)];
  std::memcpy(&number, data + 1, sizeof number);
  // Most of all bits are numbers that no cell holds.
  if (data[0] & 0x80U) number = std::fmod(number, 3e6);
  const std::string_view rest(reinterpret_cast<const char*>(data) + 1 + sizeof number,
                              size - 1 - sizeof number);
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  requireReadable(number);
  format(rest.substr(0, end), number, rest.substr(std::min(end + 1, rest.size())), locale);
  return 0;
}
