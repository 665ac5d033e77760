// Files read whole, and replaced so that a crash leaves the old one or the new.

#include "opc/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "opc/Failure.h"
#include "opc/SavingFile.h"
#include "process/Descriptor.h"

namespace opc {
namespace {

namespace fs = std::filesystem;

FileState stateOf(const struct stat& status) {
  return {status.st_dev,         status.st_ino,          static_cast<std::uint64_t>(status.st_size),
          status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec,
          status.st_ctim.tv_nsec};
}

[[noreturn]] void failWrite(const std::string& path, const std::string& why) {
  fail(basic::InQuotes(path) + " cannot be saved: " + why);
}

/// The file that a path means, through symbolic links; it need not exist.
fs::path resolved(const std::string& path) {
  std::error_code error;
  fs::path target = fs::weakly_canonical(fs::absolute(path), error);
  return error ? fs::path(path) : target;
}

}  // namespace

FileContent readContent(const std::string& path, std::uint64_t maximum,
                        const std::function<void()>& gettingOn) {
  const process::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.get(), &status) != 0) fail(std::strerror(errno));
  if (S_ISDIR(status.st_mode)) fail("it is a folder");
  if (!S_ISREG(status.st_mode)) fail("it is no regular file");
  if (static_cast<std::uint64_t>(status.st_size) > maximum) {
    fail("it has " + std::to_string(status.st_size >> 20U) + " MB, more than the " +
         std::to_string(maximum >> 20U) + " MB allowed");
  }
  FileContent content{std::string(static_cast<std::size_t>(status.st_size), '\0'), stateOf(status)};
  constexpr std::size_t Piece = std::size_t{1} << 20U;
  std::size_t got = 0;
  while (got < content.bytes.size()) {
    const ssize_t count =
        ::read(file.get(), content.bytes.data() + got, std::min(content.bytes.size() - got, Piece));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail(std::strerror(errno));
    if (count == 0) break;
    got += static_cast<std::size_t>(count);
    gettingOn();
  }
  content.bytes.resize(got);
  return content;
}

FileContent readFile(const std::string& path, std::uint64_t maximum,
                     const std::function<void()>& gettingOn) try {
  return readContent(path, maximum, gettingOn);
} catch (const basic::Error& error) {
  fail(basic::InQuotes(path) + " cannot be read: " + error.description);
}

std::optional<FileState> stateOfFile(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return stateOf(status);
}

void flushFolder(const std::string& folder) {
  const process::Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened.isOpen()) ::fsync(opened.get());
}

FileState replaceFile(const std::string& path, std::string_view bytes, const FileState* expected) {
  const fs::path target = resolved(path);
  struct stat old {};
  const auto look = [&] {
    if (::stat(target.c_str(), &old) != 0) return false;
    if (!S_ISREG(old.st_mode)) failWrite(path, "it is no regular file");
    if (::access(target.c_str(), W_OK) != 0) failWrite(path, "the file is write-protected");
    if (expected != nullptr && stateOf(old) != *expected) {
      failWrite(path,
                "another program has changed the file since it was opened. Save under another name, or open "
                "it again.");
    }
    return true;
  };
  const bool exists = look();
  removeAbandoned(target.parent_path());

  SavingFile saving(target);
  if (saving.descriptor() < 0) {
    failWrite(path, std::string("no file can be created in its folder: ") + std::strerror(errno));
  }
  if (exists && ::fchown(saving.descriptor(), old.st_uid, old.st_gid) != 0)
    errno = 0;  // not allowed: stays ours
  const mode_t mask = ::umask(0);
  ::umask(mask);
  const mode_t mode = exists ? old.st_mode & 07777U : 0666U & ~mask;
  struct stat written {};
  if (!saving.write(bytes) || ::fchmod(saving.descriptor(), mode) != 0 || ::fsync(saving.descriptor()) != 0 ||
      ::fstat(saving.descriptor(), &written) != 0 || !saving.close()) {
    failWrite(path, std::strerror(errno));
  }
  {
    const SavingLock lock(target.parent_path());
    if (lock.isBusy()) failWrite(path, "another program keeps its folder locked");
    // Somebody may have saved while this was written.
    const bool isThere = look();
    if (!saving.renameTo(target, /*replacing=*/isThere || expected == nullptr)) {
      failWrite(path, errno == EEXIST ? "another program has made the file anew" : std::strerror(errno));
    }
    // The rename itself has changed the status.
    static_cast<void>(saving.look(written));
  }
  flushFolder(target.parent_path().string());
  return stateOf(written);
}

}  // namespace opc
