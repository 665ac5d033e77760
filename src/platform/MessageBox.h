#pragma once

#include "host/services.h"

namespace platform {

/// Messages as lines on standard error. A question (Yes and No) is asked where
/// somebody can answer it, on a terminal, while the loop goes on; elsewhere it
/// takes its first button. A message with OK and Cancel is no question: nothing
/// waits for its answer, and a screen must not stay dark over it.
class MessageBox final : public host::MessageBox {
 public:
  /// The descriptors stand for standard input and error.
  explicit MessageBox(host::Loop& loop, int input = 0, int output = 2)
      : loop_(loop), input_(input), output_(output) {}

  host::MsgBoxResult MsgBox(std::string_view text, std::int32_t style, std::string_view title) override;

 private:
  /// A line typed on the terminal, in capital letters; false at its end.
  bool readLine(std::string& line);

  host::Loop& loop_;
  int input_;
  int output_;
};

}  // namespace platform
