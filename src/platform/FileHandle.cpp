#include "platform/FileHandle.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include "basic/Error.h"

namespace platform {
namespace {

std::int32_t numberOf(int errorNumber) {
  constexpr std::int32_t PermissionDenied = 70;
  switch (errorNumber) {
    case ENOENT:
      return static_cast<std::int32_t>(basic::RuntimeError::FileNotFound);
    case ENOTDIR:
      return static_cast<std::int32_t>(basic::RuntimeError::PathNotFound);
    case EACCES:
    case EPERM:
      return PermissionDenied;
    default:
      return basic::AdapterError;
  }
}

std::string reasonOf(int errorNumber) {
  switch (errorNumber) {
    case ENOENT:
      return "there is no such file or folder";
    case EACCES:
    case EPERM:
      return "permission denied";
    case EISDIR:
      return "it is a folder";
    default:
      return std::strerror(errorNumber);
  }
}

}  // namespace

void failOnFile(const std::string& path, const std::string& doing, int errorNumber) {
  throw basic::Error(numberOf(errorNumber), "Lumenfold",
                     "'" + path + "' cannot be " + doing + ": " + reasonOf(errorNumber) + ".");
}

void failOnFile(const std::string& path, const std::string& reason) {
  throw basic::Error(basic::AdapterError, "Lumenfold", "'" + path + "' " + reason + ".");
}

FileHandle::FileHandle(std::string path, int flags, unsigned mode)
    : path_(std::move(path)), descriptor_(::open(path_.c_str(), flags | O_CLOEXEC, mode)) {
  if (descriptor_ < 0) failOnFile(path_, "opened", errno);
}

FileHandle::~FileHandle() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

FileHandle::FileHandle(FileHandle&& other) noexcept
    : path_(std::move(other.path_)), descriptor_(std::exchange(other.descriptor_, -1)) {}

void FileHandle::close() {
  if (::close(std::exchange(descriptor_, -1)) != 0) failOnFile(path_, "written", errno);
}

}  // namespace platform
