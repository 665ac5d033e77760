#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <ctime>
#include <string>
#include <unordered_map>

namespace platform {

/// Times of files that differ whenever the files do. The time of the last change
/// alone does not tell: many file systems keep whole seconds, and copies may bring
/// their time along.
class FileDates {
 public:
  /// The time of the last change. When only something else of the file is another
  /// than at the last call (device, inode, size, time of the status), it is moved
  /// within its half of the second, so that it rounds to the same one.
  [[nodiscard]] std::timespec of(const std::string& file, const struct stat& status);

 private:
  struct Known {
    explicit Known(const struct stat& status);
    [[nodiscard]] bool hasSameTime(const Known& other) const;
    [[nodiscard]] bool hasSameRest(const Known& other) const;

    std::timespec changed;
    std::timespec statusChanged;
    std::uint64_t device;
    std::uint64_t inode;
    std::int64_t size;
    long moves = 0;
  };
  std::unordered_map<std::string, Known> known_;
};

}  // namespace platform
