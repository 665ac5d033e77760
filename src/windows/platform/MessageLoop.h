#pragma once

#include <functional>
#include <memory>

#include "host/services.h"

namespace windows::platform {

/// The message loop of the thread that makes it, whoever runs it: the host, a dialog, DoEvents. Timers and
/// what is posted arrive as messages of a window that nobody sees. What they run counts as a call from
/// outside (windows/com/Guard.h), and what it throws ends there. Everything is called on that thread.
class MessageLoop final : public host::Loop {
 public:
  /// How much later than its interval a timer fires, at least, in milliseconds.
  static constexpr int Lateness = 8;

  MessageLoop();
  ~MessageLoop() override;
  MessageLoop(const MessageLoop&) = delete;
  MessageLoop& operator=(const MessageLoop&) = delete;

  /// A timer fires once for all the times that it missed. It may outlive the loop, and fires no more then.
  [[nodiscard]] std::unique_ptr<host::Timer> CreateTimer(std::function<void()> handler) override;
  /// Dispatches what waits in the thread's queue, at most for some 50 ms; waits 1 ms for it when there is
  /// nothing. A message to quit is left for the host.
  void DoEvents() override;

  /// Runs the handler soon. What is left when the loop goes is dropped.
  void post(std::function<void()> handler);
  /// Runs it soon, when no other call from outside is under way.
  void postOutermost(std::function<void()> handler);

 private:
  class Window;
  class Timer;
  std::shared_ptr<Window> window_;
};

}  // namespace windows::platform
