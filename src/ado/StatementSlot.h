#pragma once

#include <atomic>
#include <mutex>

namespace ado {

/// Where a worker shows the statement that it executes, so that another thread
/// can interrupt it. The statement stays valid while interrupt() looks at it.
class StatementSlot {
 public:
  void show(void* statement);
  /// Before the statement is freed.
  void hide();

  /// From here on the worker is to stop; it looks at this between rows.
  void stop() { stopped_ = true; }
  [[nodiscard]] bool stopped() const { return stopped_; }
  /// Has the driver break off what it executes, again and again until the
  /// worker has left: a driver ignores the wish before the server has begun.
  /// May block as long as a server does not answer; never call it on the loop.
  void interrupt();

 private:
  std::mutex mutex_;
  void* statement_ = nullptr;
  std::atomic<bool> stopped_ = false;
};

}  // namespace ado
