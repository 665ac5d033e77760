// Changes from the show of one deck to that of another.

#include "app/show/Stage.h"

#include <algorithm>
#include <utility>

#include "addin/support/modErrors.h"
#include "app/wiring/Failure.h"
#include "app/wiring/NoQuestions.h"

namespace app {

namespace {

/// Where a show of `now` goes on that began in `before`.
deck::ShowPlace samePlace(deck::ShowPlace place, const deck::Presentation& before,
                          const deck::Presentation& now) {
  const std::int32_t count = before.slideCount();
  for (std::int32_t step = 0; step < count; ++step) {
    const std::uint32_t id = before.slideId((place.slide - 1 + step) % count + 1);
    for (std::int32_t slide = 1; slide <= now.slideCount(); ++slide) {
      if (now.slideId(slide) != id) continue;
      place.slide = slide;
      if (step == 0) return place;
      return {.slide = slide, .isAtEnd = place.isAtEnd, .blank = place.blank};
    }
  }
  return {.isAtEnd = place.isAtEnd, .blank = place.blank};
}

}  // namespace

Stage::Act::Act(AddInHost& host, platform::EventLoop& loop, std::shared_ptr<deck::Presentation> shown,
                const LiveShowOptions& options, ToldOnce& problems)
    : deck(std::move(shown)),
      sheets(deck, loop),
      live(
          host.application(), deck, loop, [&host] { return host.runtimeTimer(); }, options, problems) {}

Stage::Stage(AddInHost& host, platform::EventLoop& loop, std::shared_ptr<deck::Presentation> deck,
             const Options& options)
    : host_(host),
      loop_(loop),
      options_(options),
      act_(act(std::move(deck))),
      self_(std::make_shared<Stage*>(this)) {
  constexpr std::int32_t LongestLoad = 60'000;
  forgetting_ = loop_.CreateTimer([this] {
    forgetting_->Enabled(false);
    forget(std::move(before_));
  });
  forgetting_->Interval(LongestLoad);
}

Stage::~Stage() { *self_ = nullptr; }

std::unique_ptr<Stage::Act> Stage::act(std::shared_ptr<deck::Presentation> deck) {
  LiveShowOptions options = options_.live;
  if (options.whenEmpty && *options.whenEmpty > deck->slideCount()) options.whenEmpty.reset();
  return std::make_unique<Act>(host_, loop_, std::move(deck), options, problems_);
}

deck::SlideShowOptions Stage::showOptions() const {
  deck::SlideShowOptions show;
  show.kiosk = options_.kiosk;
  show.loop = options_.loop;
  show.seconds = options_.seconds;
  return show;
}

void Stage::begin(std::optional<std::int32_t> startSlide, std::function<void()> onEnd) {
  onEnd_ = std::move(onEnd);
  deck::SlideShowOptions show = showOptions();
  show.startSlide = startSlide;
  beginAct(*act_, show);
}

void Stage::beginAct(Act& act, const deck::SlideShowOptions& options) {
  act.live.begin(options, [this] { onEnd_(); });
  options_.live.began = act.live.began();
  // So that the first screen need not wait for it.
  static_cast<void>(act.live.state({}));
}

void Stage::change(DeckVersion version) {
  if (isShutDown_ || !(act_->live.isRunning() || isChanging_)) return;
  if (isChanging_) {
    newest_ = std::move(version);
    return;
  }
  isChanging_ = true;
  std::optional<basic::Error> failed;
  std::shared_ptr<deck::Presentation> deck;
  try {
    // Its connections are opened while the old show goes on.
    deck = host_.application().open(std::move(version.package), version.state);
    if (deck->slideCount() == 0) fail(deck->FullName() + " has no slide to show.");
    changeTo(act(deck));
  } catch (const basic::Error& error) {
    failed = error;
  } catch (const std::exception& error) {
    failed = basic::Error(basic::AdapterError, basic::DefaultSource, error.what());
  }
  if (deck && deck != act_->deck) host_.application().close(deck);
  isChanging_ = false;
  if (isShutDown_) act_->live.shutDown();
  for (const Command& waiting : std::exchange(waiting_, {})) waiting(act_->live.controls());
  // What failed is history when there is a newer one.
  if (auto newest = std::exchange(newest_, std::nullopt)) return change(std::move(*newest));
  if (failed) throw basic::Error(*failed);
}

void Stage::changeTo(std::unique_ptr<Act> next) {
  // It may have ended while sources were opened.
  if (isShutDown_ || !act_->live.isRunning()) return;
  // A screen that goes on is no place for the question that ends a show.
  const NoQuestions unasked;
  const bool errorsOccurred = LF2000::modErrors::ErrorsOccurred;
  const deck::ShowPlace place = act_->live.place();
  isBetween_ = true;
  act_->live.leave();
  deck::SlideShowOptions show = showOptions();
  try {
    show.place = samePlace(place, *act_->deck, *next->deck);
    beginAct(*next, show);
  } catch (...) {
    isBetween_ = false;
    if (next->live.isRunning()) next->live.leave();
    show.place = place;
    beginAct(*act_, show);
    throw;
  }
  isBetween_ = false;
  // Of all that was one show for who looks at it.
  LF2000::modErrors::ErrorsOccurred |= errorsOccurred;
  act_->live.connect(nullptr);
  forget(std::exchange(before_, std::exchange(act_, std::move(next))));
  host_.application().close(before_->deck);
  forgetting_->Enabled(false);
  forgetting_->Enabled(true);
  act_->live.connect(server_);
  if (server_ != nullptr) server_->deckChanged();
}

void Stage::forget(std::unique_ptr<Act> act) {
  if (!act) return;
  past_.push_back(std::move(act));
  loop_.postOutermost([self = self_] {
    if (*self) (*self)->past_.clear();
  });
}

void Stage::connect(web::Server* server) {
  server_ = server;
  act_->live.connect(server);
}

void Stage::shutDown() {
  isShutDown_ = true;
  if (!isBetween_) act_->live.shutDown();
}

std::optional<web::Asset> Stage::asset(std::string_view name) {
  auto found = act_->live.asset(name);
  if (!found && before_) found = before_->live.asset(name);
  return found;
}

web::Outcome Stage::command(Command command) {
  if (!isBetween_) return command(act_->live.controls());
  waiting_.push_back(std::move(command));
  return web::Outcome::done();
}

web::Outcome Stage::next() {
  return command([](ShowControls show) { return show.next(); });
}
web::Outcome Stage::previous() {
  return command([](ShowControls show) { return show.previous(); });
}
web::Outcome Stage::first() {
  return command([](ShowControls show) { return show.first(); });
}
web::Outcome Stage::last() {
  return command([](ShowControls show) { return show.last(); });
}
web::Outcome Stage::goTo(int slide) {
  return command([slide](ShowControls show) { return show.goTo(slide); });
}
web::Outcome Stage::blank(web::Blank blank) {
  return command([blank](ShowControls show) { return show.blank(blank); });
}
web::Outcome Stage::end() {
  return command([](ShowControls show) { return show.end(); });
}

}  // namespace app
