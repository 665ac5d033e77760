#include "app/wiring/NoQuestions.h"

namespace app {

NoQuestions::NoQuestions() : usual_(host::Current()), box_(*usual_.messageBox) {
  host::Services quiet = usual_;
  quiet.messageBox = &box_;
  host::Use(quiet);
}

NoQuestions::~NoQuestions() { host::Use(usual_); }

host::MsgBoxResult NoQuestions::Box::MsgBox(std::string_view text, std::int32_t style,
                                            std::string_view title) {
  if ((style & host::vbYesNo) == host::vbYesNo) return host::MsgBoxResult::No;
  return usual_.MsgBox(text, style, title);
}

}  // namespace app
