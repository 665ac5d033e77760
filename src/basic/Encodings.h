#pragma once

#include <array>
#include <cstddef>

#include "basic/Utf8.h"

namespace basic {

// Texts that are not UTF-8, character by character.

/// The character that a byte stands for in Windows-1252 (WHATWG Encoding Standard, index windows-1252). The
/// five bytes that it leaves undefined are the control characters of their numbers.
constexpr char32_t FromWindows1252(char byte) {
  constexpr std::array<char16_t, 32> From80To9F = {
      0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
  const auto number = static_cast<unsigned char>(byte);
  return number >= 0x80 && number < 0xA0 ? From80To9F[number - 0x80U] : number;
}

/// The character that begins at the code unit `at` (less than `size`) of UTF-16; moves `at` behind it.
/// `unit(i)` gives the units. Half of a pair alone gives ReplacementCharacter.
template <typename Unit>
constexpr char32_t DecodeUtf16(Unit&& unit, std::size_t size, std::size_t& at) {
  const char32_t first = unit(at++);
  if (IsCharacter(first)) return first;
  const char32_t second = at < size ? static_cast<char32_t>(unit(at)) : 0;
  if (first >= 0xDC00 || second < 0xDC00 || second >= 0xE000) return ReplacementCharacter;
  ++at;
  return 0x10000 + ((first & 0x3FFU) << 10U) + (second & 0x3FFU);
}

}  // namespace basic
