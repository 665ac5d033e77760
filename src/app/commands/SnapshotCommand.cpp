// The verb snapshot: slides as they would be shown now, as pages, pictures, a PDF or lists of what is drawn.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "app/commands/Commands.h"
#include "app/commands/NumberChecks.h"
#include "app/inspect/CollectedErrors.h"
#include "app/inspect/FilledDeck.h"
#include "app/inspect/HeadlessBrowser.h"
#include "app/inspect/PrintedSlides.h"
#include "app/inspect/SlideFiles.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "basic/Counted.h"
#include "platform/Console.h"

namespace app {

namespace {

namespace fs = std::filesystem;

struct SnapshotOptions {
  std::string deck;
  std::string folder;
  std::string pdf;
  bool scene = false;
  int slide = 0;  // 0 is every one
  bool png = false;
  int width = 960;
};

void complain(const std::string& text) { std::cerr << "lumenfold: " << platform::forTerminal(text) << '\n'; }

struct Range {
  int first;
  int last;
};

Range slidesOf(const FilledDeck& filled, const SnapshotOptions& options) {
  const int count = filled.slideCount();
  if (options.slide == 0) return {1, count};
  if (options.slide > count)
    fail(options.deck + ": there is no slide " + std::to_string(options.slide) + "; it has " +
         std::to_string(count) + ".");
  return {options.slide, options.slide};
}

void printScenes(FilledDeck& filled, Range slides) {
  for (int slide = slides.first; slide <= slides.last; ++slide)
    std::cout << platform::forTerminal(filled.scene(slide));
}

void writePages(FilledDeck& filled, Range slides, const SnapshotOptions& options, HeadlessBrowser* browser) {
  const fs::path folder = options.folder;
  const HeadlessBrowser::View view = slideView(filled.size(), options.width);
  for (int slide = slides.first; slide <= slides.last; ++slide) {
    const DeckPage page = filled.page(slide);
    for (const std::string& problem : page.problems) complain(problem);
    const fs::path file = folder / (slideFileName(slide) + ".html");
    writeFile(file, page.html);
    if (browser == nullptr) continue;
    browser->open(file, view);
    writeFile(folder / (slideFileName(slide) + ".png"), browser->photograph());
  }
  const int count = slides.last - slides.first + 1;
  std::cout << basic::Counted(count, "slide") << " written to " << options.folder << '\n';
}

/// As in a show: a hidden slide is there for who asks for it.
std::vector<int> printedSlides(FilledDeck& filled, Range slides, const SnapshotOptions& options) {
  std::vector<int> printed = options.slide > 0 ? std::vector{slides.first} : visibleSlides(filled);
  if (printed.empty()) fail(options.deck + ": every slide is hidden; --slide N writes one all the same.");
  return printed;
}

void writePdf(FilledDeck& filled, Range slides, const SnapshotOptions& options, HeadlessBrowser& browser) {
  const std::vector<int> printed = printedSlides(filled, slides, options);
  for (const std::string& problem : printSlides(filled, printed, browser, options.pdf, options.width))
    complain(problem);
  std::cout << basic::Counted(printed.size(), "slide") << " written to " << options.pdf << '\n';
}

void snapshot(const SnapshotOptions& options, Environment& environment) {
  std::unique_ptr<HeadlessBrowser> browser;
  if (options.png || !options.pdf.empty()) browser = std::make_unique<HeadlessBrowser>();
  if (!options.folder.empty()) makeFolder(options.folder);

  const CollectedErrors errors;
  FilledDeck filled(options.deck, environment.loop());
  const std::vector<deck::Damage>& damages = filled.deck().damages();
  for (const deck::Damage& damage : damages) complain(damage.text);
  const Range slides = slidesOf(filled, options);
  if (options.scene) {
    printScenes(filled, slides);
  } else if (!options.pdf.empty()) {
    writePdf(filled, slides, options, *browser);
  } else {
    writePages(filled, slides, options, browser.get());
  }
  if (errors.texts().empty() && damages.empty()) return;
  for (const std::string& text : errors.texts()) complain(text);
  fail(options.deck + ": not everything could be filled and drawn (see above).");
}

}  // namespace

void addSnapshotCommand(CLI::App& program, Environment& environment) {
  constexpr int WidestPicture = 16384;
  auto options = std::make_shared<SnapshotOptions>();
  CLI::App* verb = program.add_subcommand(
      "snapshot", "Write every slide, filled, as a page or a picture, all as a PDF, or print what is drawn");
  verb->add_option("DECK", options->deck, "The deck")->required();
  CLI::Option_group* what = verb->add_option_group("What to make");
  CLI::Option* folder =
      what->add_option("-o,--output", options->folder, "Folder for the pages; made when it is not there");
  what->add_option("--pdf", options->pdf,
                   "PDF file with a page for each slide that is not hidden (takes Chromium)");
  what->add_flag("--scene", options->scene,
                 "Print what is drawn, as text: shapes with places, fills, lines, effects and texts");
  what->require_option(1);
  verb->add_option("--slide", options->slide, "This slide alone")->check(wholeNumber(1));
  verb->add_flag("--png", options->png, "Pictures as well (takes Chromium)")->needs(folder);
  verb->add_option("--width", options->width, "Width of the pictures in pixels")
      ->check(CLI::Range(1, WidestPicture))
      ->capture_default_str();
  verb->callback([options, &environment] { snapshot(*options, environment); });
}

}  // namespace app
