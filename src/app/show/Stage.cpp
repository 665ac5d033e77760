// Changes from the show of one deck to that of another.

#include "app/show/Stage.h"

#include <algorithm>
#include <utility>

#include "addin/support/modErrors.h"
#include "app/show/PlainGround.h"
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
             Options options, Programme* programme)
    : host_(host),
      loop_(loop),
      options_(std::move(options)),
      programme_(programme),
      act_(deck ? act(std::move(deck)) : nullptr),
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

void Stage::use(Options options) {
  options.live.began = options_.live.began;
  options_ = std::move(options);
}

std::optional<deck::ShowPlace> Stage::place() const {
  if (isBetween_ || isGround() || !act_->live.isRunning()) return std::nullopt;
  return act_->live.place();
}

bool Stage::isEmpty() const { return place() && act_->live.isEmpty(); }

void Stage::begin(std::optional<std::int32_t> startSlide, std::function<void()> onEnd) {
  onEnd_ = std::move(onEnd);
  if (isGround()) return;
  deck::SlideShowOptions show = showOptions();
  show.startSlide = startSlide;
  beginAct(*act_, show);
}

void Stage::beginAct(Act& act, const deck::SlideShowOptions& options) {
  act.begun = options;
  act.live.begin(
      options, [this] { onEnd_(); }, [this] { return programme_ != nullptr && programme_->wentThrough(); });
  options_.live.began = act.live.began();
  // So that the first screen need not wait for it.
  static_cast<void>(act.live.state({}));
}

void Stage::carryOut(const std::function<void()>& change) {
  isChanging_ = true;
  std::optional<basic::Error> failed;
  try {
    change();
  } catch (const basic::Error& error) {
    failed = error;
  } catch (const std::exception& error) {
    failed = basic::Error(basic::AdapterError, basic::DefaultSource, error.what());
  }
  isChanging_ = false;
  if (isShutDown_) shutDown();
  for (const Command& waiting : std::exchange(waiting_, {})) static_cast<void>(command(waiting));
  // What failed is history when there is a newer one.
  if (auto newest = std::exchange(newest_, std::nullopt)) return this->change(std::move(*newest));
  if (failed) throw basic::Error(*failed);
}

void Stage::change(DeckVersion version) {
  if (isShutDown_ || isGround() || !(act_->live.isRunning() || isChanging_)) return;
  if (isChanging_) {
    newest_ = std::move(version);
    return;
  }
  carryOut([&] {
    // Its connections are opened while the old show goes on.
    const auto deck = host_.application().open(std::move(version.package), version.state);
    deck::SlideShowOptions show = showOptions();
    show.place = deck::ShowPlace();
    if (act_->live.isRunning()) show.place = samePlace(act_->live.place(), *act_->deck, *deck);
    changeTo(deck, show, false);
  });
}

void Stage::follow(const std::shared_ptr<deck::Presentation>& deck, deck::SlideShowOptions show,
                   bool goesOn) {
  carryOut([&] {
    const auto before = place();
    if (goesOn && before) show.place = samePlace(*before, *act_->deck, *deck);
    changeTo(deck, show, true);
  });
}

void Stage::changeTo(const std::shared_ptr<deck::Presentation>& deck, deck::SlideShowOptions show,
                     bool showsSomething) {
  try {
    if (deck->slideCount() == 0) fail(deck->FullName() + " has no slide to show.");
    auto next = act(deck);
    // It may have ended while sources were opened.
    if (isShutDown_ || !isOn()) return host_.application().close(deck);
    // A screen that goes on is no place for the question that ends a show.
    const NoQuestions unasked;
    const bool errorsOccurred = LF2000::modErrors::ErrorsOccurred;
    const std::optional<deck::ShowPlace> before = place();
    isBetween_ = true;
    if (act_) act_->live.leave();
    try {
      if (show.place && before) show.place->blank = before->blank;
      beginAct(*next, show);
      if (showsSomething && next->live.isEmpty()) fail("All slides of " + deck->FullName() + " are hidden.");
    } catch (...) {
      isBetween_ = false;
      if (next->live.isRunning()) next->live.leave();
      if (act_) {
        show = act_->begun;
        show.place = before;
        beginAct(*act_, show);
      }
      throw;
    }
    isBetween_ = false;
    // Of all that was one show for who looks at it.
    LF2000::modErrors::ErrorsOccurred |= errorsOccurred;
    swap(std::move(next));
  } catch (...) {
    host_.application().close(deck);
    throw;
  }
}

void Stage::clear() {
  if (isGround() || isShutDown_ || !act_->live.isRunning()) return;
  carryOut([&] {
    const NoQuestions unasked;
    isBetween_ = true;
    act_->live.leave();
    isBetween_ = false;
    swap(nullptr);
  });
}

void Stage::swap(std::unique_ptr<Act> next) {
  if (act_) act_->live.connect(nullptr);
  forget(std::exchange(before_, std::exchange(act_, std::move(next))));
  if (before_) host_.application().close(before_->deck);
  forgetting_->Enabled(false);
  forgetting_->Enabled(true);
  if (act_) act_->live.connect(server_);
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
  if (act_) act_->live.connect(server);
}

void Stage::progress(std::optional<web::Progress> progress) {
  if (act_) act_->live.progress(std::move(progress));
}

void Stage::moveTo(std::size_t place) {
  if (this->place()) act_->live.moveTo(place);
}

void Stage::endGround() {
  if (!std::exchange(isOver_, true)) loop_.post([this] { onEnd_(); });
}

void Stage::shutDown() {
  isShutDown_ = true;
  if (isBetween_) return;
  if (act_) return act_->live.shutDown();
  endGround();
}

std::string Stage::stateJson() { return act_ ? act_->live.stateJson() : plainGround::stateJson(); }

web::View Stage::view(std::optional<int> slide, std::string_view shape) {
  return act_ ? act_->live.view(slide, shape) : plainGround::view(slide, shape);
}

web::ScreenState Stage::state(const web::View& view) {
  return act_ ? act_->live.state(view) : plainGround::state(view);
}

void Stage::watch(const std::set<int>& slides) {
  if (act_) act_->live.watch(slides);
}

web::Health Stage::health() {
  web::Health health;
  health.isReady = true;
  if (act_) health = act_->live.health();
  if (programme_ != nullptr) health.decks = programme_->decks();
  return health;
}

std::optional<web::Asset> Stage::asset(std::string_view name) {
  std::optional<web::Asset> found;
  if (act_) found = act_->live.asset(name);
  if (!found && before_) found = before_->live.asset(name);
  return found;
}

web::Outcome Stage::command(Command command) {
  if (isBetween_) {
    waiting_.push_back(std::move(command));
    return web::Outcome::done();
  }
  if (!act_) return web::Outcome::refused("No deck is on show.");
  return command(act_->live.controls());
}

web::Outcome Stage::steer(Command command) {
  const auto objection = programme_ != nullptr ? programme_->objection() : std::nullopt;
  return objection ? web::Outcome::refused(*objection) : this->command(std::move(command));
}

web::Outcome Stage::next() {
  return steer([](ShowControls show) { return show.next(); });
}
web::Outcome Stage::previous() {
  return steer([](ShowControls show) { return show.previous(); });
}
web::Outcome Stage::first() {
  return steer([](ShowControls show) { return show.first(); });
}
web::Outcome Stage::last() {
  return steer([](ShowControls show) { return show.last(); });
}
web::Outcome Stage::goTo(int slide) {
  return steer([slide](ShowControls show) { return show.goTo(slide); });
}
web::Outcome Stage::blank(web::Blank blank) {
  return command([blank](ShowControls show) { return show.blank(blank); });
}
web::Outcome Stage::end() {
  if (isGround()) {
    endGround();
    return web::Outcome::done();
  }
  return command([](ShowControls show) { return show.end(); });
}

}  // namespace app
