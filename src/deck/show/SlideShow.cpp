// The course of a show: which slide is next, when, and what clicks and operators do to it.

#include "deck/show/SlideShow.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "deck/Failure.h"

namespace deck {
namespace {

using PowerPoint::ApplicationEvents;

class View final : public PowerPoint::SlideShowView {
 public:
  explicit View(std::shared_ptr<SlideShow> show) : show_(std::move(show)) {}

  [[nodiscard]] std::int32_t CurrentShowPosition() const override { return show_->position(); }
  [[nodiscard]] PowerPoint::SlidesAhead SlidesAhead() const override { return show_->ahead(); }
  [[nodiscard]] std::shared_ptr<PowerPoint::Slide> Slide() override {
    if (show_->isAtEnd()) fail("No slide is on show: the show is at its end.");
    return show_->Presentation()->Slides()->Item(show_->position());
  }
  [[nodiscard]] PowerPoint::SlideShowPointerType PointerType() const override { return show_->pointer(); }
  void PointerType(PowerPoint::SlideShowPointerType type) override { show_->pointer(type); }

 private:
  std::shared_ptr<SlideShow> show_;
};

/// 0 where nobody tells the time.
std::int64_t tickCount() {
  const host::Clock* clock = host::Current().clock;
  return clock != nullptr ? clock->TickCount() : 0;
}

}  // namespace

std::shared_ptr<SlideShow> SlideShow::begin(Application& application,
                                            std::shared_ptr<deck::Presentation> presentation,
                                            host::Loop& loop, const SlideShowOptions& options,
                                            SlideShowListener* listener) {
  std::shared_ptr<SlideShow> show(
      new SlideShow(application, std::move(presentation), loop, options, listener));
  show->start(options);
  return show;
}

SlideShow::SlideShow(Application& application, std::shared_ptr<deck::Presentation> presentation,
                     host::Loop& loop, const SlideShowOptions& options, SlideShowListener* listener)
    : application_(application),
      presentation_(std::move(presentation)),
      listener_(listener),
      course_(presentation_, options) {
  timing_ = loop.CreateTimer([this] {
    timing_->Enabled(false);
    next();
  });
  moveOn_ = loop.CreateTimer([this] {
    moveOn_->Enabled(false);
    leaveHiddenSlide();
  });
  moveOn_->Interval(1);
}

SlideShow::~SlideShow() { presentation_->removeListener(*this); }

std::shared_ptr<PowerPoint::SlideShowView> SlideShow::View() {
  return std::make_shared<deck::View>(shared_from_this());
}

void SlideShow::start(const SlideShowOptions& options) {
  std::optional<std::int32_t> startSlide = options.place ? options.place->slide : options.startSlide;
  if (startSlide) {
    static_cast<void>(presentation_->slidePart(*startSlide));  // an error when out of range
    const auto place = placeOf(*startSlide);
    place_ = place.value_or(0);
    wasChosen_ = options.place ? options.place->isChosen : presentation_->isHidden(*startSlide);
    // Only who asks for it sees what the show leaves out.
    if (options.place && !wasChosen_ && !place) startSlide.reset();
  } else if (!isVisible(0)) {
    place_ = visibleAfter(0).value_or(0);
  }
  position_ = startSlide.value_or(order()[place_]);
  application_.raise<PowerPoint::SlideShowWindow>(&ApplicationEvents::SlideShowBegin, shared_from_this());
  if (!isRunning_) return;
  presentation_->addListener(*this);
  // What listens to the beginning may have hidden slides that have no data.
  if (!wasChosen_ && !isVisible(place_)) {
    place_ = visibleAfter(place_).value_or(place_);
    position_ = order()[place_];
  }
  changeTo(position_);
  if (options.place) resume(*options.place);
}

void SlideShow::resume(const ShowPlace& place) {
  if (!isRunning_) return;
  if (place.isAtEnd) {
    showEnd();
  } else if (position_ == place.slide) {
    builtSteps_ = std::min(place.builtSteps, builds_.steps());
    startTiming(place.elapsedMilliseconds);
  }
  blank(place.blank);
}

ShowPlace SlideShow::place() const {
  ShowPlace place;
  place.slide = isAtEnd() ? order()[place_] : position_;
  place.isChosen = wasChosen_;
  place.isAtEnd = isAtEnd();
  place.builtSteps = builtSteps_;
  place.elapsedMilliseconds = tickCount() - timingBegan_;
  place.blank = blank_;
  return place;
}

bool SlideShow::isVisible(std::size_t place) const { return !presentation_->isHidden(order()[place]); }

std::optional<std::size_t> SlideShow::visibleAfter(std::size_t place) const {
  const std::size_t count = order().size();
  const std::size_t last = loops() ? place + count : count;
  for (std::size_t candidate = place + 1; candidate < last; ++candidate) {
    if (isVisible(candidate % count)) return candidate % count;
  }
  return std::nullopt;
}

std::optional<std::size_t> SlideShow::visibleBefore(std::size_t place) const {
  while (place-- > 0) {
    if (isVisible(place)) return place;
  }
  return std::nullopt;
}

std::optional<std::size_t> SlideShow::placeOf(std::int32_t slideIndex) const {
  const auto found = std::find(order().begin(), order().end(), slideIndex);
  if (found == order().end()) return std::nullopt;
  return static_cast<std::size_t>(found - order().begin());
}

bool SlideShow::isEmpty() const {
  if (!isRunning_ || isAtEnd() || wasChosen_) return false;
  return !isVisible(place_) && !visibleAfter(place_) && !visibleBefore(place_);
}

PowerPoint::SlidesAhead SlideShow::ahead() const {
  PowerPoint::SlidesAhead ahead;
  if (!isRunning_ || isAtEnd()) return ahead;
  const std::size_t count = order().size();
  const std::optional<std::size_t> next = visibleAfter(place_);
  if (next) ahead.Next = order()[*next];
  std::size_t end = loops() ? place_ + count : count;
  if (next) end = *next > place_ ? *next : *next + count;
  for (std::size_t place = place_ + 1; place < end; ++place)
    ahead.PassedOver.push_back(order()[place % count]);
  if (next || loops()) return ahead;
  for (std::size_t place = place_; place > 0; --place) {
    if (!isVisible(place - 1)) ahead.PassedOver.push_back(order()[place - 1]);
  }
  return ahead;
}

void SlideShow::next() {
  if (!isRunning_) return;
  if (isAtEnd()) return end();
  if (builtSteps_ < builds_.steps()) return build(builtSteps_ + 1);
  const auto place = visibleAfter(place_);
  if ((!place || *place <= place_) && isFollowed()) return;
  if (place) return show(*place);
  const bool anyVisible = isVisible(place_) || visibleBefore(place_);
  if (!loops() && anyVisible) return showEnd();
  startTiming();
}

void SlideShow::previous() {
  if (!isRunning_) return;
  if (!isAtEnd() && builtSteps_ > 0) return build(builtSteps_ - 1);
  const auto place = isAtEnd() && isVisible(place_) ? std::optional(place_) : visibleBefore(place_);
  if (place) show(*place, Built::Everything);
}

void SlideShow::first() {
  if (!isRunning_) return;
  for (std::size_t place = 0; place < order().size(); ++place) {
    if (isVisible(place)) return show(place);
  }
}

void SlideShow::last() {
  if (!isRunning_) return;
  if (const auto place = visibleBefore(order().size())) show(*place);
}

void SlideShow::goTo(std::int32_t slideIndex) {
  if (!isRunning_) return;
  static_cast<void>(presentation_->slidePart(slideIndex));  // an error when out of range
  place_ = placeOf(slideIndex).value_or(place_);
  wasChosen_ = true;
  changeTo(slideIndex);
}

void SlideShow::moveTo(std::size_t place) {
  if (!isRunning_ || place >= order().size()) return;
  if (!isVisible(place)) {
    auto other = visibleAfter(place);
    if (!other) other = visibleBefore(place);
    if (!other) return;
    place = *other;
  }
  if (wasChosen_ || position_ != order()[place]) return show(place);
  place_ = place;
}

void SlideShow::show(std::size_t place, Built built) {
  place_ = place;
  wasChosen_ = false;
  changeTo(order()[place], built);
}

void SlideShow::build(std::size_t steps) {
  builtSteps_ = steps;
  if (listener_ != nullptr) listener_->buildChanged();
}

bool SlideShow::isClicked() const { return !isKiosk() && !course_.isPaced() && !course_.stay(position_); }

void SlideShow::changeTo(std::int32_t position, Built built) {
  position_ = position;
  builds_ = isClicked() ? Builds(presentation_->slidePart(position)) : Builds();
  builtSteps_ = built == Built::Everything ? builds_.steps() : 0;
  blank(Blank::None);
  startTiming();
  application_.raise<PowerPoint::SlideShowWindow>(&ApplicationEvents::SlideShowNextSlide, shared_from_this());
  if (listener_ != nullptr && isRunning_) listener_->slideChanged();
}

void SlideShow::showEnd() {
  position_ = presentation_->slideCount() + 1;
  builds_ = {};
  builtSteps_ = 0;
  blank(Blank::None);
  timing_->Enabled(false);
  if (listener_ != nullptr) listener_->slideChanged();
}

void SlideShow::blank(Blank kind) {
  if (!isRunning_ || kind == blank_) return;
  blank_ = kind;
  startTiming();
  if (listener_ != nullptr) listener_->blankChanged();
}

void SlideShow::end() {
  if (!std::exchange(isRunning_, false)) return;
  const auto self = shared_from_this();  // a handler may let go of the show
  timing_->Enabled(false);
  moveOn_->Enabled(false);
  presentation_->removeListener(*this);
  application_.raise<PowerPoint::Presentation>(&ApplicationEvents::SlideShowEnd, presentation_);
  if (listener_ != nullptr) listener_->ended();
}

void SlideShow::slideHiddenChanged(std::int32_t) {
  // Not at once: whoever hides the slide is in the midst of its own work. Where every slide
  // was hidden, one that comes back is gone to as well.
  if (!wasChosen_ && !isAtEnd() && presentation_->isHidden(position_)) moveOn_->Enabled(true);
}

void SlideShow::leaveHiddenSlide() {
  if (!isRunning_ || wasChosen_ || isAtEnd() || !presentation_->isHidden(position_)) return;
  auto place = visibleAfter(place_);
  // Rather back than out: the show goes on with what there is to see.
  if (!place) place = visibleBefore(place_);
  if (place) return show(*place);
  static_cast<void>(isFollowed());
}

void SlideShow::startTiming(std::int64_t elapsedMilliseconds) {
  timing_->Enabled(false);
  timingBegan_ = tickCount() - elapsedMilliseconds;
  if (isAtEnd() || blank_ != Blank::None || course_.isPaced()) return;
  const std::optional<double> stay = course_.stay(position_);
  if (!stay) return;
  constexpr double Longest = std::numeric_limits<std::int32_t>::max();
  const double remaining = std::round(*stay) - static_cast<double>(elapsedMilliseconds);
  const double milliseconds = std::clamp(remaining, 1.0, Longest);
  timing_->Interval(static_cast<std::int32_t>(milliseconds));
  timing_->Enabled(true);
}

}  // namespace deck
