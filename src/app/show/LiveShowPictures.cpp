// What a live show gives screens to draw.

#include <algorithm>
#include <filesystem>

#include "app/show/LiveShow.h"
#include "deck/show/TransitionEffect.h"
#include "model/clsShape.h"
#include "render/html/PageContract.h"

namespace app {

namespace {

/// The style sheet's name changes with its content, as browsers keep it for ever.
const std::string& styleSheetName() {
  static const std::string name =
      "slides-" + std::to_string(std::hash<std::string_view>{}(render::slideStyles())) + ".css";
  return name;
}

web::Blank toWeb(deck::Blank blank) {
  switch (blank) {
    case deck::Blank::Black:
      return web::Blank::Black;
    case deck::Blank::White:
      return web::Blank::White;
    case deck::Blank::None:
      break;
  }
  return web::Blank::None;
}

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

bool showsData(const LinkedShape& shape) {
  using LF2000::SourceType;
  const auto type = static_cast<SourceType>(shape.sourceType);
  return type == SourceType::DataField || type == SourceType::LinkedObject || type == SourceType::Graph;
}

}  // namespace

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

web::View LiveShow::view(std::optional<int> slide, std::string_view shape) {
  web::View view;
  view.kind = shape.empty() ? web::View::Kind::Slide : web::View::Kind::Shape;
  const int first = slide.value_or(1);
  const int last = slide.value_or(presentation_->slideCount());
  for (int index = std::max(first, 1); index <= std::min(last, presentation_->slideCount()); ++index) {
    const pugi::xml_node node = presentation_->shapesOf(index).find(shape);
    if (!shape.empty() && !node) continue;
    view.slide = index;
    if (!shape.empty()) view.elementId = render::page::shapeElement(index, presentationml::shapeId(node));
    break;
  }
  return view;
}

web::ScreenState LiveShow::state(const web::View& view) {
  const render::SlideSize size = renderer_.size();
  web::ScreenState state;
  state.deck = version_;
  state.title = std::filesystem::path(presentation_->FullName()).stem().string();
  state.width = size.width;
  state.height = size.height;
  state.slideCount = presentation_->slideCount();
  state.stylesheet = styleSheetName();
  state.began = began_;
  state.progress = progress_;
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
      if (view.slide > 0 && view.slide <= state.slideCount) state.current = page(view.slide);
      break;
    case web::View::Kind::Shape:
      // Laid over somebody else's picture, it must neither cover nor announce anything.
      state.blank = web::Blank::None;
      state.isTransparent = true;
      state.progress.reset();
      if (view.slide > 0 && !state.ended) showShape(view, state);
      state.ended = false;
      break;
  }
  for (const auto& slide : {state.current, state.next}) {
    if (slide) addStale(state, slide->index);
  }
  return state;
}

void LiveShow::showCurrent(web::ScreenState& state) {
  std::erase_if(pages_, [this](const auto& page) { return !isHeld(page.first); });
  if (const auto current = currentSlide()) {
    state.current = page(*current);
    state.transition = toWeb(deck::transitionOf(presentation_->slidePart(*current)));
    addBuilds(state, *current);
  } else if (standing_ ? standing_->isEmpty : isRunning() && show_->isEmpty()) {
    state.current = web::SlideView{0, renderer_.backdrop(1)};
  }
  if (const auto next = nextSlide()) state.next = page(*next);
}

web::SlideView LiveShow::page(int slide) {
  const auto known = pages_.find(slide);
  if (known != pages_.end()) return {slide, known->second};
  render::SlidePage rendered = draw(slide);
  if (rendered.timeShown != render::TimeShown::None) timed_[slide] = rendered.timeShown;
  const auto& html = pages_.emplace(slide, std::move(rendered.html)).first->second;
  hasRendered_ = true;
  conversionTimer_->Enabled(converter_.isBusy());
  return {slide, html};
}

/// What cannot be drawn is left out, down to the bare background: a show goes on.
render::SlidePage LiveShow::draw(int slide) {
  const std::string which = "Slide " + std::to_string(slide);
  try {
    render::SlidePage page = renderer_.slide(slide);
    // Until then it is missing for a moment only.
    if (!converter_.isBusy()) {
      for (const std::string& problem : page.problems) problems_.tell(which + ": " + problem);
    }
    return page;
  } catch (const std::exception& error) {
    problems_.tell(which + " cannot be drawn: " + error.what());
  }
  render::SlidePage page;
  try {
    page.html = renderer_.backdrop(slide, slide);
  } catch (const std::exception& error) {
    problems_.tell(which + " is shown without a background: " + error.what());
    const render::SlideSize size = renderer_.size();
    page.html = render::page::startSlide(slide, size.width, size.height) + "</section>";
  }
  return page;
}

/// Empty when it cannot be drawn: screens keep the shape that they have.
std::string LiveShow::drawShape(int slide, std::uint32_t id) {
  try {
    return renderer_.shape(slide, id);
  } catch (const std::exception& error) {
    problems_.tell(error.what());
    return {};
  }
}

/// The slide with nothing but the shape, of which the state shows the shape's place. Nothing when it cannot
/// be drawn.
void LiveShow::showShape(const web::View& view, web::ScreenState& state) try {
  // Only whole pages tell whether they show the time.
  page(view.slide);
  const std::uint32_t id = render::page::shapeOf(view.elementId);
  const std::string html = renderer_.shape(view.slide, id);
  const render::Rect area = renderer_.area(view.slide, id);
  const std::string start = render::page::startSlide(view.slide, state.width, state.height);
  state.left = area.x;
  state.top = area.y;
  state.width = std::max(area.w, 1.0);
  state.height = std::max(area.h, 1.0);
  state.current = web::SlideView{view.slide, start + html + "</section>"};
} catch (const std::exception& error) {
  problems_.tell(error.what());
}

void LiveShow::addStale(web::ScreenState& state, int slide) const {
  if (options_.staleData == StaleData::Keep) return;
  for (const LinkedShape& shape : linked_[static_cast<std::size_t>(slide)]) {
    if (!showsData(shape) || !freshness_.isStale(shape.connectionKey())) continue;
    const bool isText = static_cast<LF2000::SourceType>(shape.sourceType) == LF2000::SourceType::DataField;
    auto& elements = options_.staleData == StaleData::Mark ? state.marked
                     : isText                              ? state.blanked
                                                           : state.hidden;
    elements.push_back(render::page::shapeElement(slide, shape.id));
  }
}

void LiveShow::addBuilds(web::ScreenState& state, int slide) const {
  if (slide != show_->position()) return;
  const deck::Builds& builds = show_->builds();
  const std::size_t built = show_->builtSteps();
  for (const std::uint32_t id : builds.hiddenAfter(built))
    state.hidden.push_back(render::page::shapeElement(slide, id));
  if (built != builtBefore_ + 1) return;
  for (const deck::BuildEffect& effect : builds.step(built - 1)) {
    state.builds.push_back({render::page::shapeElement(slide, effect.shapeId), effect.isEntrance, effect.kind,
                            effect.direction, std::chrono::milliseconds(effect.milliseconds)});
  }
}

void LiveShow::watch(const std::set<int>& slides) {
  watched_ = slides;
  std::set<std::int32_t> fresh(slides.begin(), slides.end());
  if (options_.whenEmpty) fresh.insert(*options_.whenEmpty);
  if (LF2000::FrmRuntimeTimer* form = form_()) form->WatchedSlides(std::move(fresh));
}

web::Health LiveShow::health() {
  web::Health health;
  health.isReady = isOn() && hasRendered_;
  health.position = currentSlide().value_or(0);
  health.connections = freshness_.connections();
  return health;
}

std::optional<web::Asset> LiveShow::asset(std::string_view name) {
  if (name == styleSheetName()) {
    static const auto styles = std::make_shared<const std::string>(render::slideStyles());
    return web::Asset{styles, "text/css; charset=utf-8"};
  }
  const render::Asset* found = renderer_.assets().find(name);
  if (!found) return std::nullopt;
  auto bytes = renderer_.assets().bytes(name);
  if (!bytes) return std::nullopt;
  return web::Asset{std::move(bytes), found->contentType};
}

}  // namespace app
