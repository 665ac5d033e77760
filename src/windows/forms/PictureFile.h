#pragma once

#include <string_view>

#include "windows/com/WindowsApi.h"

namespace windows::forms {

/// A picture of any kind that the system reads, no larger than that many pixels; whoever asks owns it. Null
/// where it is none, or cannot be read.
[[nodiscard]] HBITMAP pictureFile(std::string_view path, int width, int height);

}  // namespace windows::forms
