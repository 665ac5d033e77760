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

/// The character that begins at `at` (less than the text's size); moves `at` behind it. What is no
/// well-formed sequence gives one ReplacementCharacter for its first byte and those of the bytes behind it
/// that continue it.
char32_t DecodeUtf8(std::string_view text, std::size_t& at);

/// Appends a character as UTF-8; ReplacementCharacter in place of what is none.
void AppendUtf8(std::string& text, char32_t c);

}  // namespace basic
