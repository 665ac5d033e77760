#pragma once

#include <string>

#include "app/commands/HubOptions.h"
#include "app/commands/ServerOptions.h"
#include "app/commands/ServiceNotices.h"
#include "app/show/Stage.h"
#include "app/show/StaleValues.h"
#include "web/show/Server.h"

namespace app {

// What the verbs that serve screens have in common.

constexpr std::uint16_t ScreensPort = 2000;
constexpr std::size_t ScreenConnections = 2000;
/// How long slides may stay that have no timing, in seconds.
constexpr double ShortestStay = 0.1;
constexpr double LongestStay = 86'400;

/// What --stale says, else the setting StaleData; throws basic::Error for another word.
StaleData staleDataOf(const std::string& option);

/// How the server of screens is to listen, and the hubs that it has; as serverOf() and addHubsTo().
web::Options screensServerOf(const ServerOptions& options, const HubOptions& hub, const Token& token);

/// Says where people find the screens, and steer them.
void announceScreens(const web::Server& server, const Token& token, const ServerOptions& options,
                     Environment& environment);

/// Says so when the environment names a language that is not known.
void tellLanguage();

/// How a show stands, for the service manager.
ServiceNotices::Standing standingOf(Stage& stage, const web::Server& server);

/// Says where the errors of the show are to be read, if there were any.
void tellOfErrors();

}  // namespace app
