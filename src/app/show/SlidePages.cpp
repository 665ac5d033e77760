// Draws the slides of a deck on show, keeps the pages, and drops them when their time has come.

#include "app/show/SlidePages.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "render/html/PageContract.h"

namespace app {

using render::page::shapeElement;

SlidePages::SlidePages(deck::Presentation& deck, host::Loop& loop, ToldOnce& problems,
                       std::function<void()> redrawn, std::string assetPrefix)
    : deck_(deck),
      problems_(problems),
      redrawn_(std::move(redrawn)),
      drawn_(deck, std::move(assetPrefix)),
      conversionTimer_(loop.CreateTimer([this] { watchConversions(); })),
      timedAt_(host::Current().clock->Now()) {
  constexpr std::int32_t ConversionInterval = 50;  // ms
  conversionTimer_->Interval(ConversionInterval);
}

web::View SlidePages::view(std::optional<int> slide, std::string_view shape) const {
  web::View view;
  view.kind = shape.empty() ? web::View::Kind::Slide : web::View::Kind::Shape;
  const int first = slide.value_or(1);
  const int last = slide.value_or(deck_.slideCount());
  for (int index = std::max(first, 1); index <= std::min(last, deck_.slideCount()); ++index) {
    const pugi::xml_node node = deck_.shapesOf(index).find(shape);
    if (!shape.empty() && !node) continue;
    view.slide = index;
    if (!shape.empty()) view.elementId = shapeElement(index, presentationml::shapeId(node));
    break;
  }
  return view;
}

web::SlideView SlidePages::page(int slide) {
  const auto known = pages_.find(slide);
  if (known != pages_.end()) return {slide, known->second};
  render::SlidePage rendered = draw(slide);
  if (rendered.timeShown != render::TimeShown::None) timed_[slide] = rendered.timeShown;
  const auto& html = pages_.emplace(slide, std::move(rendered.html)).first->second;
  hasDrawn_ = true;
  conversionTimer_->Enabled(drawn_.converter().isBusy());
  return {slide, html};
}

web::SlideView SlidePages::backdrop() {
  try {
    return {0, drawn_.renderer().backdrop(1)};
  } catch (const std::exception& error) {
    problems_.tell(std::string("The deck is shown without a background: ") + error.what());
    return {0, {}};
  }
}

render::SlidePage SlidePages::draw(int slide) {
  const std::string which = "Slide " + std::to_string(slide);
  try {
    render::SlidePage page = drawn_.renderer().slide(slide);
    // Until then it is missing for a moment only.
    if (!drawn_.converter().isBusy()) {
      for (const std::string& problem : page.problems) problems_.tell(which + ": " + problem);
    }
    return page;
  } catch (const std::exception& error) {
    problems_.tell(which + " cannot be drawn: " + error.what());
  }
  render::SlidePage page;
  try {
    page.html = drawn_.renderer().backdrop(slide, slide);
  } catch (const std::exception& error) {
    problems_.tell(which + " is shown without a background: " + error.what());
    page.html = render::page::startSlide(slide, size().width, size().height) + "</section>";
  }
  return page;
}

std::string SlidePages::shape(int slide, std::uint32_t id) {
  try {
    return drawn_.renderer().shape(slide, id);
  } catch (const std::exception& error) {
    problems_.tell(error.what());
    return {};
  }
}

std::vector<web::CellChange> SlidePages::cells(int slide, std::uint32_t id,
                                               const render::CellPlaces& places) try {
  std::vector<web::CellChange> cells;
  for (render::DrawnCell& cell : drawn_.renderer().cells(slide, id, places)) {
    cells.push_back({cell.index, std::move(cell.html)});
  }
  return cells;
} catch (const std::exception& error) {
  problems_.tell(error.what());
  return {};
}

void SlidePages::showAlone(const web::View& view, web::ScreenState& state) try {
  // Only whole pages tell whether they show the time.
  page(view.slide);
  const std::uint32_t id = render::page::shapeOf(view.elementId);
  const std::string html = drawn_.renderer().shape(view.slide, id);
  const render::Rect area = drawn_.renderer().area(view.slide, id);
  const std::string start = render::page::startSlide(view.slide, state.width, state.height);
  state.left = area.x;
  state.top = area.y;
  state.width = std::max(area.w, 1.0);
  state.height = std::max(area.h, 1.0);
  state.current = web::SlideView{view.slide, start + html + "</section>"};
} catch (const std::exception& error) {
  problems_.tell(error.what());
}

void SlidePages::keepOnly(const std::function<bool(int)>& isHeld) {
  std::erase_if(pages_, [&](const auto& page) { return !isHeld(page.first); });
}

std::vector<int> SlidePages::forgetPastTimes() {
  const basic::Date now = host::Current().clock->Now();
  const auto then = basic::Split(timedAt_);
  const auto parts = basic::Split(now);
  const bool isNewDay = parts.dayOfYear != then.dayOfYear || parts.year != then.year;
  if (!isNewDay && parts.minute == then.minute && parts.hour == then.hour) return {};
  timedAt_ = now;
  std::vector<int> past;
  for (const auto& [slide, shown] : timed_) {
    if (!isNewDay && shown == render::TimeShown::Date) continue;
    forget(slide);
    past.push_back(slide);
  }
  return past;
}

void SlidePages::watchConversions() {
  if (drawn_.converter().poll()) {
    drawn_.renderer().forget();
    forgetAll();
    redrawn_();
  }
  conversionTimer_->Enabled(drawn_.converter().isBusy());
}

/// The name changes with the content, as browsers keep it for ever.
const std::string& SlidePages::styleSheetName() {
  static const std::string name =
      "slides-" + std::to_string(std::hash<std::string_view>{}(render::slideStyles())) + ".css";
  return name;
}

std::optional<web::Asset> SlidePages::asset(std::string_view name) const {
  if (name != styleSheetName()) return drawn_.asset(name);
  static const auto styles = std::make_shared<const std::string>(render::slideStyles());
  return web::Asset{styles, "text/css; charset=utf-8"};
}

}  // namespace app
