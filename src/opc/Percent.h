#pragma once

#include <string>
#include <string_view>

namespace opc {

/// Decodes %XX (RFC 3986); a percent sign without two hexadecimal digits stays.
std::string percentDecoded(std::string_view text);

}  // namespace opc
