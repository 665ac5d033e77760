// The verb log: where the logs are, and what they say.

#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>
#include <string>

#include "addin/support/modDebug.h"
#include "addin/support/modErrors.h"
#include "app/commands/Commands.h"
#include "platform/Console.h"

namespace app {

namespace {

/// False when there is no such file.
bool print(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) line.pop_back();
    std::cout << platform::forTerminal(line) << '\n';
  }
  return true;
}

}  // namespace

void addLogCommand(CLI::App& program, Environment&) {
  struct LogOptions {
    bool debug = false;
    bool pathOnly = false;
  };
  auto options = std::make_shared<LogOptions>();
  CLI::App* verb = program.add_subcommand("log", "Say where the errors log is, and show it");
  verb->add_flag("--debug", options->debug,
                 "The debug log instead (written while the setting Debug is True)");
  verb->add_flag("--path", options->pathOnly, "Print its path only");
  verb->callback([options] {
    const std::string path =
        options->debug ? LF2000::modDebug::DebugLogFile() : LF2000::modErrors::ErrorLogFile();
    std::cout << path << '\n';
    if (options->pathOnly) return;
    const bool hasOlder = print(LF2000::modErrors::OlderLogFile(path));
    if (!print(path) && !hasOlder) std::cout << "(nothing was logged yet)\n";
  });
}

}  // namespace app
