// The verb fill: a copy of a deck with today's data in it.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <string>

#include "app/commands/Commands.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"

namespace app {

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
    AddInHost host;
    const auto deck = host.open(options->deck);
    if (environment.errorsShown() > 0) {
      fail(options->deck + ": the deck could not be filled (see above); " + options->out +
           " was not written.");
    }
    deck->SaveCopyAs(options->out);
  });
}

}  // namespace app
