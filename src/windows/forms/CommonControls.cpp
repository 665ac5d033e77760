#include "windows/forms/CommonControls.h"

#include "windows/platform/Library.h"
// It needs the headers above.
#include <commctrl.h>

namespace windows::forms {

namespace {

HANDLE context() {
  // For a DLL's own use (ISOLATIONAWARE_MANIFEST_RESOURCE_ID).
  constexpr WORD ManifestResource = 2;
  ACTCTXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  wanted.hModule = platform::thisModule();
  wanted.lpResourceName = MAKEINTRESOURCEW(ManifestResource);
  return ::CreateActCtxW(&wanted);
}

}  // namespace

CommonControls::CommonControls() {
  static const HANDLE shared = context();
  if (shared == INVALID_HANDLE_VALUE || !::ActivateActCtx(shared, &cookie_)) cookie_ = 0;
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_UPDOWN_CLASS |
                                                         ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES |
                                                         ICC_TAB_CLASSES};
  ::InitCommonControlsEx(&classes);
}

CommonControls::~CommonControls() {
  if (cookie_ != 0) ::DeactivateActCtx(0, cookie_);
}

}  // namespace windows::forms
