#include "platform/Module.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "platform/UserFolders.h"

namespace platform {

std::string Module::Title() const { return ApplicationName; }
std::string Module::EXEName() const { return "lumenfold"; }

namespace {

namespace fs = std::filesystem;

/// Empty when the system does not tell it.
fs::path programFolder() {
  std::error_code failure;
  return fs::read_symlink("/proc/self/exe", failure).parent_path();
}

/// What came with an installed program; empty for one that lies where it was built.
fs::path installedFiles() {
  const fs::path files = programFolder().parent_path() / "share/lumenfold";
  std::error_code failure;
  return fs::is_directory(files, failure) ? files : fs::path();
}

}  // namespace

std::string helpFolder() {
  const fs::path installed = installedFiles();
  return ((installed.empty() ? programFolder() : installed) / "help").string();
}

std::string Module::Path() const {
  if (std::string logs = serviceFolder("LOGS_DIRECTORY"); !logs.empty()) return logs;
  if (std::string folder = programFolder().string();
      installedFiles().empty() && !folder.empty() && ::access(folder.c_str(), W_OK) == 0) {
    return folder;
  }
  std::string folder = stateFolder();
  std::error_code failure;
  // Whoever writes there without it gets the error that says why.
  fs::create_directories(folder, failure);
  return folder;
}

std::int32_t Module::Major() const { return LUMENFOLD_VERSION_MAJOR; }
std::int32_t Module::Minor() const { return LUMENFOLD_VERSION_MINOR; }
std::int32_t Module::Revision() const { return LUMENFOLD_VERSION_REVISION; }

std::string Module::Licences() const {
  return "What it is made with comes under licences of its own: pugixml, nlohmann-json (MIT); libzip, CLI11 "
         "(BSD, 3 clauses); Boost (Boost Software License 1.0); FreeType (FTL); Fontconfig (MIT); ICU "
         "(Unicode); zlib (zlib); SQLite (public domain); unixODBC (LGPL 2.1); OpenSSL, Apache ECharts "
         "(Apache License 2.0); libcurl (curl). Their texts come with their packages.";
}

}  // namespace platform
