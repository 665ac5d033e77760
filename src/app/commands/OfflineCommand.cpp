// The verb offline: a copy of a deck that stands alone, with what a show that began now would show.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "addin/support/modGlobalFunctions.h"
#include "app/commands/Commands.h"
#include "app/inspect/CollectedErrors.h"
#include "app/inspect/PrintedSlides.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "basic/Counted.h"
#include "model/clsPresentation.h"
#include "model/modTags.h"
#include "platform/Console.h"

namespace app {

namespace {

namespace fs = std::filesystem;

struct OfflineOptions {
  std::string deck;
  std::string out;
  std::string pdf;
  bool keepClocks = false;
};

void complain(const std::string& text) { std::cerr << "lumenfold: " << platform::forTerminal(text) << '\n'; }

/// Answers whether everything that a show would show is in the copy; what is not was told.
bool makeCopy(const OfflineOptions& options, Environment& environment) {
  AddInHost host;
  const auto deck = [&] {
    // The add-in makes way for the copy, which opens the sources itself.
    const LF2000::modGlobalFunctions::OfflineGeneration generation(options.deck);
    return host.open(options.deck);
  }();
  if (!LF2000::modTags::HasVersionTag(*deck)) {
    fail(options.deck + ": no data are linked to this deck; it stands alone already.");
  }
  LF2000::clsPresentation linked;
  linked.Describe(deck);
  LF2000::modOfflineCopy::Options how;
  how.KeepClocks = options.keepClocks;
  const int before = environment.errorsShown();
  if (!linked.CreateOfflinePPT(fs::absolute(options.out).lexically_normal().string(), how)) {
    fail(options.out + ": not written (see above).");
  }
  return environment.errorsShown() == before;
}

bool print(const OfflineOptions& options, Environment& environment, HeadlessBrowser& browser) {
  const CollectedErrors errors;
  FilledDeck copy(options.out, environment.loop());
  const std::vector<int> slides = visibleSlides(copy);
  if (slides.empty()) fail(options.out + ": every slide is hidden; there is nothing to print.");
  const std::vector<std::string> problems = printSlides(copy, slides, browser, options.pdf);
  for (const std::string& problem : problems) complain(problem);
  std::cout << basic::Counted(slides.size(), "slide") << " written to " << options.pdf << '\n';
  for (const std::string& text : errors.texts()) complain(text);
  return problems.empty() && errors.texts().empty();
}

void makeOffline(const OfflineOptions& options, Environment& environment) {
  std::error_code notThere;
  if (fs::equivalent(options.deck, options.out, notThere)) {
    fail(options.out + ": this is the deck " + options.deck + " itself; write the copy under another name.");
  }
  std::unique_ptr<HeadlessBrowser> browser;
  if (!options.pdf.empty()) browser = std::make_unique<HeadlessBrowser>();
  bool isWhole = makeCopy(options, environment);
  if (browser) isWhole = print(options, environment, *browser) && isWhole;
  if (!isWhole) fail(options.out + ": written without what could not be read (see above).");
}

}  // namespace

void addOfflineCommand(CLI::App& program, Environment& environment) {
  auto options = std::make_shared<OfflineOptions>();
  CLI::App* verb = program.add_subcommand(
      "offline", "Write a copy that stands alone: with what a show would show now, and without its sources");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_option("-o,--output", options->out, "The copy")->required();
  verb->add_flag(
      "--keep-clocks", options->keepClocks,
      "Clocks go on, as date fields of the presentation program, in the format that comes nearest");
  verb->add_option("--pdf", options->pdf,
                   "PDF file as well, with a page for each slide that is not hidden (takes Chromium)");
  verb->callback([options, &environment] { makeOffline(*options, environment); });
}

}  // namespace app
