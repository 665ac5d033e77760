#include "app/inspect/FilledDeck.h"

#include <filesystem>

#include "app/inspect/StandalonePage.h"
#include "render/html/PageContract.h"

namespace app {

FilledDeck::FilledDeck(const std::string& path, platform::EventLoop& loop)
    : deck_(host_.open(path, deck::Application::Damaged::Repaired)),
      sheets_(deck_, loop),
      drawn_(*deck_),
      show_(deck::SlideShow::begin(host_.application(), deck_, loop)) {}

FilledDeck::~FilledDeck() { show_->end(); }

FilledDeck::Page FilledDeck::page(int slide) {
  render::SlidePage rendered = drawn_.renderer().slide(slide);
  if (finishConversions()) rendered = drawn_.renderer().slide(slide);
  StandalonePage page;
  page.title = std::filesystem::path(deck_->FullName()).stem().string() + " - " + std::to_string(slide);
  page.slide = std::move(rendered.html);
  page.styles = render::slideStyles();
  page.asset = [this](std::string_view name) { return drawn_.asset(name); };
  return {page.html(), std::move(rendered.problems), std::move(rendered.fonts)};
}

std::string FilledDeck::scene(int slide) {
  std::string scene = drawn_.renderer().scene(slide);
  return finishConversions() ? drawn_.renderer().scene(slide) : scene;
}

bool FilledDeck::finishConversions() {
  if (!drawn_.converter().isBusy()) return false;
  drawn_.converter().finish();
  drawn_.renderer().forget();
  return true;
}

}  // namespace app
