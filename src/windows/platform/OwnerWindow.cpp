#include "windows/platform/OwnerWindow.h"

namespace windows::platform {

namespace {

struct Largest {
  HWND window = nullptr;
  LONG area = 0;
};

BOOL CALLBACK look(HWND window, LPARAM parameter) {
  auto& largest = *reinterpret_cast<Largest*>(parameter);
  RECT place{};
  if (!::IsWindowVisible(window) || ::GetWindow(window, GW_OWNER) != nullptr ||
      !::GetWindowRect(window, &place)) {
    return TRUE;
  }
  const LONG area = (place.right - place.left) * (place.bottom - place.top);
  if (area > largest.area) largest = {window, area};
  return TRUE;
}

}  // namespace

HWND ownerWindow() {
  const HWND active = ::GetActiveWindow();
  if (active != nullptr && ::IsWindowVisible(active)) return active;
  Largest largest;
  ::EnumThreadWindows(::GetCurrentThreadId(), &look, reinterpret_cast<LPARAM>(&largest));
  return largest.window == nullptr ? nullptr : ::GetLastActivePopup(largest.window);
}

}  // namespace windows::platform
