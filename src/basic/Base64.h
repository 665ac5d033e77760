#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace basic {

/// RFC 4648 clause 4, with padding.
std::string toBase64(std::string_view bytes);
/// Nothing when the text is not of that form.
std::optional<std::string> fromBase64(std::string_view text);

}  // namespace basic
