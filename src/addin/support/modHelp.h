#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace LF2000::modHelp {

/// Opens a compiled help file, at a context when one is given. Returns the help
/// window's handle, 0 when no window was opened.
std::int64_t ShowHelp(std::int64_t ownerWindow, std::string_view helpFile,
                      std::optional<std::int32_t> contextId = std::nullopt);

}  // namespace LF2000::modHelp
