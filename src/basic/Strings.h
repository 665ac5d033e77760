#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace basic {

// Text as the host language sees it, over UTF-8; a "character" is a code point.

/// Upper case of the ASCII letters; other characters stay.
std::string UCase(std::string_view text);
bool EqualsIgnoreCase(std::string_view a, std::string_view b);
bool StartsWith(std::string_view text, std::string_view prefix);

/// Without the blanks (code 32 only) at both ends.
std::string_view Trim(std::string_view text);

/// The pieces between separators, empty ones kept. An empty text has no piece.
std::vector<std::string> Split(std::string_view text, char separator);

/// Every occurrence of `what`, case-sensitively.
std::string Replace(std::string_view text, std::string_view what, std::string_view with);

/// The first `count` characters.
std::string_view Left(std::string_view text, std::size_t count);

/// Number of characters.
std::size_t Len(std::string_view text);

bool IsValidUtf8(std::string_view bytes);

}  // namespace basic
