// The verb import: a deck of an old presentation, with its links.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "app/commands/Commands.h"
#include "app/import/DeckImport.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Output.h"
#include "basic/Counted.h"
#include "basic/Quotes.h"
#include "opc/PackageFile.h"
#include "platform/Console.h"

namespace app {

namespace {

void printLine(std::ostream& out, const std::string& line) { out << platform::forTerminal(line) << '\n'; }

void importOld(const std::string& path, const std::string& out, Environment& environment) {
  // A new deck is edited from then on, so it is never written over.
  if (std::filesystem::exists(out)) fail(basic::InQuotes(out) + " is there already.");
  const std::string bytes = opc::readFile(path, opc::MaximumPackageBytes).bytes;
  if (!isOldPresentation(bytes)) {
    fail(basic::InQuotes(path) + " is not in the binary format of PowerPoint 97 to 2003.");
  }
  bool isCancelled = false;
  environment.loop().onSignal([&](int) { isCancelled = true; });
  PresentationConversion conversion;
  conversion.isCancelled = [&] { return isCancelled; };
  const ImportedDeck deck = importDeck(bytes, basic::InQuotes(path), environment.loop(), conversion);
  opc::replaceFile(out, deck.bytes);
  printLine(std::cout, out + ": written " + deck.summary());
  for (const std::string& warning : deck.warnings) printLine(std::cout, warning);
  if (deck.lost.empty()) return;
  for (const std::string& lost : deck.lost) printLine(std::cerr, "Lost: " + lost);
  fail(out + ": written without the tags of " + basic::Counted(deck.lost.size(), "shape") + " (see above).");
}

}  // namespace

void addImportCommand(CLI::App& program, Environment& environment) {
  struct ImportOptions {
    std::string old;
    std::string out;
  };
  auto options = std::make_shared<ImportOptions>();
  CLI::App* verb = program.add_subcommand(
      "import", "Make a deck of an old presentation (.ppt), with its links (takes LibreOffice)");
  verb->add_option("OLD", options->old, "The presentation of PowerPoint 97 to 2003: .ppt, .pps, .pot")
      ->required();
  verb->add_option("-o,--output", options->out, "The new deck")->required();
  verb->callback([options, &environment] { importOld(options->old, options->out, environment); });
}

}  // namespace app
