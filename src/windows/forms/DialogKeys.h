#pragma once

#include "windows/com/WindowsApi.h"

namespace windows::forms {

/// While one lives, the dialog hears keys as dialogs do (Tab, Enter, Esc, access keys), whoever fetches the
/// thread's messages: the host's loop knows nothing of it.
class DialogKeys {
 public:
  explicit DialogKeys(HWND dialog);
  ~DialogKeys();
  DialogKeys(const DialogKeys&) = delete;
  DialogKeys& operator=(const DialogKeys&) = delete;

 private:
  HWND dialog_;
};

}  // namespace windows::forms
