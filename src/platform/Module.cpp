#include "platform/Module.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "platform/UserFolders.h"

namespace platform {

std::string Module::Title() const { return ApplicationName; }
std::string Module::EXEName() const { return "lumenfold"; }

std::string Module::Path() const {
  std::error_code failure;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", failure);
  if (!failure) {
    std::string folder = program.parent_path().string();
    if (::access(folder.c_str(), W_OK) == 0) return folder;
  }
  std::string folder = stateFolder();
  // Whoever writes there without it gets the error that says why.
  std::filesystem::create_directories(folder, failure);
  return folder;
}

std::int32_t Module::Major() const { return LUMENFOLD_VERSION_MAJOR; }
std::int32_t Module::Minor() const { return LUMENFOLD_VERSION_MINOR; }
std::int32_t Module::Revision() const { return LUMENFOLD_VERSION_REVISION; }

}  // namespace platform
