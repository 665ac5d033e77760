#pragma once

#include <cstring>

#include "windows/com/WindowsApi.h"

namespace windows::platform {

/// What a library of the system exports under that name; null where it does not, and without the library.
template <typename Call>
[[nodiscard]] Call procedure(HMODULE library, const char* name) {
  if (library == nullptr) return nullptr;
  const FARPROC found = ::GetProcAddress(library, name);
  Call call = nullptr;
  static_assert(sizeof call == sizeof found);
  std::memcpy(&call, &found, sizeof call);
  return call;
}

/// The file that holds this code.
[[nodiscard]] HINSTANCE thisModule();

}  // namespace windows::platform
