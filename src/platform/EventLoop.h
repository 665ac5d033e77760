#pragma once

#include <functional>
#include <memory>

#include "basic/Error.h"
#include "host/services.h"

namespace boost::asio {
class io_context;
}

namespace platform {

/// The one loop of the program: timers, signals, what is posted, and whatever
/// else is attached to its context (the web server). Everything runs on the
/// thread that calls run() or DoEvents(); only post() and stop() may be called
/// from other threads.
class EventLoop final : public host::Loop {
 public:
  EventLoop();
  ~EventLoop() override;
  EventLoop(const EventLoop&) = delete;
  EventLoop& operator=(const EventLoop&) = delete;

  /// A timer fires once for all the times it missed while something else ran. It
  /// does not outlive the loop's work: the loop must be there when it is destroyed.
  [[nodiscard]] std::unique_ptr<host::Timer> CreateTimer(std::function<void()> handler) override;
  /// Runs what is ready, at most for some 50 ms; sleeps 1 ms when nothing was.
  /// May be called by a handler.
  void DoEvents() override;

  /// Runs the handler from the loop, soon.
  void post(std::function<void()> handler);
  /// Runs the handler from run() itself, when no other is on the stack: for taking down what a handler that
  /// waits in DoEvents() may be at work in. Dropped when the loop stops before.
  void postOutermost(std::function<void()> handler);
  /// Calls the handler for each SIGINT and SIGTERM from now on, from the loop; for
  /// SIGHUP, too, also one that has waited (StartUp.h), unless it is ignored.
  void onSignal(std::function<void(int signal)> handler);

  /// Hears what any handler throws, whatever it was called for; the loop then goes on. Without one, it comes
  /// out of run() or DoEvents(). It must not throw.
  void onFailure(std::function<void(const basic::Error&)> hear);

  /// Runs until stop().
  void run();
  /// Lets run() return after the handler it is in. It can be called again.
  void stop();

  [[nodiscard]] boost::asio::io_context& context();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace platform
