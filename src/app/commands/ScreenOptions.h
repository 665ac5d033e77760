#pragma once

#include <memory>
#include <string>

#include "app/commands/HubOptions.h"
#include "app/commands/ServerOptions.h"
#include "app/commands/ServiceNotices.h"
#include "app/screens/ScreenRegister.h"
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

/// How the server of screens is to listen, and the hubs that it has; as serverOf() and addHubsTo(). `screens`
/// is who may look; null for everybody.
web::Options screensServerOf(const ServerOptions& options, const HubOptions& hub, const Token& token,
                             const web::KnownScreens* screens);
/// Adds --screens to a verb, a file of which becomes `file`, else that of the variable LUMENFOLD_SCREENS.
void addScreensOption(CLI::App& verb, std::string& file);
/// The list in this file; null for no file. Throws basic::Error when it cannot be read.
std::unique_ptr<ScreenRegister> screensIn(const std::string& file, Environment& environment);
/// From now on the server lets in and cuts off whom the list says, and what is wrong with that is in the
/// errors log. The server outlives the loop's run.
void watchScreens(ScreenRegister* screens, web::Server& server);

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
