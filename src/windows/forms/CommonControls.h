#pragma once

#include "windows/com/WindowsApi.h"

namespace windows::forms {

/// While it lives, windows are made with version 6 of the common controls (themes), whatever the host's own
/// manifest says. The module's resource of that number is the manifest that asks for them; without it windows
/// look as the host's do.
class CommonControls {
 public:
  CommonControls();
  ~CommonControls();
  CommonControls(const CommonControls&) = delete;
  CommonControls& operator=(const CommonControls&) = delete;

 private:
  ULONG_PTR cookie_ = 0;
};

}  // namespace windows::forms
