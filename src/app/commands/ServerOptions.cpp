// How a verb serves browsers: its options, what of them the server gets, and where people find it.

#include "app/commands/ServerOptions.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "app/wiring/Environment.h"
#include "app/wiring/Token.h"
#include "platform/Console.h"
#include "platform/Descriptors.h"

namespace app {

namespace {

/// Browsers must not take the descriptors that data files, databases, their drivers and the logs need.
void limitConnections(web::Options& web) {
  constexpr std::size_t OwnFiles = 256;
  constexpr std::size_t Fewest = 16;
  const std::size_t kept = OwnFiles + web.beyond();
  const std::size_t wanted = web.maxConnections + kept;
  const std::size_t allowed = platform::allowDescriptors(wanted);
  if (allowed >= wanted) return;
  web.maxConnections = allowed > kept + Fewest ? allowed - kept : Fewest;
  std::cerr << "lumenfold: the system lets this program open " << allowed << " files, so it takes "
            << web.maxConnections << " connections at a time; raise the hard limit (ulimit -Hn) to " << wanted
            << " for all of them.\n";
}

}  // namespace

void addServerOptions(CLI::App& verb, ServerOptions& options) {
  verb.add_option("--port", options.port, "Port to listen on")->capture_default_str();
  verb.add_option("--bind", options.bind, "Address to listen on; 0.0.0.0 for every network")
      ->capture_default_str();
  verb.add_option("--name", options.names, "A further host name under which browsers may ask");
  verb.add_option("--token-file", options.tokenFile,
                  "File with the token that changing anything takes (else LUMENFOLD_TOKEN, else a new one)");
  verb.add_option(
      "--config", options.config,
      "File with lines KEY = VALUE for what the command line does not say: deck, port and all others");
  verb.add_flag("--open", options.open, "Start a browser");
}

void addPerAddressOption(CLI::App& verb, ServerOptions& options) {
  verb.add_option("--per-address", options.perAddress,
                  "Connections that one address may hold (else half of all); this machine may hold all")
      ->check(CLI::PositiveNumber);
}

web::Options serverOf(const ServerOptions& options, const Token& token, std::size_t connections) {
  web::Options web;
  web.address = options.bind;
  web.port = options.port;
  web.token = token.value;
  web.allowedNames = options.names;
  web.maxConnections = connections;
  limitConnections(web);
  web.maxPerAddress = options.perAddress.value_or(web.maxConnections / 2);
  web.onError = [](const basic::Error& error) {
    std::cerr << "lumenfold: a request failed: " << platform::forTerminal(error.description) << '\n';
  };
  return web;
}

std::optional<std::string> networkUrl(const ServerOptions& options, Environment& environment,
                                      std::uint16_t port) {
  if (options.bind != "0.0.0.0" && options.bind != "::") return std::nullopt;
  const auto name = environment.shell().ComputerName();
  if (!name) return std::nullopt;
  return "http://" + *name + ":" + std::to_string(port) + "/";
}

void openWhenWanted(const ServerOptions& options, Environment& environment, const std::string& address) {
  if (!options.open || environment.shell().ShellExecute("open", address, 1)) return;
  // A token in the fragment has no place in a log.
  std::cerr << "lumenfold: no browser could be started; open " << address.substr(0, address.find('#'))
            << " yourself.\n";
}

}  // namespace app
