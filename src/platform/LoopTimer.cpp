#include "platform/LoopTimer.h"

#include <algorithm>
#include <utility>

namespace platform {

LoopTimer::LoopTimer(boost::asio::io_context& context, std::function<void()> handler)
    : beat_(std::make_shared<Beat>(context, std::move(handler))) {}

LoopTimer::~LoopTimer() { Enabled(false); }

std::int32_t LoopTimer::Interval() const { return beat_->interval; }

void LoopTimer::Interval(std::int32_t milliseconds) {
  if (milliseconds == beat_->interval) return;
  beat_->interval = std::max(milliseconds, 0);
  beat_->waitForNext();
}

bool LoopTimer::Enabled() const { return beat_->enabled; }

void LoopTimer::Enabled(bool enabled) {
  if (enabled == beat_->enabled) return;
  beat_->enabled = enabled;
  beat_->waitForNext();
}

void LoopTimer::Beat::waitForNext() {
  ++waitNumber;
  wait.cancel();
  // Its own handler goes on with it when it is done.
  if (!enabled || interval == 0 || running) return;
  wait.expires_after(std::chrono::milliseconds(interval) + Lateness);
  wait.async_wait(
      [self = shared_from_this(), number = waitNumber](const boost::system::error_code& cancelled) {
        if (!cancelled && number == self->waitNumber) self->fire();
      });
}

void LoopTimer::Beat::fire() {
  // Also when the handler throws: a timer fails once, not for ever.
  struct Beating {
    explicit Beating(Beat& of) : beat(of) { beat.running = true; }
    ~Beating() { beat.goOn(); }
    Beating(const Beating&) = delete;
    Beating& operator=(const Beating&) = delete;
    Beat& beat;
  };
  const Beating now(*this);
  handler();
}

void LoopTimer::Beat::goOn() {
  running = false;
  waitForNext();
}

}  // namespace platform
