#include "opc/SavingFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <system_error>
#include <thread>

namespace opc {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Prefix = ".lumenfold.";
constexpr std::string_view Unique = "XXXXXX";

bool isLockedElsewhere(int descriptor) {
  return ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

}  // namespace

SavingFile::SavingFile(const fs::path& target)
    : path_((target.parent_path() / std::string(Prefix).append(Unique)).string()),
      descriptor_(::mkostemp(path_.data(), O_CLOEXEC)) {
  if (!descriptor_.isOpen()) {
    path_.clear();
    return;
  }
  ::flock(descriptor_.get(), LOCK_EX | LOCK_NB);
  lock_.reset(::fcntl(descriptor_.get(), F_DUPFD_CLOEXEC, 0));
}

SavingFile::~SavingFile() {
  if (!path_.empty()) ::unlink(path_.c_str());
}

bool SavingFile::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor_.get(), bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool SavingFile::close() { return ::close(descriptor_.release()) == 0; }

bool SavingFile::renameTo(const fs::path& target, bool replacing) {
  const auto rename = [&](unsigned flags) {
    return ::renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, target.c_str(), flags) == 0;
  };
  const bool renamed = rename(replacing ? 0U : RENAME_NOREPLACE) ||
                       (!replacing && (errno == EINVAL || errno == ENOSYS) && rename(0));
  if (renamed) path_.clear();
  return renamed;
}

bool SavingFile::look(struct stat& status) const { return ::fstat(lock_.get(), &status) == 0; }

SavingLock::SavingLock(const fs::path& folder)
    : descriptor_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  constexpr int Attempts = 500;
  constexpr std::chrono::milliseconds Pause{10};
  for (int i = 0; descriptor_.isOpen() && i < Attempts; ++i) {
    isBusy_ = isLockedElsewhere(descriptor_.get());
    if (!isBusy_) return;
    std::this_thread::sleep_for(Pause);
  }
}

void removeAbandoned(const fs::path& folder) {
  constexpr std::time_t Old = 60;
  std::error_code stopped;
  for (fs::directory_iterator entry(folder, stopped), end; !stopped && entry != end;
       entry.increment(stopped)) {
    const std::string name = entry->path().filename().string();
    if (!name.starts_with(Prefix) || name.size() != Prefix.size() + Unique.size()) continue;
    const process::Descriptor file(
        ::open(entry->path().c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    const bool isAbandoned = file.isOpen() && ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
                             status.st_mtim.tv_sec + Old < std::time(nullptr) &&
                             ::flock(file.get(), LOCK_EX | LOCK_NB) == 0;
    if (isAbandoned) ::unlink(entry->path().c_str());
  }
}

}  // namespace opc
