#include "app/inspect/DeckPage.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

#include "app/inspect/StandalonePage.h"
#include "render/html/PageContract.h"

namespace app {

namespace {

std::string nameOf(const deck::Presentation& deck) {
  return std::filesystem::path(deck.FullName()).stem().string();
}

render::SlidePage drawSlide(DrawnDeck& drawn, int slide) {
  render::SlidePage rendered = drawn.renderer().slide(slide);
  return finishConversions(drawn) ? drawn.renderer().slide(slide) : rendered;
}

StandalonePage pageOf(DrawnDeck& drawn, std::string title, std::string html) {
  StandalonePage page;
  page.title = std::move(title);
  page.slide = std::move(html);
  page.styles = render::slideStyles();
  page.asset = [&drawn](std::string_view name) { return drawn.asset(name); };
  return page;
}

/// One sheet of paper for each ".sheet". What is a fraction of a pixel too high would take another.
std::string sheetStyles(const render::SlideSize& size) {
  const std::string width = std::to_string(size.width) + "px";
  const std::string height = std::to_string(size.height) + "px";
  return "<style>@page{size:" + width + " " + height + ";margin:0}.sheet{width:" + width + ";height:calc(" +
         height +
         " - "
         "0.1px);overflow:hidden;contain:strict;break-inside:avoid}.sheet+.sheet{break-before:page}</style>";
}

}  // namespace

DeckPage drawPage(const deck::Presentation& deck, DrawnDeck& drawn, int slide, std::string_view above) {
  render::SlidePage rendered = drawSlide(drawn, slide);
  const StandalonePage page =
      pageOf(drawn, nameOf(deck) + " - " + std::to_string(slide), rendered.html.append(above));
  return {page.html(), std::move(rendered.problems), std::move(rendered.fonts)};
}

DeckPage drawSheets(const deck::Presentation& deck, DrawnDeck& drawn, const std::vector<int>& slides) {
  DeckPage all;
  std::string sheets = sheetStyles(drawn.renderer().size());
  for (const int slide : slides) {
    render::SlidePage rendered = drawSlide(drawn, slide);
    sheets.append("<div class=\"sheet\">").append(rendered.html).append("</div>");
    std::move(rendered.problems.begin(), rendered.problems.end(), std::back_inserter(all.problems));
    std::move(rendered.fonts.begin(), rendered.fonts.end(), std::back_inserter(all.fonts));
  }
  all.html = pageOf(drawn, nameOf(deck), std::move(sheets)).html();
  return all;
}

bool finishConversions(DrawnDeck& drawn) {
  if (!drawn.converter().isBusy()) return false;
  drawn.converter().finish();
  drawn.renderer().forget();
  return true;
}

}  // namespace app
