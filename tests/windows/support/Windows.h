#pragma once

#include <functional>
#include <string>

#include "windows/com/Text.h"
#include "windows/com/WindowsApi.h"

namespace windows::test {

/// The visible dialog of this thread with that title; null without one.
inline HWND dialogCalled(const std::string& title) {
  struct Search {
    std::wstring title;
    HWND found;
  } search{com::wide(title), nullptr};
  ::EnumThreadWindows(
      ::GetCurrentThreadId(),
      [](HWND window, LPARAM parameter) -> BOOL {
        auto& wanted = *reinterpret_cast<Search*>(parameter);
        wchar_t text[256] = {};
        ::GetWindowTextW(window, text, 256);
        if (!::IsWindowVisible(window) || wanted.title != text) return TRUE;
        wanted.found = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

/// As a user presses a button of it, by its number.
inline void press(HWND dialog, int button) {
  ::PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

}  // namespace windows::test
