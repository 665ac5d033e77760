#include "windows/forms/DialogKeys.h"

#include <vector>

namespace windows::forms {

namespace {

/// Of this thread, the one for which the hook was set.
std::vector<HWND> dialogs;
HHOOK hook = nullptr;

LRESULT CALLBACK hear(int code, WPARAM removed, LPARAM parameter) {
  auto& message = *reinterpret_cast<MSG*>(parameter);
  if (code == HC_ACTION && removed == PM_REMOVE && message.message >= WM_KEYFIRST &&
      message.message <= WM_KEYLAST) {
    for (const HWND each : std::vector<HWND>(dialogs)) {
      const bool isWithin = message.hwnd == each || ::IsChild(each, message.hwnd);
      if (!isWithin || !::IsDialogMessageW(each, &message)) continue;
      // It has been done; nobody else shall take it for a key of theirs.
      message = {nullptr, WM_NULL, 0, 0, message.time, message.pt};
      break;
    }
  }
  return ::CallNextHookEx(hook, code, removed, parameter);
}

}  // namespace

DialogKeys::DialogKeys(HWND dialog) : dialog_(dialog) {
  dialogs.push_back(dialog);
  if (hook == nullptr) hook = ::SetWindowsHookExW(WH_GETMESSAGE, &hear, nullptr, ::GetCurrentThreadId());
}

DialogKeys::~DialogKeys() {
  std::erase(dialogs, dialog_);
  if (!dialogs.empty()) return;
  ::UnhookWindowsHookEx(hook);
  hook = nullptr;
}

}  // namespace windows::forms
