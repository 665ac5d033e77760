#include "app/inspect/FilledDeck.h"

#include <algorithm>
#include <filesystem>

#include "app/inspect/StandalonePage.h"
#include "app/wiring/PictureConversion.h"
#include "host/services.h"
#include "render/html/PageContract.h"

namespace app {

FilledDeck::FilledDeck(const std::string& path, platform::EventLoop& loop)
    : deck_(host_.open(path, deck::Application::Damaged::Repaired)),
      sheets_(deck_, loop),
      linked_(static_cast<std::size_t>(deck_->slideCount()) + 1),
      converter_(pictureConversion()),
      renderer_(deck_->package(), {.assetPrefix = "assets/",
                                   .isLive =
                                       [this](int slide, std::uint32_t shape) {
                                         const auto& shapes = linkedShapes(slide);
                                         return std::any_of(
                                             shapes.begin(), shapes.end(),
                                             [&](const auto& each) { return each.id == shape; });
                                       },
                                   .converter = &converter_,
                                   .now = [] { return host::Current().clock->Now(); }}) {
  for (std::int32_t slide = 1; slide <= deck_->slideCount(); ++slide) {
    linked_[static_cast<std::size_t>(slide)] = app::linkedShapes(*deck_, slide);
  }
  show_ = deck::SlideShow::begin(host_.application(), deck_, loop);
}

FilledDeck::~FilledDeck() { show_->end(); }

const std::vector<LinkedShape>& FilledDeck::linkedShapes(int slide) const {
  return linked_[static_cast<std::size_t>(slide)];
}

FilledDeck::Page FilledDeck::page(int slide) {
  render::SlidePage rendered = renderer_.slide(slide);
  if (converter_.isBusy()) {
    converter_.finish();
    renderer_.forget();
    rendered = renderer_.slide(slide);
  }
  StandalonePage page;
  page.title = std::filesystem::path(deck_->FullName()).stem().string() + " - " + std::to_string(slide);
  page.slide = std::move(rendered.html);
  page.styles = render::slideStyles();
  page.asset = [this](std::string_view name) -> std::optional<web::Asset> {
    const render::Asset* found = renderer_.assets().find(name);
    if (!found) return std::nullopt;
    return web::Asset{renderer_.assets().bytes(name), found->contentType};
  };
  return {page.html(), std::move(rendered.problems), std::move(rendered.fonts)};
}

std::string FilledDeck::scene(int slide) {
  std::string scene = renderer_.scene(slide);
  if (!converter_.isBusy()) return scene;
  converter_.finish();
  renderer_.forget();
  return renderer_.scene(slide);
}

}  // namespace app
