#pragma once

#include <memory>

#include "host/powerpoint.h"
#include "windows/automation/OpenPresentation.h"
#include "windows/com/Object.h"

namespace windows::automation {

class Slide final : public PowerPoint::Slide {
 public:
  Slide(com::Object slide, std::shared_ptr<AuthorsOwn> own)
      : slide_(std::move(slide)), own_(std::move(own)) {}

  [[nodiscard]] std::int32_t SlideIndex() const override { return slide_.number(L"SlideIndex"); }
  [[nodiscard]] std::int32_t SlideID() const override { return slide_.number(L"SlideID"); }
  [[nodiscard]] std::shared_ptr<PowerPoint::Shapes> Shapes() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Tags> Tags() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::SlideShowTransition> SlideShowTransition() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::TimeLine> TimeLine() override;
  std::shared_ptr<PowerPoint::Slide> Duplicate() override;
  void Delete() override { slide_.call(L"Delete"); }
  void MoveTo(std::int32_t toPos) override { slide_.call(L"MoveTo", toPos); }

 private:
  com::Object slide_;
  std::shared_ptr<AuthorsOwn> own_;
};

class Slides final : public PowerPoint::Slides {
 public:
  Slides(com::Object slides, std::shared_ptr<AuthorsOwn> own)
      : slides_(std::move(slides)), own_(std::move(own)) {}
  [[nodiscard]] std::int32_t Count() const override { return slides_.number(L"Count"); }
  [[nodiscard]] std::shared_ptr<PowerPoint::Slide> Item(std::int32_t index) override;

 private:
  com::Object slides_;
  std::shared_ptr<AuthorsOwn> own_;
};

}  // namespace windows::automation
