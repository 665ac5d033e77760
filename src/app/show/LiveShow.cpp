#include "app/show/LiveShow.h"

#include <algorithm>
#include <functional>
#include <nlohmann/json.hpp>

#include "app/wiring/PictureConversion.h"
#include "basic/Date.h"
#include "basic/Error.h"
#include "host/services.h"
#include "render/html/PageContract.h"

namespace app {

namespace {

using Json = nlohmann::ordered_json;

std::string dump(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

deck::Blank toDeck(web::Blank blank) {
  switch (blank) {
    case web::Blank::Black:
      return deck::Blank::Black;
    case web::Blank::White:
      return deck::Blank::White;
    case web::Blank::None:
      break;
  }
  return deck::Blank::None;
}

}  // namespace

LiveShow::LiveShow(deck::Application& application, std::shared_ptr<deck::Presentation> presentation,
                   platform::EventLoop& loop, std::function<LF2000::FrmRuntimeTimer*()> form,
                   const LiveShowOptions& options, ToldOnce& problems)
    : presentation_(std::move(presentation)),
      application_(application),
      loop_(loop),
      converter_(pictureConversion()),
      conversionTimer_(loop.CreateTimer([this] { watchConversions(); })),
      renderer_(
          presentation_->package(),
          {.assetPrefix = "assets/",
           .isLive = [this](int slide, std::uint32_t shape) { return linkedShape(slide, shape) != nullptr; },
           .converter = &converter_,
           .now = [] { return host::Current().clock->Now(); }}),
      form_(std::move(form)),
      freshness_(form_),
      options_(options),
      began_(options.began),
      version_(std::to_string(presentation_->package().fingerprint())),
      problems_(problems) {
  constexpr std::int32_t ConversionInterval = 50;  // ms
  conversionTimer_->Interval(ConversionInterval);
  conversionTimer_->Enabled(false);
  linked_.resize(static_cast<std::size_t>(presentation_->slideCount()) + 1);
  for (std::int32_t slide = 1; slide <= presentation_->slideCount(); ++slide) {
    linked_[static_cast<std::size_t>(slide)] = linkedShapes(*presentation_, slide);
  }
  constexpr std::int32_t TimeBetweenLooks = 500;
  timedAt_ = host::Current().clock->Now();
  lookout_ = loop_.CreateTimer([this] {
    lookForStaleData();
    lookForNewTime();
  });
  lookout_->Interval(TimeBetweenLooks);
}

LiveShow::~LiveShow() {
  *self_ = nullptr;
  presentation_->removeListener(*this);
}

void LiveShow::begin(const deck::SlideShowOptions& options, std::function<void()> onEnd) {
  onEnd_ = std::move(onEnd);
  standing_.reset();
  presentation_->addListener(*this);
  show_ = deck::SlideShow::begin(application_, presentation_, loop_, options, this);
  if (!began_) began_ = std::chrono::system_clock::now();
  builtBefore_ = show_->builtSteps();
  for (const deck::Damage& damage : presentation_->damages()) problems_.tell(damage.text);
  watch(watched_);
  lookForStaleData();
  lookout_->Enabled(true);
  slideStateChanged();
}

void LiveShow::progress(std::optional<web::Progress> progress) {
  progress_ = std::move(progress);
  wholeStateChanged();
}

void LiveShow::shutDown() {
  stand();
  if (isRunning()) show_->end();
}

void LiveShow::leave() {
  stand();
  onEnd_ = nullptr;
  presentation_->removeListener(*this);
  show_->end();
}

void LiveShow::stand() {
  if (isRunning()) standing_ = Standing{currentSlide(), nextSlide(), show_->isEmpty()};
}

const LinkedShape* LiveShow::linkedShape(int slide, std::uint32_t id) const {
  const auto& shapes = linked_[static_cast<std::size_t>(slide)];
  const auto found =
      std::find_if(shapes.begin(), shapes.end(), [&](const LinkedShape& shape) { return shape.id == id; });
  return found == shapes.end() ? nullptr : &*found;
}

std::optional<std::string> LiveShow::textOf(int slide, const std::string& shapeName) {
  const LF2000::FrmRuntimeTimer* form = form_();
  if (form != nullptr && !form->HasValue(slide, shapeName)) return std::nullopt;
  const auto shape = presentation_->Slides()->Item(slide)->Shapes()->Item(std::string_view(shapeName));
  if (!shape->HasTextFrame()) return std::nullopt;
  return shape->TextFrame()->TextRange()->Text();
}

std::string LiveShow::stateJson() {
  Json slides = Json::array();
  for (std::int32_t index = 1; index <= presentation_->slideCount(); ++index) {
    Json shapes = Json::array();
    for (const LinkedShape& shape : linked_[static_cast<std::size_t>(index)]) {
      const auto text = textOf(index, shape.name);
      shapes.push_back({{"name", shape.name},
                        {"sourceType", shape.sourceType},
                        {"connection", shape.connection},
                        {"column", shape.column},
                        {"row", shape.row},
                        {"text", text ? Json(*text) : Json()}});
    }
    slides.push_back({{"index", index}, {"hidden", presentation_->isHidden(index)}, {"shapes", shapes}});
  }
  return dump({{"deck", presentation_->FullName()},
               {"running", isOn()},
               {"position", show_ ? show_->position() : 0},
               {"slideCount", presentation_->slideCount()},
               {"slides", slides}});
}

/// Pictures that were converted join those on the screens.
void LiveShow::watchConversions() {
  if (converter_.poll()) {
    renderer_.forget();
    pages_.clear();
    wholeStateChanged();
  }
  conversionTimer_->Enabled(converter_.isBusy());
}

/// Looking at the clock holds whatever is done to it: set, put back by an hour, or stopped while the machine
/// slept.
void LiveShow::lookForNewTime() {
  const basic::Date now = host::Current().clock->Now();
  const auto then = basic::Split(timedAt_);
  const auto parts = basic::Split(now);
  const bool isNewDay = parts.dayOfYear != then.dayOfYear || parts.year != then.year;
  if (!isNewDay && parts.minute == then.minute && parts.hour == then.hour) return;
  timedAt_ = now;
  for (const auto& [slide, shown] : timed_) {
    if (!isNewDay && shown == render::TimeShown::Date) continue;
    pages_.erase(slide);
    if (isHeld(slide)) wholeStateChanged();
  }
}

web::Outcome LiveShow::command(const std::function<void()>& action) {
  if (!isRunning()) return web::Outcome::refused("The show has ended.");
  try {
    action();
  } catch (const basic::Error& error) {
    return web::Outcome::refused(error.description);
  }
  return web::Outcome::done();
}

web::Outcome LiveShow::next() {
  return command([this] { show_->next(); });
}
web::Outcome LiveShow::previous() {
  return command([this] { show_->previous(); });
}
web::Outcome LiveShow::first() {
  return command([this] { show_->first(); });
}
web::Outcome LiveShow::last() {
  return command([this] { show_->last(); });
}
web::Outcome LiveShow::goTo(int slide) {
  return command([this, slide] { show_->goTo(slide); });
}
web::Outcome LiveShow::blank(web::Blank blank) {
  return command([this, blank] { show_->blank(toDeck(blank)); });
}
web::Outcome LiveShow::end() {
  return command([this] { show_->end(); });
}

void LiveShow::shapeChanged(std::int32_t slideIndex, std::uint32_t shapeId) {
  pages_.erase(slideIndex);
  changedShapes_.emplace(slideIndex, shapeId);
  requestFlush();
}

void LiveShow::slideHiddenChanged(std::int32_t) { slideStateChanged(); }

void LiveShow::linksUpdated() {
  pages_.clear();
  wholeStateChanged();
}

void LiveShow::slideChanged() {
  if (show_) builtBefore_ = show_->builtSteps();
  slideStateChanged();
}
void LiveShow::blankChanged() { wholeStateChanged(); }
void LiveShow::buildChanged() { slideStateChanged(); }

void LiveShow::ended() {
  lookout_->Enabled(false);
  if (!standing_) wholeStateChanged();
  // Of this show: another one may have begun until then.
  if (onEnd_) loop_.post(std::exchange(onEnd_, nullptr));
}

void LiveShow::lookForStaleData() {
  if (freshness_.look() && options_.staleData != StaleData::Keep) wholeStateChanged();
}

void LiveShow::slideStateChanged() {
  slideStateChanged_ = true;
  requestFlush();
}

void LiveShow::wholeStateChanged() {
  wholeStateChanged_ = true;
  requestFlush();
}

void LiveShow::requestFlush() {
  if (flushRequested_) return;
  flushRequested_ = true;
  changedAt_ = std::chrono::steady_clock::now();
  loop_.post([self = self_] {
    if (*self) (*self)->flush();
  });
}

void LiveShow::flush() {
  flushRequested_ = false;
  const auto changed = changedAt_;
  if (!server_ || standing_) {
    changedShapes_.clear();
    return;
  }
  sendShapes(changed);
  const bool slide = std::exchange(slideStateChanged_, false);
  if (std::exchange(wholeStateChanged_, false)) {
    server_->stateChanged(changed);
  } else if (slide) {
    server_->slideChanged(changed);
  }
  builtBefore_ = show_ ? show_->builtSteps() : 0;
}

void LiveShow::sendShapes(web::Server::Time changed) {
  if (changedShapes_.empty()) return;
  const LF2000::FrmRuntimeTimer* form = form_();
  std::vector<web::ShapeChange> changes;
  for (const auto& [slide, id] : std::exchange(changedShapes_, {})) {
    web::ShapeChange change;
    change.slide = slide;
    change.elementId = render::page::shapeElement(slide, id);
    change.isMirrored = isMirrored(slide);
    if (isHeld(slide)) change.html = drawShape(slide, id);
    if (const LinkedShape* shape = linkedShape(slide, id)) {
      change.glides = form != nullptr && form->Scrolls(slide, shape->name);
      change.name = shape->name;
      change.text = textOf(slide, shape->name);
    }
    changes.push_back(std::move(change));
  }
  server_->shapesChanged(changes, changed);
}

}  // namespace app
