#include "ado/Encoding.h"

#include <array>

#include "basic/Strings.h"
#include "basic/Utf8.h"

namespace ado {
namespace {

/// Windows-1252 from 0x80 to 0x9F (WHATWG Encoding Standard, index windows-1252).
constexpr std::array<char16_t, 32> Windows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool isLead(char16_t c) { return (c & 0xFC00U) == 0xD800U; }
bool isTrail(char16_t c) { return (c & 0xFC00U) == 0xDC00U; }

}  // namespace

std::string utf8FromUtf16(std::u16string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (isLead(c) && i + 1 < text.size() && isTrail(text[i + 1])) {
      basic::AppendUtf8(utf8, 0x10000U + ((c & 0x3FFU) << 10U) + (text[++i] & 0x3FFU));
    } else {
      basic::AppendUtf8(utf8, c);
    }
  }
  return utf8;
}

std::string utf8FromDriver(std::string_view text) {
  if (basic::IsValidUtf8(text)) return std::string(text);
  std::string utf8;
  for (const char each : text) {
    const auto c = static_cast<unsigned char>(each);
    basic::AppendUtf8(utf8, c >= 0x80 && c < 0xA0 ? Windows1252[c - 0x80U] : c);
  }
  return utf8;
}

}  // namespace ado
