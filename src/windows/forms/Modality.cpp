#include "windows/forms/Modality.h"

namespace windows::forms {

namespace {

struct Search {
  HWND dialog;
  std::vector<HWND>* found;
};

BOOL CALLBACK look(HWND window, LPARAM parameter) {
  const auto& search = *reinterpret_cast<Search*>(parameter);
  if (window != search.dialog && ::IsWindowVisible(window) && ::IsWindowEnabled(window)) {
    search.found->push_back(window);
  }
  return TRUE;
}

}  // namespace

Modality::Modality(HWND dialog) {
  Search search{dialog, &disabled_};
  ::EnumThreadWindows(::GetCurrentThreadId(), &look, reinterpret_cast<LPARAM>(&search));
  for (const HWND each : disabled_) ::EnableWindow(each, FALSE);
}

Modality::~Modality() {
  for (const HWND each : disabled_) {
    if (::IsWindow(each)) ::EnableWindow(each, TRUE);
  }
}

}  // namespace windows::forms
