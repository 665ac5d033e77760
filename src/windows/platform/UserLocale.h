#pragma once

#include <string>
#include <string_view>

#include "basic/Locale.h"

namespace windows::platform {

/// The user's regional settings as the control panel has them.
[[nodiscard]] basic::Locale readUserLocale();

/// A picture of the system ("dd.MM.yyyy", "h:mm:ss tt") in the language of basic::Format.
[[nodiscard]] std::string formatPicture(std::string_view picture);

}  // namespace windows::platform
