#include "app/LiveShow.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>

#include "app/PictureConversion.h"
#include "basic/Error.h"

namespace app {

namespace {

using Json = nlohmann::ordered_json;

std::string dump(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

/// The style sheet's name changes with its content, as browsers keep it for ever.
const std::string& styleSheetName() {
  static const std::string name =
      "slides-" + std::to_string(std::hash<std::string_view>{}(render::SlideRenderer::styles())) + ".css";
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
                   platform::EventLoop& loop)
    : presentation_(std::move(presentation)),
      application_(application),
      loop_(loop),
      converter_(pictureConversion()),
      conversionTimer_(loop.CreateTimer([this] { watchConversions(); })),
      renderer_(presentation_->package(),
                {.assetPrefix = "assets/",
                 .isLive =
                     [this](int slide, int shape) {
                       return linkedShape(slide, static_cast<std::uint32_t>(shape)) != nullptr;
                     },
                 .converter = &converter_}) {
  constexpr std::int32_t ConversionInterval = 50;  // ms
  conversionTimer_->Interval(ConversionInterval);
  conversionTimer_->Enabled(false);
  linked_.resize(static_cast<std::size_t>(presentation_->slideCount()) + 1);
  for (std::int32_t slide = 1; slide <= presentation_->slideCount(); ++slide) {
    linked_[static_cast<std::size_t>(slide)] = linkedShapes(*presentation_, slide);
  }
}

LiveShow::~LiveShow() {
  *self_ = nullptr;
  presentation_->removeListener(*this);
}

void LiveShow::begin(const deck::SlideShowOptions& options, std::function<void()> onEnd) {
  onEnd_ = std::move(onEnd);
  presentation_->addListener(*this);
  show_ = deck::SlideShow::begin(application_, presentation_, loop_, options, this);
}

void LiveShow::shutDown() {
  isShuttingDown_ = true;
  if (isRunning()) show_->end();
}

std::optional<int> LiveShow::currentSlide() const {
  if (!isRunning() || show_->isAtEnd()) return std::nullopt;
  return show_->position();
}

std::optional<int> LiveShow::nextSlide() const {
  if (!isRunning()) return std::nullopt;
  const auto next = show_->following();
  if (!next || next == currentSlide()) return std::nullopt;
  return *next;
}

bool LiveShow::isHeld(int slide) const { return currentSlide() == slide || nextSlide() == slide; }

const LinkedShape* LiveShow::linkedShape(int slide, std::uint32_t id) const {
  const auto& shapes = linked_[static_cast<std::size_t>(slide)];
  const auto found =
      std::find_if(shapes.begin(), shapes.end(), [&](const LinkedShape& shape) { return shape.id == id; });
  return found == shapes.end() ? nullptr : &*found;
}

std::string LiveShow::textOf(int slide, const std::string& shapeName) {
  const auto shape = presentation_->Slides()->Item(slide)->Shapes()->Item(std::string_view(shapeName));
  return shape->HasTextFrame() ? shape->TextFrame()->TextRange()->Text() : std::string();
}

std::string LiveShow::state() {
  Json slides = Json::array();
  for (std::int32_t index = 1; index <= presentation_->slideCount(); ++index) {
    Json shapes = Json::array();
    for (const LinkedShape& shape : linked_[static_cast<std::size_t>(index)]) {
      shapes.push_back({{"name", shape.name},
                        {"sourceType", shape.sourceType},
                        {"connection", shape.connection},
                        {"column", shape.column},
                        {"row", shape.row},
                        {"text", textOf(index, shape.name)}});
    }
    slides.push_back({{"index", index}, {"hidden", presentation_->isHidden(index)}, {"shapes", shapes}});
  }
  return dump({{"deck", presentation_->FullName()},
               {"running", isRunning()},
               {"position", show_ ? show_->position() : 0},
               {"slideCount", presentation_->slideCount()},
               {"slides", slides}});
}

web::SlideView LiveShow::view(int slide) {
  const auto known = pages_.find(slide);
  if (known != pages_.end()) return {slide, known->second};
  const auto page = pages_.emplace(slide, renderer_.slide(slide).html).first;
  conversionTimer_->Enabled(converter_.isBusy());
  return {slide, page->second};
}

/// Pictures that were converted join those on the screens.
void LiveShow::watchConversions() {
  if (converter_.poll()) {
    renderer_.forget();
    pages_.clear();
    pictureChanged();
  }
  conversionTimer_->Enabled(converter_.isBusy());
}

web::Picture LiveShow::picture() {
  std::erase_if(pages_, [this](const auto& page) { return !isHeld(page.first); });
  const render::SlideSize size = renderer_.size();
  web::Picture picture;
  picture.title = std::filesystem::path(presentation_->FullName()).stem().string();
  picture.width = size.width;
  picture.height = size.height;
  picture.slideCount = presentation_->slideCount();
  picture.stylesheet = styleSheetName();
  if (const auto current = currentSlide()) picture.current = view(*current);
  if (const auto next = nextSlide()) picture.next = view(*next);
  if (show_) {
    picture.blank = toWeb(show_->blank());
    picture.kiosk = show_->isKiosk();
    picture.ended = !show_->isRunning() || show_->isAtEnd();
  }
  return picture;
}

std::optional<web::Asset> LiveShow::asset(std::string_view name) {
  if (name == styleSheetName()) {
    return web::Asset{std::make_shared<const std::string>(render::SlideRenderer::styles()),
                      "text/css; charset=utf-8"};
  }
  const render::Asset* found = renderer_.assets().find(name);
  if (!found) return std::nullopt;
  return web::Asset{std::make_shared<const std::string>(renderer_.assets().bytes(name)), found->contentType};
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

void LiveShow::slideHiddenChanged(std::int32_t) { pictureChanged(); }

void LiveShow::linksUpdated() {
  pages_.clear();
  pictureChanged();
}

void LiveShow::slideChanged() { pictureChanged(); }
void LiveShow::blankChanged() { pictureChanged(); }

void LiveShow::ended() {
  if (!isShuttingDown_) pictureChanged();
  loop_.post([self = self_] {
    if (*self) (*self)->onEnd_();
  });
}

void LiveShow::pictureChanged() {
  pictureChanged_ = true;
  requestFlush();
}

void LiveShow::requestFlush() {
  if (flushRequested_) return;
  flushRequested_ = true;
  loop_.post([self = self_] {
    if (*self) (*self)->flush();
  });
}

void LiveShow::flush() {
  flushRequested_ = false;
  if (!server_ || isShuttingDown_) {
    changedShapes_.clear();
    return;
  }
  sendShapes();
  if (std::exchange(pictureChanged_, false)) server_->slideChanged();
}

void LiveShow::sendShapes() {
  if (changedShapes_.empty()) return;
  std::vector<web::ShapeChange> changes;
  for (const auto& [slide, id] : std::exchange(changedShapes_, {})) {
    web::ShapeChange change;
    change.slide = slide;
    change.elementId = "s" + std::to_string(slide) + "-sh" + std::to_string(id);
    if (isHeld(slide)) change.html = renderer_.shape(slide, static_cast<int>(id));
    if (const LinkedShape* shape = linkedShape(slide, id)) {
      change.name = shape->name;
      change.text = textOf(slide, shape->name);
    }
    changes.push_back(std::move(change));
  }
  server_->shapesChanged(changes);
}

}  // namespace app
