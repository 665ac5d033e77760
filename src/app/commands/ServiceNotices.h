#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/services.h"
#include "platform/EventLoop.h"
#include "platform/ServiceManager.h"

namespace app {

/// Tells the service manager, where one started the program, how a serving verb does: that it is ready, what
/// is on, that its loop turns, when it reads its settings again, and that it ends. The signs of life come
/// from the loop itself: a handler that hangs ends them, and the manager the program.
class ServiceNotices {
 public:
  struct Standing {
    /// Once; what comes later is a matter of `status`.
    bool isReady = false;
    /// What is on, in a line.
    std::string status;
  };

  /// `look` is called from the loop, every second or oftener. The loop outlives this object.
  ServiceNotices(platform::EventLoop& loop, std::function<Standing()> look);

  /// Between the two the manager takes the service for busy with its settings.
  void reloading();
  void reloaded();
  void stopping();

 private:
  void tick();

  platform::ServiceManager manager_;
  std::function<Standing()> look_;
  std::unique_ptr<host::Timer> timer_;
  bool isReady_ = false;
  bool isReloading_ = false;
  bool isStopping_ = false;
  std::string status_;
};

}  // namespace app
