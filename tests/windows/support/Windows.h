#pragma once

#include <cstring>
#include <string>

#include "windows/com/Text.h"
#include "windows/com/WindowsApi.h"

namespace windows::test {

/// A function of a module, null where it exports none of that name.
template <typename Call>
Call exported(HMODULE module, const char* name) {
  const FARPROC found = ::GetProcAddress(module, name);
  Call call = nullptr;
  std::memcpy(&call, &found, sizeof call);
  return call;
}

/// Whether the user's registry has a key.
inline bool hasKey(const wchar_t* path) {
  HKEY key = nullptr;
  if (::RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  ::RegCloseKey(key);
  return true;
}

struct TitleSearch {
  std::wstring title;
  HWND found;
};

inline BOOL CALLBACK lookForTitle(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<TitleSearch*>(parameter);
  wchar_t text[256] = {};
  ::GetWindowTextW(window, text, 256);
  if (!::IsWindowVisible(window) || search.title != text) return TRUE;
  search.found = window;
  return FALSE;
}

/// The visible dialog of this thread with that title; null without one.
inline HWND dialogCalled(const std::string& title) {
  TitleSearch search{com::wide(title), nullptr};
  ::EnumThreadWindows(::GetCurrentThreadId(), &lookForTitle, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

/// As a user presses a button of it, by its number.
inline void press(HWND dialog, int button) {
  ::PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

}  // namespace windows::test
