#pragma once

#include <string>
#include <string_view>

namespace basic {

/// Decodes %XX (RFC 3986); a percent sign without two hexadecimal digits stays.
std::string PercentDecoded(std::string_view text);

}  // namespace basic
