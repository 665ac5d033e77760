#pragma once

#include <string>
#include <string_view>

namespace ado {

/// UTF-16 in the byte order of this machine as UTF-8; what is no character
/// becomes U+FFFD.
[[nodiscard]] std::string utf8FromUtf16(std::u16string_view text);

/// Text of a driver: UTF-8 as it is, everything else as Windows-1252.
[[nodiscard]] std::string utf8FromDriver(std::string_view text);

}  // namespace ado
