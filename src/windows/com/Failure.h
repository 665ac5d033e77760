#pragma once

#include <string_view>

#include "windows/com/WindowsApi.h"

namespace windows::com {

/// Throws a failed call as basic::Error. `what` was called ("Shape.TextFrame"). Numbers as Visual Basic has
/// them: its own where the result stands for one of those (438 for a member that is not there), else the
/// result itself. The description is the system's text for it.
[[noreturn]] void raise(HRESULT result, std::string_view what);

/// The same, with what the object itself said of the failure. Frees the texts within.
[[noreturn]] void raise(HRESULT result, EXCEPINFO& said, std::string_view what);

/// Throws where the result is a failure.
inline void check(HRESULT result, std::string_view what) {
  if (FAILED(result)) raise(result, what);
}

}  // namespace windows::com
