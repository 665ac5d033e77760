#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "host/file_watch.h"
#include "platform/EventLoop.h"

namespace platform {

/// Watches files by inotify(7), through the folders that they lie in: files come by being renamed. A folder
/// that is not there, or for which no watch is left, is tried again each time its files are to be watched.
class FileWatcher final : public host::FileWatcher {
 public:
  /// The path of a file as this system knows it; nothing where it lies, links followed, on another
  /// machine, which does not tell of its changes. May throw, and must not wait: what watches files is in the
  /// midst of its own work.
  using LocalPath = std::function<std::optional<std::string>(std::string_view path)>;

  /// The loop outlives this object and its watches.
  FileWatcher(EventLoop& loop, LocalPath localPath) : loop_(loop), localPath_(std::move(localPath)) {}

  [[nodiscard]] std::unique_ptr<host::FileWatch> CreateWatch(
      std::function<void(const std::string& path)> changed) override;

 private:
  EventLoop& loop_;
  LocalPath localPath_;
};

}  // namespace platform
