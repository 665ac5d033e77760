// How a verb serves browsers: its options, what of them the server gets, and where people find it.

#include "app/commands/ServerOptions.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <limits>

#include "addin/support/modErrors.h"
#include "app/commands/NumberChecks.h"
#include "app/wiring/Environment.h"
#include "app/wiring/LogLine.h"
#include "app/wiring/Output.h"
#include "app/wiring/Token.h"
#include "platform/Console.h"
#include "platform/Descriptors.h"
#include "platform/Log.h"

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
  platform::tell(platform::Priority::Warning, "program",
                 "the system lets this program open " + std::to_string(allowed) + " files, so it takes " +
                     std::to_string(web.maxConnections) +
                     " connections at a time; raise the hard limit (ulimit -Hn) to " +
                     std::to_string(wanted) + " for all of them.");
}

}  // namespace

void addServerOptions(CLI::App& verb, ServerOptions& options) {
  verb.add_option("--port", options.port, "Port to listen on; 0 takes any free one")
      ->capture_default_str()
      ->type_name("PORT")
      ->check(wholeNumber(0, std::numeric_limits<std::uint16_t>::max()));
  verb.add_option("--bind", options.bind, "Address to listen on; 0.0.0.0 for every network")
      ->capture_default_str()
      ->type_name("ADDRESS");
  verb.add_option("--name", options.names, "A further host name under which browsers may ask")
      ->type_name("HOST");
  verb.add_option("--token-file", options.tokenFile,
                  "File with the token that changing anything takes (else LUMENFOLD_TOKEN, else a new one)")
      ->type_name("FILE");
  verb.add_option(
          "--config", options.config,
          "File with lines KEY = VALUE for what the command line does not say: deck, port and all others")
      ->type_name("FILE");
  verb.add_option(
          "--log", options.log,
          "Form of what is told on standard error: text, or json with one object a line; in the journal of "
          "systemd lines have their priorities")
      ->type_name("FORM")
      ->check(CLI::IsMember({"text", "json"}));
  verb.add_flag("--open", options.open, "Start a browser");
}

void addPerAddressOption(CLI::App& verb, ServerOptions& options) {
  verb.add_option("--per-address", options.perAddress,
                  "Connections that one address may hold (else half of all); this machine may hold all")
      ->type_name("NUMBER")
      ->check(wholeNumber(1));
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
    platform::tell(platform::Priority::Error, "request", "a request failed: " + error.description);
  };
  return web;
}

void beginLog(const ServerOptions& options) {
  using platform::LogForm;
  if (options.log == "json") platform::useLogForm(LogForm::Json);
  if (options.log == "text") platform::useLogForm(LogForm::Text);
  if (platform::logForm() == LogForm::Text) return LF2000::modErrors::AlsoTell({});
  LF2000::modErrors::AlsoTell([](std::string_view text) {
    platform::tell(platform::Priority::Error, "show", joinedLines(std::string(withoutErrorNumber(text))));
  });
}

void announce(const std::string& line) {
  if (platform::logForm() == platform::LogForm::Json) {
    platform::tell(platform::Priority::Information, "program", line);
  } else {
    std::cout << platform::forTerminal(line) << '\n' << std::flush;
  }
}

void announceSecret(const std::string& label, const std::string& address, const Token& token) {
  if (!token.isNew || platform::logForm() == platform::LogForm::Json) return;
  announce(label + address + "#token=" + token.value);
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
  platform::tell(platform::Priority::Warning, "program",
                 "no browser could be started; open " + address.substr(0, address.find('#')) + " yourself.");
}

}  // namespace app
