#include "app/inspect/PrintedSlides.h"

#include <filesystem>
#include <utility>

#include "app/inspect/SlideFiles.h"
#include "process/TemporaryFolder.h"

namespace app {

std::vector<std::string> printSlides(FilledDeck& filled, const std::vector<int>& slides,
                                     HeadlessBrowser& browser, const std::string& pdf, int width) {
  DeckPage sheets = filled.sheets(slides);
  const process::TemporaryFolder folder;
  const std::filesystem::path file = folder.path() / "slides.html";
  writeFile(file, sheets.html);
  browser.open(file, slideView(filled.size(), width));
  writeFile(pdf, browser.print());
  return std::move(sheets.problems);
}

std::vector<int> visibleSlides(FilledDeck& filled) {
  std::vector<int> slides;
  for (int slide = 1; slide <= filled.slideCount(); ++slide) {
    if (!filled.deck().isHidden(slide)) slides.push_back(slide);
  }
  return slides;
}

}  // namespace app
