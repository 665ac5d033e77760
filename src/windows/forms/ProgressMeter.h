#pragma once

#include <memory>

#include "host/services.h"

namespace windows::forms {

class Dialog;
class ProgressForm;

/// The progress window: it comes up beside the host's windows, which take input as before, and is drawn at
/// once with each step, whether messages are handled or not. It closes by Close alone.
class ProgressMeter final : public host::ProgressMeter {
 public:
  ProgressMeter();
  ~ProgressMeter() override;
  ProgressMeter(const ProgressMeter&) = delete;
  ProgressMeter& operator=(const ProgressMeter&) = delete;

  void Show(std::string_view caption, std::int32_t maximum) override;
  void Text(std::string_view text) override;
  void Step() override;
  void Close() override;

 private:
  void draw();

  std::shared_ptr<ProgressForm> form_;
  std::shared_ptr<Dialog> dialog_;
  std::int32_t step_ = 0;
  std::int32_t maximum_ = 0;
};

}  // namespace windows::forms
