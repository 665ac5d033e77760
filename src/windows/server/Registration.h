#pragma once

#include <string>

#include "windows/com/WindowsApi.h"

namespace windows::server {

/// Enters the add-in for this user: its class with the module's file, and PowerPoint's list of add-ins, by
/// which it is loaded when PowerPoint starts. What was entered is taken back when an entry fails. Needs no
/// administrator. A module of 32 bits enters its class where programs of 32 bits look.
[[nodiscard]] HRESULT enter(const std::wstring& moduleFile);

/// Removes all of that, and what is empty then of the keys above. What is not there is no failure.
[[nodiscard]] HRESULT remove();

}  // namespace windows::server
