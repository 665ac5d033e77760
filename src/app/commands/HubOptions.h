#pragma once

#include <string>
#include <vector>

#include "web/http/Options.h"
#include "web/publish/Publisher.h"

namespace CLI {
class App;
}

namespace app {

/// What the verbs that serve screens have in common for screens beyond a hub (docs/hubs.md).
struct HubOptions {
  std::vector<std::string> publish;
  std::string tokenFile;
  std::vector<std::string> hubs;

  bool operator==(const HubOptions&) const = default;
};

/// Adds --publish, --publish-token-file and --hub to a verb; `options` outlives it.
void addHubOptions(CLI::App& verb, HubOptions& options);

/// Where the show publishes: by the options, else by LUMENFOLD_PUBLISH, else by the setting Publish,
/// addresses parted by blanks; the token likewise, by file (LUMENFOLD_PUBLISH_TOKEN_FILE, PublishTokenFile),
/// or as LUMENFOLD_PUBLISH_TOKEN. When a hub goes and comes back is told on standard error. Throws
/// basic::Error for what is no address and a file that cannot be read.
web::PublisherOptions publisherOf(const HubOptions& options);
/// Lets the server know where browsers find the hubs: by the options, LUMENFOLD_HUB or the setting Hub.
/// Throws basic::Error for what is no address.
void addHubsTo(web::Options& server, const HubOptions& options);

}  // namespace app
