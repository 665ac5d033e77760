// Values become other types as the language's conversion functions have it.

#include "basic/Conversion.h"

#include <cmath>
#include <ctime>
#include <limits>
#include <optional>
#include <type_traits>

#include "basic/DateText.h"
#include "basic/Error.h"
#include "basic/Format.h"
#include "basic/NumberText.h"
#include "basic/Strings.h"

namespace basic {
namespace {

std::optional<bool> parseWord(std::string_view text) {
  text = WithoutWhite(text);
  if (EqualsIgnoreCase(text, "True")) return true;
  if (EqualsIgnoreCase(text, "False")) return false;
  return std::nullopt;
}

int thisYear() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
#ifdef _WIN32
  localtime_s(&local, &now);
#else
  localtime_r(&now, &local);
#endif
  return local.tm_year + 1900;
}

std::string hexadecimal(const Binary& bytes) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  std::string text = "0x";
  text.reserve(2 + bytes.size() * 2);
  for (const unsigned char byte : bytes) {
    text += Digits[byte >> 4U];
    text += Digits[byte & 0xFU];
  }
  return text;
}

}  // namespace

std::int32_t CLng(std::string_view text, const Locale& locale) {
  if (const auto word = parseWord(text)) return *word ? -1 : 0;
  // Hexadecimal and octal digits are the 32 bits themselves: &HFFFFFFFF is -1.
  if (const auto bits = ParsePrefixed(text)) {
    if (*bits > std::numeric_limits<std::uint32_t>::max()) Raise(RuntimeError::Overflow);
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(*bits));
  }
  return CLng(CDbl(text, locale));
}

std::int32_t CLng(double value) {
  const double rounded = RoundHalfEven(value);
  if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
        rounded <= std::numeric_limits<std::int32_t>::max())) {
    Raise(RuntimeError::Overflow);
  }
  return static_cast<std::int32_t>(rounded);
}

double CDbl(std::string_view text, const Locale& locale) {
  const auto number = ParseNumber(text, locale, Grouping::Allowed);
  if (!number) Raise(RuntimeError::TypeMismatch);
  return *number;
}

bool CBool(std::string_view text, const Locale& locale) {
  if (const auto word = parseWord(text)) return *word;
  return CDbl(text, locale) != 0.0;
}

Date CDate(std::string_view text, const Locale& locale) {
  // A number without separators of thousands first: "1.5" is a serial where the
  // point is decimal and the first of May where it is not.
  auto serial = ParseNumber(text, locale, Grouping::Refused);
  if (!serial) {
    if (const auto date = ParseDate(text, locale, thisYear())) return *date;
    serial = ParseNumber(text, locale, Grouping::Allowed);
  }
  if (!serial) Raise(RuntimeError::TypeMismatch);
  if (!IsInRange({*serial})) Raise(RuntimeError::Overflow);
  return {*serial};
}

std::string CStr(const Variant& value, const Locale& locale) {
  return std::visit(
      [&locale](const auto& held) -> std::string {
        using T = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<T, Empty>) {
          return {};
        } else if constexpr (std::is_same_v<T, Null>) {
          throw Error(static_cast<std::int32_t>(RuntimeError::TypeMismatch), DefaultSource,
                      "Invalid use of Null");
        } else if constexpr (std::is_same_v<T, Decimal>) {
          return Replace(held.digits, ".", locale.decimalSeparator);
        } else if constexpr (std::is_same_v<T, std::string>) {
          return held;
        } else if constexpr (std::is_same_v<T, Binary>) {
          return hexadecimal(held);
        } else if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, std::int32_t> ||
                             std::is_same_v<T, std::int64_t>) {
          return CStr(held);
        } else {
          return CStr(held, locale);
        }
      },
      value);
}

std::string CStr(double value, const Locale& locale) { return NumberText(value, locale.decimalSeparator); }

std::string CStr(std::int32_t value) { return std::to_string(value); }

std::string CStr(std::int64_t value) { return std::to_string(value); }

std::string CStr(bool value) { return value ? "True" : "False"; }

std::string CStr(Date value, const Locale& locale) { return Format(value, "c", locale); }

double RoundHalfEven(double value) { return std::nearbyint(value); }

std::string StoredDate(Date value) {
  // Literal separators, whatever the locale; no symbol here asks for its names.
  return Format(value, R"(yyyy\-mm\-dd hh\:nn\:ss)");
}

}  // namespace basic
