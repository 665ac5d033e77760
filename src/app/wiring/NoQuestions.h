#pragma once

#include "host/services.h"

namespace app {

/// While it lives, nobody is asked: the answer to a question is No. What is only told is told as before.
/// Objects of this kind may lie within each other; the services that it found are in force again at its end.
class NoQuestions {
 public:
  NoQuestions();
  ~NoQuestions();
  NoQuestions(const NoQuestions&) = delete;
  NoQuestions& operator=(const NoQuestions&) = delete;

 private:
  class Box final : public host::MessageBox {
   public:
    explicit Box(host::MessageBox& usual) : usual_(usual) {}
    host::MsgBoxResult MsgBox(std::string_view text, std::int32_t style, std::string_view title) override;

   private:
    host::MessageBox& usual_;
  };

  host::Services usual_;
  Box box_;
};

}  // namespace app
