#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "host/services.h"
#include "platform/EventLoop.h"

namespace app {

/// The end of a verb that serves browsers: what is on its way is sent, the doors close, everybody is told,
/// and the loop stops; after two seconds also when somebody has not heard it.
class ServerEnd {
 public:
  /// `close` ends the server's streams; `listening` says how many are still open. `loop` outlives this.
  ServerEnd(platform::EventLoop& loop, std::function<void()> close, std::function<std::size_t()> listening);

  /// Closes the doors after so many milliseconds.
  void beginIn(std::int32_t milliseconds);

 private:
  void tick();

  platform::EventLoop& loop_;
  std::function<void()> close_;
  std::function<std::size_t()> listening_;
  std::unique_ptr<host::Timer> timer_;
  bool closed_ = false;
  int waited_ = 0;
};

}  // namespace app
