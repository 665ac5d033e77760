#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace render {

/// The code point at `at`, which moves behind it; a byte that is no UTF-8 gives
/// U+FFFD and is stepped over.
inline char32_t decodeUtf8(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const unsigned first = byte(at++);
  if (first < 0x80) return first;
  const int more = first >= 0xF0 && first < 0xF8 ? 3 : first >= 0xE0 ? 2 : 1;
  if (first < 0xC2 || first >= 0xF5) return 0xFFFD;
  char32_t value = first & (0x3FU >> more);
  for (int i = 0; i < more; ++i) {
    const unsigned next = byte(at);
    if ((next & 0xC0U) != 0x80) return 0xFFFD;
    value = value << 6 | (next & 0x3FU);
    ++at;
  }
  return value;
}

inline void appendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | c >> 6);
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | c >> 12);
    out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | c >> 18);
    out += static_cast<char>(0x80 | (c >> 12 & 0x3F));
    out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

}  // namespace render
