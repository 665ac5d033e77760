#pragma once

#include "host/services.h"

namespace windows::platform {

/// The user's settings store of Visual Basic: the registry's key "Software\VB and VBA Program Settings",
/// below it the application and the section, read anew by each call.
class Settings final : public host::Settings {
 public:
  [[nodiscard]] std::string GetSetting(std::string_view application, std::string_view section,
                                       std::string_view key) const override;
  [[nodiscard]] std::string Location() const override;
};

}  // namespace windows::platform
