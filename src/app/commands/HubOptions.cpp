#include "app/commands/HubOptions.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <sstream>

#include "addin/support/modGlobalFunctions.h"
#include "app/wiring/Token.h"
#include "platform/Log.h"

namespace app {

namespace {

std::string surroundingsSay(const char* variable, const char* setting) {
  const char* const value = std::getenv(variable);
  return value && *value ? value : LF2000::modGlobalFunctions::InfoSetting(setting);
}

std::vector<std::string> chosen(const std::vector<std::string>& given, const char* variable,
                                const char* setting) {
  if (!given.empty()) return given;
  std::istringstream words(surroundingsSay(variable, setting));
  std::vector<std::string> addresses;
  for (std::string word; words >> word;) addresses.push_back(word);
  return addresses;
}

std::string tokenOf(const HubOptions& options) {
  if (!options.tokenFile.empty()) return readToken(options.tokenFile);
  const char* const given = std::getenv("LUMENFOLD_PUBLISH_TOKEN");
  if (given && *given) return given;
  const std::string file = surroundingsSay("LUMENFOLD_PUBLISH_TOKEN_FILE", "PublishTokenFile");
  return file.empty() ? "" : readToken(file);
}

}  // namespace

void addHubOptions(CLI::App& verb, HubOptions& options) {
  verb.add_option("--publish", options.publish, "Address of a hub's node that takes messages for its screens")
      ->type_name("ADDRESS")
      ->allow_extra_args(false);
  verb.add_option("--publish-token-file", options.tokenFile, "File with the token that the hub asks for")
      ->type_name("FILE");
  verb.add_option("--hub", options.hubs,
                  "Address at which browsers find a hub, or this show, for screens whose hub is gone")
      ->type_name("ADDRESS")
      ->allow_extra_args(false);
}

web::PublisherOptions publisherOf(const HubOptions& options) {
  web::PublisherOptions publisher;
  for (const std::string& address : chosen(options.publish, "LUMENFOLD_PUBLISH", "Publish")) {
    publisher.nodes.push_back(web::hubNodeAt(address));
  }
  if (publisher.nodes.empty()) return publisher;
  publisher.token = tokenOf(options);
  publisher.tell = [](const std::string& line) { platform::tell(platform::Priority::Warning, "hub", line); };
  return publisher;
}

void addHubsTo(web::Options& server, const HubOptions& options) {
  for (const std::string& address : chosen(options.hubs, "LUMENFOLD_HUB", "Hub")) {
    server.hubs.push_back(web::hubOriginOf(address));
  }
}

}  // namespace app
