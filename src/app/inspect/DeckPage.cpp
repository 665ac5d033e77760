#include "app/inspect/DeckPage.h"

#include <filesystem>

#include "app/inspect/StandalonePage.h"
#include "render/html/PageContract.h"

namespace app {

DeckPage drawPage(const deck::Presentation& deck, DrawnDeck& drawn, int slide, std::string_view above) {
  render::SlidePage rendered = drawn.renderer().slide(slide);
  if (finishConversions(drawn)) rendered = drawn.renderer().slide(slide);
  StandalonePage page;
  page.title = std::filesystem::path(deck.FullName()).stem().string() + " - " + std::to_string(slide);
  page.slide = std::move(rendered.html);
  page.slide += above;
  page.styles = render::slideStyles();
  page.asset = [&drawn](std::string_view name) { return drawn.asset(name); };
  return {page.html(), std::move(rendered.problems), std::move(rendered.fonts)};
}

bool finishConversions(DrawnDeck& drawn) {
  if (!drawn.converter().isBusy()) return false;
  drawn.converter().finish();
  drawn.renderer().forget();
  return true;
}

}  // namespace app
