#pragma once

#include <string>

namespace platform {

/// The program's name towards its user: of its folders, its messages and the
/// application whose settings it reads.
inline constexpr const char* ApplicationName = "Corvane Lumenfold 2000";

/// The folder that the service manager has given a service: by the variables STATE_DIRECTORY, LOGS_DIRECTORY
/// and their like (systemd.exec(5)), the first of several. Empty without one.
std::string serviceFolder(const char* variable);

// Where a service has a folder of the kind, that is the folder; otherwise:

/// The user's folder for settings: "$XDG_CONFIG_HOME" or "~/.config" and the
/// application's name. It need not exist.
std::string configFolder();

/// The user's folder for what the program writes about itself:
/// "$XDG_STATE_HOME" or "~/.local/state" and the application's name. It need
/// not exist.
std::string stateFolder();

/// The user's folder for what can be made again: "$XDG_CACHE_HOME" or "~/.cache"
/// and the application's name. It need not exist.
std::string cacheFolder();

}  // namespace platform
