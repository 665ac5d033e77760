#include "process/TemporaryFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>

namespace process {
namespace {

namespace fs = std::filesystem;

/// What these folders alone are called: whatever bears the name and nobody holds is removed.
constexpr std::string_view Prefix = "lumenfold-work.";
constexpr std::string_view Unique = "XXXXXX";

Descriptor openFolder(const fs::path& path) {
  return Descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

/// Of this user, locked by nobody, and not made just now by somebody who has yet
/// to lock it.
bool isAbandoned(int folder) {
  constexpr std::time_t Old = 60;
  struct stat status {};
  return ::fstat(folder, &status) == 0 && status.st_uid == ::geteuid() &&
         status.st_mtim.tv_sec + Old < std::time(nullptr) && ::flock(folder, LOCK_EX | LOCK_NB) == 0;
}

void removeAbandoned(const fs::path& among) {
  std::error_code stopped;
  for (fs::directory_iterator entry(among, stopped), end; !stopped && entry != end;
       entry.increment(stopped)) {
    const std::string name = entry->path().filename().string();
    if (!name.starts_with(Prefix) || name.size() != Prefix.size() + Unique.size()) continue;
    const Descriptor folder = openFolder(entry->path());
    if (!folder.isOpen()) continue;
    std::error_code ignored;
    if (isAbandoned(folder.get())) fs::remove_all(entry->path(), ignored);
  }
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  const fs::path among = fs::temp_directory_path();
  removeAbandoned(among);
  std::string name = (among / std::string(Prefix).append(Unique)).string();
  if (::mkdtemp(name.data()) == nullptr) {
    throw fs::filesystem_error("no temporary folder can be made", name,
                               std::error_code(errno, std::generic_category()));
  }
  path_ = name;
  lock_ = openFolder(path_);
  if (lock_.isOpen()) ::flock(lock_.get(), LOCK_SH | LOCK_NB);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace process
