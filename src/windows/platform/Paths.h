#pragma once

#include <string>
#include <string_view>

#include "windows/com/WindowsApi.h"

namespace windows::platform {

/// The whole path as the system's calls take it, of any length ("\\?\C:\data\x.txt"). "/" separates folders
/// as well. An empty path is an error.
[[nodiscard]] std::wstring systemPath(std::string_view path);
/// As people write it, without that prefix.
[[nodiscard]] std::string readablePath(std::wstring_view path);

/// Raises what an error of the system (GetLastError) means for that path: "'x.txt' cannot be opened: ...".
/// Its number is the language's own where it has one (53 file not found, 70 permission denied, 76 path not
/// found).
[[noreturn]] void failOnFile(std::string_view path, const std::string& doing, DWORD error);
/// The same for a reason of its own.
[[noreturn]] void failOnFile(std::string_view path, const std::string& reason);

}  // namespace windows::platform
