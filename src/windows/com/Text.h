#pragma once

#include <string>
#include <string_view>

namespace windows::com {

/// UTF-8 as the system's calls take text. What is no character becomes U+FFFD, both ways.
[[nodiscard]] std::wstring wide(std::string_view utf8);
[[nodiscard]] std::string narrow(std::wstring_view text);

}  // namespace windows::com
