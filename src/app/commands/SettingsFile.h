#pragma once

#include <CLI/CLI.hpp>
#include <set>
#include <string>

namespace app {

/// The options of a verb that the command line gave.
std::set<std::string> optionsGiven(const CLI::App& verb);

/// Sets options of a verb from a settings file, such as that of a service:
///
///     # a comment, as is a line that begins with ;
///     deck = /srv/boards/departures.pptx
///     port = 2000
///     kiosk = yes
///
/// A key is the name of an option without its dashes, or of what the verb takes without a name ("deck"), in
/// any case. Flags are yes or no; an option that may be repeated has a line for each value. What is in
/// `given` is passed over: the command line goes first. A drive that does not answer holds up no show that
/// runs. Throws basic::Error that names file and line.
void takeSettings(CLI::App& verb, const std::string& file, const std::set<std::string>& given);

/// Throws CLI::RequiredError when neither the command line nor the settings gave what has this name.
void requireGiven(const char* name, const std::string& value);

/// What the command line gave, completed by the settings file that it names (ServerOptions::config); the file
/// is read anew by each call. `define` adds the options to a verb.
template <typename Options>
Options withSettings(const Options& line, const std::set<std::string>& given,
                     void (*define)(CLI::App& verb, Options& options)) {
  Options options = line;
  if (line.server.config.empty()) return options;
  CLI::App verb;
  define(verb, options);
  takeSettings(verb, line.server.config, given);
  return options;
}

}  // namespace app
