#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "host/services.h"

namespace app {

/// While it lives, nobody is asked: the answer to a question is No. What is only told is told as before, or
/// to `hear`. Objects of this kind may lie within each other; the services that it found are in force again
/// at its end.
class NoQuestions {
 public:
  explicit NoQuestions(std::function<void(const std::string&)> hear = {});
  ~NoQuestions();
  NoQuestions(const NoQuestions&) = delete;
  NoQuestions& operator=(const NoQuestions&) = delete;

 private:
  class Box final : public host::MessageBox {
   public:
    Box(host::MessageBox& usual, std::function<void(const std::string&)> hear)
        : usual_(usual), hear_(std::move(hear)) {}
    host::MsgBoxResult MsgBox(std::string_view text, std::int32_t style, std::string_view title) override;

   private:
    host::MessageBox& usual_;
    std::function<void(const std::string&)> hear_;
  };

  host::Services usual_;
  Box box_;
};

}  // namespace app
