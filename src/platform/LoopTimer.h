#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "host/services.h"

namespace platform {

/// A timer of the event loop. It never fires twice to make up for lost time.
class LoopTimer final : public host::Timer {
 public:
  /// How much later than its interval it fires, at least. Times of day in single precision step by
  /// 7.8 ms in the evening: to who compares two of them, the interval has passed every time.
  static constexpr std::chrono::milliseconds Lateness{8};

  LoopTimer(boost::asio::io_context& context, std::function<void()> handler);
  ~LoopTimer() override;
  LoopTimer(const LoopTimer&) = delete;
  LoopTimer& operator=(const LoopTimer&) = delete;

  [[nodiscard]] std::int32_t Interval() const override;
  void Interval(std::int32_t milliseconds) override;
  [[nodiscard]] bool Enabled() const override;
  void Enabled(bool enabled) override;

 private:
  /// Lives on until its last wait has ended, so that a handler may destroy its
  /// own timer.
  struct Beat : std::enable_shared_from_this<Beat> {
    Beat(boost::asio::io_context& context, std::function<void()> atEachBeat)
        : wait(context), handler(std::move(atEachBeat)) {}

    void waitForNext();
    void fire();
    void goOn();

    boost::asio::steady_timer wait;
    std::function<void()> handler;
    std::int32_t interval = 0;
    bool enabled = false;
    bool running = false;
    /// Tells a wait that was given up, but had ended already, from the present one.
    std::uint64_t waitNumber = 0;
  };

  std::shared_ptr<Beat> beat_;
};

}  // namespace platform
