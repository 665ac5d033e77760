#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>

namespace host {

/// Files whose next change somebody wants to hear of at once. A watch may be deaf: on drives of other
/// machines, or where the system's means are used up. So whoever must know looks as well.
class FileWatch {
 public:
  virtual ~FileWatch() = default;
  /// Watches these files, in place of those before, each until it has changed once. A file need not be
  /// there; it has changed when something was written or renamed there. What is watched before it is looked
  /// at does not change unnoticed. Paths as decks hold them. Raises nothing and does not wait: files of other
  /// machines, which could keep it waiting, are passed over.
  virtual void Files(const std::set<std::string>& paths) = 0;
};

/// Makes watches; it outlives them. Everything is called on one thread.
class FileWatcher {
 public:
  virtual ~FileWatcher() = default;
  /// A watch of no files. `changed` is called from the loop with the path as Files() had it; it must not
  /// throw, and is not called after the watch is gone.
  [[nodiscard]] virtual std::unique_ptr<FileWatch> CreateWatch(
      std::function<void(const std::string& path)> changed) = 0;
};

}  // namespace host
