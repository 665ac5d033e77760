#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The shell's browse dialogs.
namespace LF2000::modBrowsers {

/// The chosen computer's display name, or the empty string.
[[nodiscard]] std::string BrowseForComputer(std::int64_t ownerWindow, std::string_view title);

/// The chosen folder's path, or the empty string.
[[nodiscard]] std::string BrowseForFolder(std::int64_t ownerWindow, std::string_view title);

}  // namespace LF2000::modBrowsers
