#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pictures {

/// Metafiles and drawings are also kept compressed (.emz, .wmz, .svgz: RFC 1952).
inline bool isPacked(std::string_view bytes) { return bytes.starts_with("\x1F\x8B"); }

/// Nothing when that is broken or larger than 64 MB, as no picture is.
std::optional<std::string> unpacked(std::string_view bytes);

}  // namespace pictures
