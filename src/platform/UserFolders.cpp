#include "platform/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>

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

std::string either(const std::string& ofService, const std::string& ofUser) {
  return ofService.empty() ? ofUser : ofService;
}

}  // namespace

std::string serviceFolder(const char* variable) {
  const char* const named = std::getenv(variable);
  if (named == nullptr || *named != '/') return {};
  const std::string_view all = named;
  return std::string(all.substr(0, all.find(':')));
}

std::string configFolder() {
  return either(serviceFolder("CONFIGURATION_DIRECTORY"), baseFolder("XDG_CONFIG_HOME", ".config"));
}

std::string cacheFolder() {
  return either(serviceFolder("CACHE_DIRECTORY"), baseFolder("XDG_CACHE_HOME", ".cache"));
}

std::string stateFolder() {
  return either(serviceFolder("STATE_DIRECTORY"), baseFolder("XDG_STATE_HOME", ".local/state"));
}

}  // namespace platform
