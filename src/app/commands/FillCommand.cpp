// The verb fill: a copy of a deck with today's data in it.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "addin/support/modGlobalFunctions.h"
#include "app/commands/Commands.h"
#include "app/inspect/SourceLook.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/StoredConnections.h"
#include "model/clsPresentation.h"
#include "platform/Console.h"

namespace app {

namespace {

/// Says what cannot be read, and fills the deck with the rest.
bool fill(deck::Presentation& deck, LF2000::clsPresentation& linked, const Environment& environment) {
  bool isWhole = true;
  const auto complain = [&](const std::string& text) {
    isWhole = false;
    std::cerr << "lumenfold: " << platform::forTerminal(text) << '\n';
  };
  for (const StoredConnection& stored : storedConnections(deck)) {
    if (!stored.failure.empty()) complain("Connection " + stored.number + ": " + stored.failure);
  }
  for (const auto& connection : linked.Connections()) {
    const SourceLook look = lookInto(*connection);
    if (look.isReadable()) continue;
    complain("Connection " + connection->ConnectionTagNumber() + " (" + connection->ConnectionDescription() +
             "): " + look.failure);
  }
  const int before = environment.errorsShown();
  linked.FillValues(false);
  return isWhole && environment.errorsShown() == before;
}

/// The add-in makes way for the copy, as it fills nothing once a source has failed.
std::shared_ptr<deck::Presentation> openBesideAddIn(AddInHost& host, const std::string& path) {
  const LF2000::modGlobalFunctions::OfflineGeneration generation(path);
  return host.open(path);
}

void fillCopy(const std::string& path, const std::string& copy, const Environment& environment) {
  AddInHost host;
  const auto deck = openBesideAddIn(host, path);
  LF2000::clsPresentation linked;
  linked.Describe(deck);
  const bool isWhole = fill(*deck, linked, environment);
  deck->SaveCopyAs(copy);
  if (!isWhole) fail(copy + ": written without what could not be read (see above).");
}

}  // namespace

void addFillCommand(CLI::App& program, Environment& environment) {
  struct FillOptions {
    std::string deck;
    std::string out;
  };
  auto options = std::make_shared<FillOptions>();
  CLI::App* verb =
      program.add_subcommand("fill", "Write the deck as its author sees it: filled with today's data");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_option("-o,--output", options->out, "The filled copy")->required();
  verb->callback([options, &environment] {
    std::error_code notThere;
    if (std::filesystem::equivalent(options->deck, options->out, notThere)) {
      fail(options->out + ": this is the deck " + options->deck +
           " itself; write the filled copy under another name.");
    }
    fillCopy(options->deck, options->out, environment);
  });
}

}  // namespace app
