#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "web/http/Options.h"

namespace CLI {
class App;
}

namespace app {

class Environment;
struct Token;

/// What the verbs that serve browsers have in common on the command line.
struct ServerOptions {
  std::uint16_t port = 0;
  std::string bind = "127.0.0.1";
  std::vector<std::string> names;
  std::string tokenFile;
  /// A file with what the command line does not say (SettingsFile.h).
  std::string config;
  /// "json" or "text"; nothing for what suits whoever reads standard error.
  std::string log;
  std::optional<std::size_t> perAddress;
  /// The list of screens that may look; empty: everybody may.
  std::string screens;
  bool open = false;

  bool operator==(const ServerOptions&) const = default;
};

/// Adds to a verb --port (with the default that `options` has), --bind, --name, --token-file, --config, --log
/// and --open; `options` outlives it.
void addServerOptions(CLI::App& verb, ServerOptions& options);
/// Adds --per-address: for verbs with many screens.
void addPerAddressOption(CLI::App& verb, ServerOptions& options);

/// How the server is to listen. It takes `connections` at one time, or as many as the system leaves room for
/// beside the program's own files, which is told; failures of requests are told as well.
web::Options serverOf(const ServerOptions& options, const Token& token, std::size_t connections);

/// Standard error becomes the log that the options ask for. Where programs read it, every line of the errors
/// log stands there as well. Called before the settings file is read, and with what stands there.
void beginLog(const ServerOptions& options);

/// A line on standard output for who starts the verb; with a log of JSON, there.
void announce(const std::string& line);
/// The address by which who holds the token steers. One that was made for this run is told on standard output
/// alone.
void announceSecret(const std::string& label, const std::string& address, const Token& token);

/// What other machines call this one, with the port, when the server listens to them all.
std::optional<std::string> networkUrl(const ServerOptions& options, Environment& environment,
                                      std::uint16_t port);

/// Starts a browser on the address when the options say so; tells when there is none.
void openWhenWanted(const ServerOptions& options, Environment& environment, const std::string& address);

}  // namespace app
