#pragma once

#include <string_view>

namespace web {

/// The value of a cookie in a Cookie header (RFC 6265, 4.2); empty when there is none of that name.
std::string_view cookieNamed(std::string_view header, std::string_view name);

}  // namespace web
