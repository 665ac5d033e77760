#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace web {

/// A field of an address's query ("?slide=3&shape=A%20B"), decoded
/// (application/x-www-form-urlencoded); nothing when it is not there.
std::optional<std::string> queryField(std::string_view target, std::string_view name);

}  // namespace web
