#pragma once

#include "windows/com/WindowsApi.h"

namespace windows::platform {

/// The window that what comes up now belongs to: the one in which this thread's user works, else the host's
/// main window, which is the thread's largest. Null without any.
[[nodiscard]] HWND ownerWindow();

}  // namespace windows::platform
