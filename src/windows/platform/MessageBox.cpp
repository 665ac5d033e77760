#include "windows/platform/MessageBox.h"

#include "windows/com/Text.h"
#include "windows/platform/OwnerWindow.h"

namespace windows::platform {

host::MsgBoxResult MessageBox::MsgBox(std::string_view text, std::int32_t style, std::string_view title) {
  // Styles and answers have the system's own numbers. Without a window to belong to it must not stay behind.
  const HWND owner = ownerWindow();
  const UINT flags = static_cast<UINT>(style) | (owner == nullptr ? MB_SETFOREGROUND | MB_TASKMODAL : 0U);
  const int answer = ::MessageBoxW(owner, com::wide(text).c_str(), com::wide(title).c_str(), flags);
  // 0: it could not be shown.
  return answer == 0 ? host::MsgBoxResult::Cancel : static_cast<host::MsgBoxResult>(answer);
}

}  // namespace windows::platform
