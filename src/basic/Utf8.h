#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace basic {

// Code points one by one; for whole texts see IsValidUtf8, Len and Left in Strings.h.

/// What stands for bytes that are no UTF-8 and for numbers that are no character.
inline constexpr char32_t ReplacementCharacter = 0xFFFD;

/// Whether a number is that of a character: not beyond U+10FFFF, no half of a surrogate pair.
constexpr bool IsCharacter(char32_t c) { return c < 0xD800 || (c >= 0xE000 && c <= 0x10FFFF); }

/// The byte-order mark, U+FEFF.
inline constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

struct Utf8Check {
  bool isValid = true;
  /// Where the first byte-order mark is; npos for none, and after malformed pieces.
  std::size_t mark = std::string_view::npos;
};
/// IsValidUtf8, and what else is seen in one pass.
Utf8Check CheckUtf8(std::string_view bytes);

/// The character that begins at `at` (less than the text's size); moves `at` behind it. What is no
/// well-formed sequence gives one ReplacementCharacter for its first byte and those of the bytes behind it
/// that continue it.
char32_t DecodeUtf8(std::string_view text, std::size_t& at);

/// Calls `take` with each byte of a character as UTF-8; of ReplacementCharacter in place of what is none.
template <typename Take>
constexpr void EncodeUtf8(char32_t c, Take&& take) {
  const auto byte = [&take](char32_t bits) { take(static_cast<char>(bits)); };
  if (c < 0x80) return byte(c);
  if (!IsCharacter(c)) c = ReplacementCharacter;
  if (c < 0x800) {
    byte(0xC0U | c >> 6U);
  } else {
    if (c < 0x10000) {
      byte(0xE0U | c >> 12U);
    } else {
      byte(0xF0U | c >> 18U);
      byte(0x80U | (c >> 12U & 0x3FU));
    }
    byte(0x80U | (c >> 6U & 0x3FU));
  }
  byte(0x80U | (c & 0x3FU));
}

/// Appends a character as UTF-8; ReplacementCharacter in place of what is none.
void AppendUtf8(std::string& text, char32_t c);

}  // namespace basic
