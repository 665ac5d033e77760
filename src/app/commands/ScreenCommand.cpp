// The verb screen: which screens may look at a show that knows its screens.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <string>

#include "app/commands/Commands.h"
#include "app/commands/ScreenOptions.h"
#include "app/distribution/Digest.h"
#include "app/screens/ScreensFile.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "platform/Console.h"
#include "web/http/Secret.h"

namespace app {

namespace {

struct ScreenAction {
  std::string file;
  std::string name;
  std::string url;
};

ScreensFile fileOf(const ScreenAction& options) {
  if (options.file.empty()) {
    throw UsageError("Name the list of screens with --screens FILE, or in the variable LUMENFOLD_SCREENS");
  }
  return ScreensFile(options.file);
}

std::string addressOf(const ScreenAction& options, Environment& environment) {
  if (!options.url.empty()) return options.url;
  const std::string machine = environment.shell().ComputerName().value_or("localhost");
  return "http://" + machine + ":" + std::to_string(ScreensPort) + "/";
}

/// What is typed on a screen as it stands.
void requireAddress(const std::string& url) {
  const bool isWeb = url.starts_with("http://") || url.starts_with("https://");
  const bool isWhole =
      std::all_of(url.begin(), url.end(), [](char c) { return c > ' ' && c < 127 && c != '#'; });
  if (!isWeb || !isWhole) {
    throw UsageError(
        "--url takes an address like http://boards.example.org:2000/, without blanks and without a #");
  }
}

void add(const ScreenAction& options, Environment& environment) {
  if (!options.url.empty()) requireAddress(options.url);
  const std::string token = web::newSecret();
  fileOf(options).change([&](ScreenList& list) { list.add(options.name, sha256(token)); });
  std::cout << platform::forTerminal(options.name)
            << " may look. On that screen, open this address once; it is told this time only:\n"
            << platform::forTerminal(addressOf(options, environment)) << "#token=" << token << '\n';
}

void list(const ScreenAction& options) {
  const ScreenList list = fileOf(options).read();
  for (const ScreenList::Screen& screen : list.screens()) {
    std::cout << platform::forTerminal(screen.name) << '\n';
  }
}

void revoke(const ScreenAction& options) {
  const ScreensFile file = fileOf(options);
  // Not to make an empty list where there is none.
  static_cast<void>(file.read());
  file.change([&](ScreenList& list) { list.remove(options.name); });
  std::cout << platform::forTerminal(options.name) << " may not look any more.\n";
}

}  // namespace

void addScreenCommand(CLI::App& program, Environment& environment) {
  CLI::App* verb = program.add_subcommand("screen", "Screens that a show knows, and that may look at it");
  verb->require_subcommand(1);
  const auto options = std::make_shared<ScreenAction>();
  const auto action = [&](const char* name, const char* help) {
    CLI::App* made = verb->add_subcommand(name, help);
    addScreensOption(*made, options->file);
    return made;
  };
  CLI::App* adding = action("add", "Make a token for a screen, and tell the address that sets it up");
  adding->add_option("NAME", options->name, "What the screen is called")->required();
  adding->add_option("--url", options->url, "Address of the show as that screen has it (else this machine's)")
      ->type_name("ADDRESS");
  adding->callback([options, &environment] { add(*options, environment); });
  action("list", "Tell the names of all screens")->callback([options] { list(*options); });
  CLI::App* revoking = action("revoke", "Let a screen look no more; a running show cuts it off at once");
  revoking->add_option("NAME", options->name, "What the screen is called")->required();
  revoking->callback([options] { revoke(*options); });
}

}  // namespace app
