#pragma once

#include <memory>

#include "deck/objects/Presentation.h"

namespace deck {

/// The slides in the order of p:sldIdLst, numbered from 1.
class Slides final : public PowerPoint::Slides {
 public:
  explicit Slides(std::shared_ptr<Presentation> presentation) : presentation_(std::move(presentation)) {}
  [[nodiscard]] std::int32_t Count() const override { return presentation_->slideCount(); }
  [[nodiscard]] std::shared_ptr<PowerPoint::Slide> Item(std::int32_t index) override;

 private:
  std::shared_ptr<Presentation> presentation_;
};

/// One slide, known by its place: when slides are moved, the object means another.
class Slide final : public PowerPoint::Slide {
 public:
  /// The index must be one of the presentation's.
  Slide(std::shared_ptr<Presentation> presentation, std::int32_t index)
      : presentation_(std::move(presentation)), index_(index) {}

  [[nodiscard]] std::int32_t SlideIndex() const override { return index_; }
  [[nodiscard]] std::int32_t SlideID() const override {
    return static_cast<std::int32_t>(presentation_->slideId(index_));
  }
  [[nodiscard]] std::shared_ptr<PowerPoint::Shapes> Shapes() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Tags> Tags() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::SlideShowTransition> SlideShowTransition() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::TimeLine> TimeLine() override;
  std::shared_ptr<PowerPoint::Slide> Duplicate() override;
  void Delete() override { presentation_->removeSlide(index_); }
  void MoveTo(std::int32_t toPos) override { presentation_->moveSlide(index_, toPos); }

  /// The slide's part: its XML and the way to layout, master, theme and media.
  [[nodiscard]] opc::Part& part() const { return presentation_->slidePart(index_); }

 private:
  std::shared_ptr<Presentation> presentation_;
  std::int32_t index_;
};

/// p:transition of a slide, and whether the show leaves it out (p:sld's show). Times are seconds; the file
/// has a time where the show moves on by it alone (advTm).
class SlideShowTransition final : public PowerPoint::SlideShowTransition {
 public:
  SlideShowTransition(std::shared_ptr<Presentation> presentation, std::int32_t slideIndex)
      : presentation_(std::move(presentation)), slideIndex_(slideIndex) {}

  [[nodiscard]] bool Hidden() const override { return presentation_->isHidden(slideIndex_); }
  void Hidden(bool hidden) override;
  [[nodiscard]] bool AdvanceOnTime() const override;
  void AdvanceOnTime(bool advances) override;
  [[nodiscard]] double AdvanceTime() const override;
  void AdvanceTime(double seconds) override;
  void EntryEffect(PowerPoint::EntryEffect effect) override;

 private:
  [[nodiscard]] pugi::xml_node slide() const {
    return presentation_->slidePart(slideIndex_).xml().document_element();
  }
  void noteChange() const { presentation_->noteChange(presentation_->slidePart(slideIndex_)); }

  std::shared_ptr<Presentation> presentation_;
  std::int32_t slideIndex_;
};

/// p:timing of a slide.
class TimeLine final : public PowerPoint::TimeLine {
 public:
  TimeLine(std::shared_ptr<Presentation> presentation, std::int32_t slideIndex)
      : presentation_(std::move(presentation)), slideIndex_(slideIndex) {}
  void Delete() override;

 private:
  std::shared_ptr<Presentation> presentation_;
  std::int32_t slideIndex_;
};

}  // namespace deck
