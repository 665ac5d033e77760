#include "platform/InputFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <utility>

namespace platform {
namespace {

/// Shared locks of both kinds, for as long as it lives. File systems that know
/// no locks are left alone.
class SharedLock {
 public:
  explicit SharedLock(const FileHandle& file) : descriptor_(file.descriptor()) {
    const bool free = ::flock(descriptor_, LOCK_SH | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (!free || !setRecordLock(F_RDLCK)) {
      ::flock(descriptor_, LOCK_UN);
      failOnFile(file.path(), "is locked by another program");
    }
  }
  ~SharedLock() {
    setRecordLock(F_UNLCK);
    ::flock(descriptor_, LOCK_UN);
  }
  SharedLock(const SharedLock&) = delete;
  SharedLock& operator=(const SharedLock&) = delete;

 private:
  bool setRecordLock(short type) const {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    return ::fcntl(descriptor_, F_OFD_SETLK, &lock) == 0 || (errno != EAGAIN && errno != EACCES);
  }

  int descriptor_;
};

/// A large buffer comes faster in large pages, where the system has them.
void preferLargePages(char* data, std::size_t size) {
  constexpr std::size_t PageSize = std::size_t{2} << 20U;
  void* begin = data;
  if (std::align(PageSize, PageSize, begin, size) != nullptr) {
    ::madvise(begin, size / PageSize * PageSize, MADV_HUGEPAGE);
  }
}

struct stat statusOf(const FileHandle& file) {
  struct stat status {};
  if (::fstat(file.descriptor(), &status) != 0) failOnFile(file.path(), "read", errno);
  return status;
}

}  // namespace

/// Not waiting for a writer of a pipe, which would hold up the program.
InputFile::InputFile(std::string path) : file_(std::move(path), O_RDONLY | O_NONBLOCK) {
  const mode_t mode = statusOf(file_).st_mode;
  if (S_ISDIR(mode)) failOnFile(file_.path(), "is a folder, not a file");
  if (!S_ISREG(mode)) failOnFile(file_.path(), "is a device or a pipe, not a file");
  const SharedLock probe(file_);
}

host::Bytes InputFile::read(const std::function<void()>& gettingOn) {
  const SharedLock lock(file_);
  const auto size = static_cast<std::uint64_t>(statusOf(file_).st_size);
  if (size > MaximumSize) {
    failOnFile(file_.path(),
               "has " + std::to_string(size) + " bytes; files of more than 256 MiB are not read");
  }
  host::Bytes bytes{std::make_unique_for_overwrite<char[]>(size), 0};
  preferLargePages(bytes.data.get(), size);
  constexpr std::size_t Piece = std::size_t{1} << 20U;
  while (bytes.size < size) {
    const ssize_t count =
        ::pread(file_.descriptor(), bytes.data.get() + bytes.size,
                std::min<std::size_t>(size - bytes.size, Piece), static_cast<off_t>(bytes.size));
    if (count == 0) break;  // it became shorter
    if (count > 0) {
      bytes.size += static_cast<std::size_t>(count);
      gettingOn();
    } else if (errno != EINTR) {
      failOnFile(file_.path(), "read", errno);
    }
  }
  return bytes;
}

}  // namespace platform
