// The running show of one deck: its beginning and end, where it stands, and what is told of it.

#include "app/show/LiveShow.h"

#include <filesystem>

#include "deck/show/TransitionEffect.h"
#include "json/Json.h"
#include "render/html/PageContract.h"

namespace app {

using render::page::shapeElement;

namespace {

using json::Json;

web::Transition toWeb(const deck::TransitionEffect& effect) {
  using Kind = deck::TransitionEffect::Kind;
  const auto name = [&] {
    switch (effect.kind) {
      case Kind::None:
        break;
      case Kind::Cut:
        return "cut";
      case Kind::Fade:
        return "fade";
      case Kind::Push:
        return "push";
      case Kind::Wipe:
        return "wipe";
      case Kind::Split:
        return "split";
      case Kind::Cover:
        return "cover";
      case Kind::Uncover:
        return "uncover";
    }
    return "none";
  };
  return {name(), effect.direction, effect.throughBlack, std::chrono::milliseconds(effect.milliseconds)};
}

}  // namespace

LiveShow::LiveShow(deck::Application& application, std::shared_ptr<deck::Presentation> presentation,
                   platform::EventLoop& loop, std::function<LF2000::FrmRuntimeTimer*()> form,
                   const LiveShowOptions& options, ToldOnce& problems)
    : presentation_(std::move(presentation)),
      application_(application),
      loop_(loop),
      form_(std::move(form)),
      options_(options),
      problems_(problems),
      version_(std::to_string(presentation_->package().fingerprint())),
      changes_(loop, [this](const ChangeFlush::Changes& changes) { flush(changes); }),
      pages_(*presentation_, loop, problems, [this] { changes_.everything(); }),
      stale_(options.staleData, form_),
      lookout_(loop.CreateTimer([this] { lookAround(); })) {
  constexpr std::int32_t TimeBetweenLooks = 500;  // ms
  lookout_->Interval(TimeBetweenLooks);
}

LiveShow::~LiveShow() { presentation_->removeListener(*this); }

void LiveShow::begin(const deck::SlideShowOptions& options, std::function<void()> onEnd,
                     std::function<bool()> wentThrough) {
  onEnd_ = std::move(onEnd);
  wentThrough_ = std::move(wentThrough);
  standing_.reset();
  presentation_->addListener(*this);
  show_ = deck::SlideShow::begin(application_, presentation_, loop_, options, this);
  if (!options_.began) options_.began = std::chrono::system_clock::now();
  builtBefore_ = show_->builtSteps();
  setMoment();
  for (const deck::Damage& damage : presentation_->damages()) problems_.tell(damage.text);
  watch(watched_);
  lookAround();
  lookout_->Enabled(true);
  changes_.everything();
}

void LiveShow::progress(std::optional<web::Progress> progress) {
  progress_ = std::move(progress);
  changes_.everything();
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

void LiveShow::setMoment() {
  if (options_.moment) shownAt_ = options_.moment();
}

void LiveShow::stand() {
  if (isRunning()) standing_ = Standing{currentSlide(), nextSlide(), show_->isEmpty()};
}

std::optional<int> LiveShow::currentSlide() const {
  if (standing_) return standing_->current;
  if (!isRunning() || show_->isAtEnd()) return std::nullopt;
  if (show_->isEmpty()) return options_.whenEmpty;
  return show_->position();
}

std::optional<int> LiveShow::nextSlide() const {
  if (standing_) return standing_->next;
  if (!isRunning()) return std::nullopt;
  const auto next = show_->following();
  if (!next || next == currentSlide()) return std::nullopt;
  return *next;
}

std::optional<std::string> LiveShow::textOf(int slide, const std::string& shapeName) const {
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
    for (const LinkedShape& shape : pages_.drawn().linkedShapes(index)) {
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
  const Json state = {{"deck", presentation_->FullName()},
                      {"running", isOn()},
                      {"position", show_ ? show_->position() : 0},
                      {"slideCount", presentation_->slideCount()},
                      {"slides", slides}};
  return json::textOf(state);
}

web::ScreenState LiveShow::state(const web::View& view) {
  const render::SlideSize size = pages_.size();
  web::ScreenState state;
  state.deck = version_;
  state.title = std::filesystem::path(presentation_->FullName()).stem().string();
  state.width = size.width;
  state.height = size.height;
  state.slideCount = presentation_->slideCount();
  state.stylesheet = SlidePages::styleSheetName();
  state.began = options_.began;
  state.progress = progress_;
  state.shownAt = shownAt_;
  if (show_) {
    state.blank = toWeb(show_->blank());
    state.kiosk = show_->isKiosk();
    state.ended = !isOn() || show_->isAtEnd();
  }
  switch (view.kind) {
    case web::View::Kind::Show:
      showCurrent(state);
      break;
    case web::View::Kind::Slide:
      if (view.slide > 0 && view.slide <= state.slideCount) state.current = pages_.page(view.slide);
      break;
    case web::View::Kind::Shape:
      // Laid over somebody else's picture, it must neither cover nor announce anything.
      state.blank = web::Blank::None;
      state.isTransparent = true;
      state.progress.reset();
      if (view.slide > 0 && !state.ended) pages_.showAlone(view, state);
      state.ended = false;
      break;
  }
  for (const auto& slide : {state.current, state.next}) {
    if (slide && slide->index > 0) {
      stale_.addTo(state, slide->index, pages_.drawn().linkedShapes(slide->index));
    }
  }
  return state;
}

void LiveShow::showCurrent(web::ScreenState& state) {
  pages_.keepOnly([this](int slide) { return isHeld(slide); });
  if (const auto current = currentSlide()) {
    state.current = pages_.page(*current);
    state.transition = toWeb(deck::transitionOf(presentation_->slidePart(*current)));
    addBuilds(state, *current);
  } else if (standing_ ? standing_->isEmpty : isRunning() && show_->isEmpty()) {
    state.current = pages_.backdrop();
  }
  if (const auto next = nextSlide()) state.next = pages_.page(*next);
}

void LiveShow::addBuilds(web::ScreenState& state, int slide) const {
  if (slide != show_->position()) return;
  const deck::Builds& builds = show_->builds();
  const std::size_t built = show_->builtSteps();
  for (const std::uint32_t id : builds.hiddenAfter(built)) state.hidden.push_back(shapeElement(slide, id));
  if (built != builtBefore_ + 1) return;
  for (const deck::BuildEffect& effect : builds.step(built - 1)) {
    state.builds.push_back({shapeElement(slide, effect.shapeId), effect.isEntrance, effect.kind,
                            effect.direction, std::chrono::milliseconds(effect.milliseconds)});
  }
}

void LiveShow::watch(const std::set<int>& slides) {
  watched_ = slides;
  std::set<std::int32_t> fresh(slides.begin(), slides.end());
  if (options_.whenEmpty) fresh.insert(*options_.whenEmpty);
  if (LF2000::FrmRuntimeTimer* form = form_()) form->WatchedSlides(std::move(fresh));
}

web::Health LiveShow::health() const {
  web::Health health;
  health.isReady = isOn() && pages_.hasDrawn();
  health.position = currentSlide().value_or(0);
  health.connections = stale_.freshness().connections();
  health.standing = stale_.freshness().standingSlides();
  return health;
}

void LiveShow::shapeChanged(std::int32_t slideIndex, std::uint32_t shapeId) {
  pages_.forget(slideIndex);
  changes_.shape(slideIndex, shapeId);
}

void LiveShow::cellChanged(std::int32_t slideIndex, std::uint32_t shapeId, std::int32_t row,
                           std::int32_t column) {
  pages_.forget(slideIndex);
  changes_.cell(slideIndex, shapeId, row, column);
}

void LiveShow::slideHiddenChanged(std::int32_t) { changes_.slideOnShow(); }

void LiveShow::linksUpdated() {
  pages_.forgetAll();
  changes_.everything();
}

void LiveShow::slideChanged() {
  if (show_) builtBefore_ = show_->builtSteps();
  setMoment();
  changes_.slideOnShow();
}

void LiveShow::blankChanged() {
  setMoment();
  changes_.everything();
}

void LiveShow::buildChanged() {
  setMoment();
  changes_.slideOnShow();
}

void LiveShow::ended() {
  lookout_->Enabled(false);
  setMoment();
  if (!standing_) changes_.everything();
  // Of this show: another one may have begun until then.
  if (onEnd_) loop_.post(std::exchange(onEnd_, nullptr));
}

void LiveShow::lookAround() {
  if (stale_.look()) changes_.everything();
  for (const int slide : pages_.forgetPastTimes()) {
    if (isHeld(slide)) changes_.everything();
  }
}

void LiveShow::flush(const ChangeFlush::Changes& changes) {
  // The last picture stands as it is.
  if (server_ == nullptr || standing_) return;
  sendShapes(changes);
  if (changes.everything) {
    server_->stateChanged(changes.began);
  } else if (changes.slideOnShow) {
    server_->slideChanged(changes.began);
  }
  builtBefore_ = show_ ? show_->builtSteps() : 0;
}

void LiveShow::sendShapes(const ChangeFlush::Changes& changes) {
  if (changes.shapes.empty()) return;
  const LF2000::FrmRuntimeTimer* form = form_();
  std::vector<web::ShapeChange> sent;
  for (const auto& [place, cells] : changes.shapes) {
    const auto [slide, id] = place;
    web::ShapeChange change;
    change.slide = slide;
    change.elementId = shapeElement(slide, id);
    change.isMirrored = isMirrored(slide);
    if (isHeld(slide) && cells) change.cells = pages_.cells(slide, id, *cells);
    if (isHeld(slide) && !cells) change.html = pages_.shape(slide, id);
    if (const LinkedShape* shape = pages_.drawn().linkedShape(slide, id)) {
      change.glides = form != nullptr && form->Scrolls(slide, shape->name);
      change.name = shape->name;
      change.text = textOf(slide, shape->name);
    }
    sent.push_back(std::move(change));
  }
  server_->shapesChanged(sent, changes.began);
}

}  // namespace app
