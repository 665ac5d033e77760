#include "app/wiring/NoQuestions.h"

namespace app {

NoQuestions::NoQuestions(std::function<void(const std::string&)> hear)
    : usual_(host::Current()), box_(*usual_.messageBox, std::move(hear)) {
  host::Services quiet = usual_;
  quiet.messageBox = &box_;
  host::Use(quiet);
}

NoQuestions::~NoQuestions() { host::Use(usual_); }

host::MsgBoxResult NoQuestions::Box::MsgBox(std::string_view text, std::int32_t style,
                                            std::string_view title) {
  if ((style & host::vbYesNo) == host::vbYesNo) return host::MsgBoxResult::No;
  if (!hear_) return usual_.MsgBox(text, style, title);
  hear_(std::string(text));
  return host::MsgBoxResult::OK;
}

}  // namespace app
