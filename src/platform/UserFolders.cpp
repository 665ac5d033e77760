#include "platform/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace platform {
namespace {

std::string home() {
  if (const char* const named = std::getenv("HOME"); named != nullptr && *named == '/') return named;
  const passwd* const user = getpwuid(getuid());
  return user != nullptr ? user->pw_dir : "/";
}

/// The XDG Base Directory Specification has relative paths ignored.
std::string baseFolder(const char* variable, const char* underHome) {
  const char* const named = std::getenv(variable);
  const std::filesystem::path base = named != nullptr && *named == '/'
                                         ? std::filesystem::path(named)
                                         : std::filesystem::path(home()) / underHome;
  return (base / ApplicationName).string();
}

}  // namespace

std::string configFolder() { return baseFolder("XDG_CONFIG_HOME", ".config"); }

std::string cacheFolder() { return baseFolder("XDG_CACHE_HOME", ".cache"); }

std::string stateFolder() { return baseFolder("XDG_STATE_HOME", ".local/state"); }

}  // namespace platform
