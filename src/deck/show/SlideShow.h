#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "deck/objects/Application.h"
#include "deck/objects/Presentation.h"
#include "deck/show/Builds.h"
#include "deck/show/ShowCourse.h"
#include "deck/show/SlideShowOptions.h"
#include "host/services.h"

namespace deck {

/// Told what a running show does. Handlers do not throw and do not destroy the show.
class SlideShowListener {
 public:
  virtual ~SlideShowListener() = default;
  /// Another slide, or the black end slide, is on show.
  virtual void slideChanged() = 0;
  virtual void blankChanged() = 0;
  /// The slide on show has been built up further, or back.
  virtual void buildChanged() = 0;
  virtual void ended() = 0;
  /// The show has gone through its slides. True: something else follows, and the slide on show stands until
  /// then. False: the show begins anew or comes to its end, as it is set up to.
  virtual bool wentThrough() { return false; }
};

/// A running slide show: what it shows and in which order, its timings and its
/// events. Hidden slides are skipped, whether they were hidden before or while
/// the show runs; a slide that becomes hidden while it is on show makes way for
/// the next one, unless it was asked for by number. When every slide is hidden
/// the show stays where it is. Everything is in memory: the deck's file may go
/// away meanwhile.
class SlideShow final : public PowerPoint::SlideShowWindow,
                        public std::enable_shared_from_this<SlideShow>,
                        private ChangeListener {
 public:
  /// Begins a show: raises SlideShowBegin, then SlideShowNextSlide for the first
  /// slide. A presentation without slides is an error. The application and the
  /// loop outlive the show.
  static std::shared_ptr<SlideShow> begin(Application& application,
                                          std::shared_ptr<deck::Presentation> presentation, host::Loop& loop,
                                          const SlideShowOptions& options = {},
                                          SlideShowListener* listener = nullptr);
  /// Ends a show that still runs, without events.
  ~SlideShow() override;

  [[nodiscard]] std::shared_ptr<PowerPoint::Presentation> Presentation() override { return presentation_; }
  [[nodiscard]] std::shared_ptr<PowerPoint::SlideShowView> View() override;

  /// The index of the slide on show; count + 1 on the black end slide.
  [[nodiscard]] std::int32_t position() const { return position_; }
  [[nodiscard]] bool isAtEnd() const { return position_ > presentation_->slideCount(); }
  [[nodiscard]] bool isRunning() const { return isRunning_; }
  /// Whether there is nothing to show: every slide is hidden and none was asked for by
  /// number. The show goes on, and shows the first slide that comes back.
  [[nodiscard]] bool isEmpty() const;
  [[nodiscard]] bool isKiosk() const { return course_.isKiosk(); }
  [[nodiscard]] bool loops() const { return course_.loops(); }
  [[nodiscard]] Blank blank() const { return blank_; }
  [[nodiscard]] ShowPlace place() const;
  [[nodiscard]] PowerPoint::SlideShowPointerType pointer() const { return pointer_; }
  void pointer(PowerPoint::SlideShowPointerType type) { pointer_ = type; }
  /// What clicks build up on the slide on show, and how many have. Nobody clicks in a
  /// kiosk, nor on a slide that goes on by itself: there slides are complete.
  [[nodiscard]] const Builds& builds() const { return builds_; }
  [[nodiscard]] std::size_t builtSteps() const { return builtSteps_; }
  /// The slide that next() would show once the present one is built up; nothing when that is the end slide or
  /// there is nowhere to go.
  [[nodiscard]] std::optional<std::int32_t> following() const { return ahead().Next; }
  /// The way there.
  [[nodiscard]] PowerPoint::SlidesAhead ahead() const;

  // Once the show has ended these do nothing.

  /// The slide's next step, or the next visible slide. Behind the last one a looping show begins anew, any
  /// other shows the black end slide, and behind that it ends.
  void next();
  /// One step back, or the visible slide before, complete; on the first one nothing happens.
  void previous();
  void first();
  void last();
  /// A slide by its index in the presentation, hidden or not. Out of range is an
  /// error.
  void goTo(std::int32_t slideIndex);
  /// The slide at that place of the course, from 0, or while it is hidden the one that stands in for it: the
  /// next visible one, else the one before. Nothing happens when it is on show already, or none is visible.
  void moveTo(std::size_t place);
  /// A blank screen holds the slide's timing; it starts anew afterwards.
  void blank(Blank kind);
  void end();

 private:
  SlideShow(Application& application, std::shared_ptr<deck::Presentation> presentation, host::Loop& loop,
            const SlideShowOptions& options, SlideShowListener* listener);

  void shapeChanged(std::int32_t, std::uint32_t) override {}
  void slideHiddenChanged(std::int32_t slideIndex) override;
  void linksUpdated() override {}

  [[nodiscard]] bool isVisible(std::size_t place) const;
  [[nodiscard]] std::optional<std::size_t> visibleAfter(std::size_t place) const;
  [[nodiscard]] std::optional<std::size_t> visibleBefore(std::size_t place) const;
  [[nodiscard]] std::optional<std::size_t> placeOf(std::int32_t slideIndex) const;
  void start(const SlideShowOptions& options);
  void resume(const ShowPlace& place);
  enum class Built { Nothing, Everything };
  void show(std::size_t place, Built built = Built::Nothing);
  void changeTo(std::int32_t position, Built built = Built::Nothing);
  void build(std::size_t steps);
  [[nodiscard]] bool isClicked() const;
  [[nodiscard]] const std::vector<std::int32_t>& order() const { return course_.slides(); }
  void showEnd();
  void leaveHiddenSlide();
  [[nodiscard]] bool isFollowed() { return listener_ != nullptr && listener_->wentThrough(); }
  void startTiming(std::int64_t elapsedMilliseconds = 0);

  Application& application_;
  std::shared_ptr<deck::Presentation> presentation_;
  SlideShowListener* listener_;
  ShowCourse course_;
  std::size_t place_ = 0;  // in the course, of the slide on show or the one shown before it
  std::int32_t position_ = 1;
  Builds builds_;
  std::size_t builtSteps_ = 0;
  bool wasChosen_ = false;  // by number, hidden or not
  bool isRunning_ = true;
  Blank blank_ = Blank::None;
  PowerPoint::SlideShowPointerType pointer_ = PowerPoint::SlideShowPointerType::AutoArrow;
  std::unique_ptr<host::Timer> timing_;  // the slide's own
  std::int64_t timingBegan_ = 0;         // by Clock::TickCount
  std::unique_ptr<host::Timer> moveOn_;  // away from a slide that was hidden
};

}  // namespace deck
