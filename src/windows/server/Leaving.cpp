#include "windows/server/Leaving.h"

#include "basic/Error.h"

namespace windows::server {

void LeavingLoop::DoEvents() {
  const auto check = [this] {
    if (isLeaving_) {
      throw basic::Error(basic::AdapterError, basic::DefaultSource, "The add-in has been unloaded.");
    }
  };
  check();
  loop_.DoEvents();
  check();
}

host::MsgBoxResult LeavingMessageBox::MsgBox(std::string_view text, std::int32_t style,
                                             std::string_view title) {
  if (!loop_.isLeaving()) return box_.MsgBox(text, style, title);
  return (style & host::vbYesNo) != 0 ? host::MsgBoxResult::No : host::MsgBoxResult::OK;
}

}  // namespace windows::server
