#include "app/commands/ScreenOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Language.h"
#include "app/wiring/Token.h"
#include "basic/Counted.h"
#include "platform/Log.h"

namespace app {

StaleData staleDataOf(const std::string& option) {
  const std::string setting = LF2000::modGlobalFunctions::InfoSetting("StaleData");
  const std::string& name = option.empty() ? setting : option;
  if (name.empty()) return StaleData::Keep;
  if (const auto known = staleDataNamed(name)) return *known;
  fail((option.empty() ? "The setting StaleData" : "--stale") +
       std::string(" must be keep, mark or blank, not \"") + name + "\".");
}

web::Options screensServerOf(const ServerOptions& options, const HubOptions& hub, const Token& token,
                             const web::KnownScreens* screens) {
  web::Options server = serverOf(options, token, ScreenConnections);
  server.screens = screens;
  addHubsTo(server, hub);
  return server;
}

void tellLanguage() {
  const std::string language = unknownLanguage();
  if (!language.empty()) platform::tell(platform::Priority::Warning, "settings", language);
}

ServiceNotices::Standing standingOf(Stage& stage, const web::Server& server) {
  const web::Health health = stage.health();
  const auto deck = stage.deck();
  std::string status = "No deck is on show";
  if (deck) {
    status = std::filesystem::path(deck->FullName()).filename().string() + ": ";
    status += health.position > 0
                  ? "slide " + std::to_string(health.position) + " of " + std::to_string(deck->slideCount())
                  : "no slide is on show";
  }
  status += "; " + basic::Counted(server.screens() + server.screensAtHubs(), "screen");
  const auto stale =
      std::count_if(health.connections.begin(), health.connections.end(),
                    [](const web::ConnectionHealth& connection) { return connection.isStale; });
  if (stale > 0) status += "; " + basic::Counted(stale, "stale connection");
  return {health.isReady, status};
}

void addScreensOption(CLI::App& verb, std::string& file) {
  verb.add_option("--screens", file, "List of the screens that may look (else LUMENFOLD_SCREENS)")
      ->type_name("FILE")
      ->envname("LUMENFOLD_SCREENS");
}

std::unique_ptr<ScreenRegister> screensIn(const std::string& file, Environment& environment) {
  return file.empty() ? nullptr : std::make_unique<ScreenRegister>(environment.loop(), file);
}

void watchScreens(ScreenRegister* screens, web::Server& server) {
  if (screens == nullptr) return;
  screens->watch({[&server] { server.screensChanged(); },
                  [](const std::string& why) {
                    LF2000::modErrors::WriteErrorLog("The list of screens is as it was: " + why);
                  }});
}

void announceScreens(const web::Server& server, const Token& token, const ServerOptions& options,
                     Environment& environment) {
  announce("Screen:   " + server.url());
  if (const auto network = networkUrl(options, environment, server.port())) announce("Network:  " + *network);
  announce("Status:   " + server.url() + "status");
  announceSecret("Operator: ", server.url(), token);
  announceSecret("Remote:   ", server.url() + "remote", token);
  openWhenWanted(options, environment, server.url());
}

void tellOfErrors() {
  if (!LF2000::modErrors::ErrorsOccurred) return;
  platform::tell(platform::Priority::Notice, "show",
                 "there were errors during the show; see " + LF2000::modErrors::ErrorLogFile());
}

}  // namespace app
