#pragma once

#include "host/services.h"

namespace windows::platform {

/// The system's message box, owned by the window in which the user works.
class MessageBox final : public host::MessageBox {
 public:
  host::MsgBoxResult MsgBox(std::string_view text, std::int32_t style, std::string_view title) override;
};

}  // namespace windows::platform
