#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace basic {

// Text as the host language sees it, over UTF-8; a "character" is a code point.

/// Upper case of the ASCII letters; other characters stay.
std::string UCase(std::string_view text);
/// Whether two texts differ in nothing but the case of ASCII letters.
bool EqualsIgnoreCase(std::string_view a, std::string_view b);
/// Case-sensitively.
bool StartsWith(std::string_view text, std::string_view prefix);

/// Without the blanks (code 32 only) at both ends.
std::string_view Trim(std::string_view text);

/// The pieces between separators, empty ones kept. An empty text has no piece.
std::vector<std::string> Split(std::string_view text, char separator);

/// The text with every occurrence of `what` (case-sensitively, from the left)
/// replaced. An empty `what` occurs nowhere.
std::string Replace(std::string_view text, std::string_view what, std::string_view with);

/// The first `count` characters, a view into the text.
std::string_view Left(std::string_view text, std::size_t count);

/// Number of characters. In text that is no UTF-8, of bytes that begin one.
std::size_t Len(std::string_view text);

/// Whether the bytes are well-formed UTF-8 (Unicode Standard, table 3-7): no
/// overlong forms, no surrogates, nothing above U+10FFFF. Made for whole files.
bool IsValidUtf8(std::string_view bytes);

}  // namespace basic
