#include "windows/forms/Modality.h"

namespace windows::forms {

Modality::Modality(HWND dialog) {
  struct Search {
    HWND dialog;
    std::vector<HWND>* found;
  } search{dialog, &disabled_};
  const auto look = [](HWND window, LPARAM parameter) -> BOOL {
    const auto& wanted = *reinterpret_cast<Search*>(parameter);
    if (window != wanted.dialog && ::IsWindowVisible(window) && ::IsWindowEnabled(window)) {
      wanted.found->push_back(window);
    }
    return TRUE;
  };
  ::EnumThreadWindows(::GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&search));
  for (const HWND each : disabled_) ::EnableWindow(each, FALSE);
}

Modality::~Modality() {
  for (const HWND each : disabled_) {
    if (::IsWindow(each)) ::EnableWindow(each, TRUE);
  }
}

}  // namespace windows::forms
