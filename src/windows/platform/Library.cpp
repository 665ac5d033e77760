#include "windows/platform/Library.h"

namespace windows::platform {

HINSTANCE thisModule() {
  HMODULE found = nullptr;
  constexpr DWORD Flags =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  ::GetModuleHandleExW(Flags, reinterpret_cast<LPCWSTR>(&thisModule), &found);
  return found;
}

}  // namespace windows::platform
