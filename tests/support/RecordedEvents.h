#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/powerpoint.h"

namespace support {

/// Writes the application's events down, and lets a test act inside of one.
class RecordedEvents final : public PowerPoint::ApplicationEvents {
 public:
  using Presentation = std::shared_ptr<PowerPoint::Presentation>;
  using Window = std::shared_ptr<PowerPoint::SlideShowWindow>;

  void NewPresentation(const Presentation&) override { log.emplace_back("new"); }
  void PresentationOpen(const Presentation&) override { log.emplace_back("open"); }
  void PresentationClose(const Presentation&) override { log.emplace_back("close"); }
  void PresentationSave(const Presentation& presentation) override {
    log.emplace_back("save");
    if (onSave) onSave(*presentation);
  }
  void SlideShowBegin(const Window& window) override {
    log.push_back("begin " + std::to_string(window->View()->CurrentShowPosition()));
    if (onBegin) onBegin(window);
  }
  void SlideShowNextSlide(const Window& window) override {
    log.push_back("slide " + std::to_string(window->View()->CurrentShowPosition()));
    if (onSlide) onSlide(window);
  }
  void SlideShowEnd(const Presentation&) override {
    log.emplace_back("end");
    if (onEnd) onEnd();
  }

  void WindowSelectionChange(const std::shared_ptr<PowerPoint::Selection>&) override {
    log.emplace_back("selection");
  }
  void WindowActivate(const Presentation&, const std::shared_ptr<PowerPoint::DocumentWindow>&) override {
    log.emplace_back("activate");
  }
  void PresentationPrint(const Presentation&) override { log.emplace_back("print"); }

  /// What was written since the last call.
  std::vector<std::string> take() { return std::exchange(log, {}); }

  std::vector<std::string> log;
  std::function<void(PowerPoint::Presentation&)> onSave;
  std::function<void(const Window&)> onBegin;
  std::function<void(const Window&)> onSlide;
  std::function<void()> onEnd;
};

}  // namespace support
