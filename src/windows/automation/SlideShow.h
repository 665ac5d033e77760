#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "host/powerpoint.h"
#include "windows/automation/Presentation.h"
#include "windows/com/Object.h"

namespace windows::automation {

class SlideShowSettings final : public PowerPoint::SlideShowSettings {
 public:
  explicit SlideShowSettings(com::Object settings) : settings_(std::move(settings)) {}
  [[nodiscard]] PowerPoint::SlideShowType ShowType() const override;
  [[nodiscard]] PowerPoint::SlideShowRangeType RangeType() const override;
  void RangeType(PowerPoint::SlideShowRangeType type) override;
  [[nodiscard]] std::int32_t StartingSlide() const override { return settings_.number(L"StartingSlide"); }
  void StartingSlide(std::int32_t index) override { settings_.put(L"StartingSlide", index); }
  [[nodiscard]] std::int32_t EndingSlide() const override { return settings_.number(L"EndingSlide"); }
  void EndingSlide(std::int32_t index) override { settings_.put(L"EndingSlide", index); }
  [[nodiscard]] std::shared_ptr<PowerPoint::NamedSlideShows> NamedSlideShows() override;

 private:
  com::Object settings_;
};

class SlideShowWindow final : public PowerPoint::SlideShowWindow {
 public:
  SlideShowWindow(com::Object window, std::shared_ptr<KnownPresentations> known)
      : window_(std::move(window)), known_(std::move(known)) {}
  [[nodiscard]] std::shared_ptr<PowerPoint::Presentation> Presentation() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::SlideShowView> View() override;

 private:
  [[nodiscard]] std::shared_ptr<automation::Presentation> shown() const;

  com::Object window_;
  std::shared_ptr<KnownPresentations> known_;
};

/// Where a show goes from one place of its order.
struct Course {
  /// Its slides, by index.
  std::vector<std::int32_t> order;
  bool loops = false;
};
/// `place` is that of the slide on show in the order; `isHidden` asks of slides by index.
[[nodiscard]] PowerPoint::SlidesAhead slidesAhead(const Course& course, std::size_t place,
                                                  const std::function<bool(std::int32_t)>& isHidden);

}  // namespace windows::automation
