#pragma once

#include <string>

#include "host/services.h"

namespace platform {

/// One line on the terminal that is written over; nothing where standard error
/// is no terminal.
class ProgressMeter final : public host::ProgressMeter {
 public:
  /// The descriptor stands for standard error.
  explicit ProgressMeter(int output = 2) : output_(output) {}

  void Show(std::string_view caption, std::int32_t maximum) override;
  void Text(std::string_view text) override;
  void Step() override;
  void Close() override;

 private:
  void draw() const;

  int output_;
  bool shown_ = false;
  std::string caption_;
  std::string text_;
  std::int32_t maximum_ = 0;
  std::int32_t step_ = 0;
};

}  // namespace platform
