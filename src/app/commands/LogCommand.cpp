// The verb log: where the logs are, and what they say.

#include <CLI/CLI.hpp>
#include <cmath>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "addin/support/modDebug.h"
#include "addin/support/modErrors.h"
#include "app/commands/Commands.h"
#include "app/wiring/LogLine.h"
#include "basic/Format.h"
#include "basic/Locale.h"
#include "host/services.h"
#include "platform/Console.h"

namespace app {

namespace {

using Lines = std::vector<std::string>;

/// Nothing when there is no such file.
std::optional<Lines> linesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  Lines lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

/// Whether times are read as they were written. A log that was written with the dates of another country
/// would give wrong ones; its last entry is as old as the file.
bool areTimesUnderstood(const Lines& lines, const std::string& path) {
  constexpr double TwoSeconds = 2.0 / 86'400;
  for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
    const LogLine entry(*line);
    if (entry.time.empty()) continue;
    const auto date = entry.date();
    return date && std::abs(date->serial - host::Current().files->FileDateTime(path).serial) < TwoSeconds;
  }
  return false;
}

/// One line for each entry, with the date in the order that sorts.
bool print(const std::string& path) {
  const auto lines = linesOf(path);
  if (!lines) return false;
  const bool isUnderstood = areTimesUnderstood(*lines, path);
  std::string entry;
  const auto tell = [&entry] {
    if (!entry.empty()) std::cout << platform::forTerminal(entry) << '\n';
  };
  for (const std::string& line : *lines) {
    const LogLine parts(line);
    if (parts.time.empty()) {
      entry.append(entry.empty() || entry.ends_with(' ') ? "" : " ").append(parts.text);
      continue;
    }
    tell();
    const auto date = isUnderstood ? parts.date() : std::nullopt;
    entry = date ? basic::Format(*date, "yyyy-mm-dd hh:nn:ss", basic::Locale()) : std::string(parts.time);
    entry.append(" ").append(parts.text);
  }
  tell();
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
