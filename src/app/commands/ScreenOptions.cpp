#include "app/commands/ScreenOptions.h"

#include <iostream>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Token.h"

namespace app {

StaleData staleDataOf(const std::string& option) {
  const std::string setting = LF2000::modGlobalFunctions::InfoSetting("StaleData");
  const std::string& name = option.empty() ? setting : option;
  if (name.empty()) return StaleData::Keep;
  if (const auto known = staleDataNamed(name)) return *known;
  fail((option.empty() ? "The setting StaleData" : "--stale") +
       std::string(" must be keep, mark or blank, not \"") + name + "\".");
}

web::Options screensServerOf(const ServerOptions& options, const HubOptions& hub, const Token& token) {
  web::Options server = serverOf(options, token, ScreenConnections);
  addHubsTo(server, hub);
  return server;
}

void announceScreens(const web::Server& server, const Token& token, const ServerOptions& options,
                     Environment& environment) {
  std::cout << "Screen:   " << server.url() << '\n';
  if (const auto network = networkUrl(options, environment, server.port())) {
    std::cout << "Network:  " << *network << '\n';
  }
  std::cout << "Status:   " << server.url() << "status\n";
  if (token.isNew) {
    std::cout << "Operator: " << server.url() << "#token=" << token.value << '\n'
              << "Remote:   " << server.url() << "remote#token=" << token.value << '\n';
  }
  std::cout << std::flush;
  openWhenWanted(options, environment, server.url());
}

void tellOfErrors() {
  if (!LF2000::modErrors::ErrorsOccurred) return;
  std::cerr << "lumenfold: there were errors during the show; see " << LF2000::modErrors::ErrorLogFile()
            << '\n';
}

}  // namespace app
