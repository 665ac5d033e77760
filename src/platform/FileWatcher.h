#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/file_watch.h"
#include "platform/EventLoop.h"

namespace platform {

/// Watches files by inotify(7), through the folders that they lie in: files come by being renamed. A folder
/// that is not there, or for which no watch is left, is tried again each time its files are to be watched.
class FileWatcher final : public host::FileWatcher {
 public:
  /// The path of a file as this system knows it; may throw.
  using LocalPath = std::function<std::string(std::string_view path)>;
  /// Whether such a path, links followed, lies on this machine: others do not tell of their changes.
  using IsLocal = std::function<bool(const std::string& path)>;

  /// The loop outlives this object and its watches.
  FileWatcher(EventLoop& loop, LocalPath localPath, IsLocal isLocal)
      : loop_(loop), localPath_(std::move(localPath)), isLocal_(std::move(isLocal)) {}

  [[nodiscard]] std::unique_ptr<host::FileWatch> CreateWatch(
      std::function<void(const std::string& path)> changed) override;

 private:
  EventLoop& loop_;
  LocalPath localPath_;
  IsLocal isLocal_;
};

}  // namespace platform
