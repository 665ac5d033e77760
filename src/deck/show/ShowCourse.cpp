#include "deck/show/ShowCourse.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "deck/Failure.h"
#include "deck/objects/Slide.h"
#include "deck/objects/SlideShowSettings.h"

namespace deck {

namespace {

constexpr double MillisecondsPerSecond = 1000;

std::vector<std::int32_t> chosenRange(const SlideShowOptions& options, std::int32_t count) {
  const std::int32_t first = options.firstSlide.value_or(1);
  const std::int32_t last = options.lastSlide.value_or(count);
  if (first < 1 || last > count || first > last) {
    fail("There are no slides " + std::to_string(first) + " to " + std::to_string(last) +
         " to show: the presentation has " + std::to_string(count) + ".");
  }
  std::vector<std::int32_t> slides;
  for (std::int32_t slide = first; slide <= last; ++slide) slides.push_back(slide);
  return slides;
}

}  // namespace

ShowCourse::ShowCourse(std::shared_ptr<Presentation> presentation, const SlideShowOptions& options)
    : presentation_(std::move(presentation)), isPaced_(options.isPaced), seconds_(options.seconds) {
  if (presentation_->slideCount() == 0) {
    fail(basic::InQuotes(presentation_->FullName()) + " has no slide to show.");
  }
  const deck::SlideShowSettings settings(*presentation_);
  const bool hasRange = options.firstSlide || options.lastSlide;
  slides_ = hasRange ? chosenRange(options, presentation_->slideCount()) : settings.slides();
  isKiosk_ = options.kiosk.value_or(settings.ShowType() == PowerPoint::SlideShowType::Kiosk);
  loops_ = isKiosk_ || options.loop.value_or(settings.loops());
  usesTimings_ = options.useTimings.value_or(settings.usesTimings());
}

std::optional<double> ShowCourse::stay(std::int32_t slide) const {
  const SlideShowTransition transition(presentation_, slide);
  if (usesTimings_ && transition.AdvanceOnTime()) return transition.AdvanceTime() * MillisecondsPerSecond;
  if (seconds_) return *seconds_ * MillisecondsPerSecond;
  return std::nullopt;
}

std::vector<std::int32_t> ShowCourse::visible() const {
  std::vector<std::int32_t> visible;
  std::copy_if(slides_.begin(), slides_.end(), std::back_inserter(visible),
               [this](std::int32_t slide) { return !presentation_->isHidden(slide); });
  return visible;
}

}  // namespace deck
