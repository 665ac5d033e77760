#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "basic/Date.h"
#include "host/services.h"

namespace fakes {

/// Timers on virtual time: Advance runs what falls due, in order. An interval counts from the
/// end of its timer's handler.
class Loop final : public host::Loop {
 public:
  class Timer final : public host::Timer {
   public:
    Timer(Loop& loop, std::function<void()> handler) : loop_(loop), handler_(std::move(handler)) {
      loop_.timers_.push_back(this);
    }
    ~Timer() override { std::erase(loop_.timers_, this); }
    std::int32_t Interval() const override { return interval_; }
    void Interval(std::int32_t milliseconds) override {
      interval_ = milliseconds;
      Wait();
    }
    bool Enabled() const override { return enabled_; }
    void Enabled(bool enabled) override {
      if (enabled && !enabled_) Wait();
      enabled_ = enabled;
    }

   private:
    friend class Loop;
    void Wait() { due_ = loop_.now_ + interval_ + loop_.lateness; }
    Loop& loop_;
    std::function<void()> handler_;
    std::int32_t interval_ = 0;
    bool enabled_ = false;
    bool running_ = false;
    std::int64_t due_ = 0;
  };

  std::unique_ptr<host::Timer> CreateTimer(std::function<void()> handler) override {
    return std::make_unique<Timer>(*this, std::move(handler));
  }
  void DoEvents() override {
    ++doEvents;
    if (onDoEvents) onDoEvents();
  }

  void Advance(std::int64_t milliseconds) {
    const std::int64_t end = now_ + milliseconds;
    while (Timer* next = NextDue(end)) {
      now_ = std::max(now_, next->due_);
      const auto handler = next->handler_;
      next->running_ = true;
      ++fired;
      handler();
      const bool isThere = std::find(timers_.begin(), timers_.end(), next) != timers_.end();
      if (!isThere) continue;
      next->running_ = false;
      next->Wait();
    }
    now_ = std::max(now_, end);
  }
  /// Time that a handler takes.
  void Pass(std::int64_t milliseconds) { now_ += milliseconds; }
  std::int64_t Now() const { return now_; }
  bool HasTimers() const { return !timers_.empty(); }

  /// Milliseconds by which timers fire late; those of this system's loop are by 8 and more.
  std::int64_t lateness = 0;
  int doEvents = 0;
  std::function<void()> onDoEvents;
  /// How often timers have fired.
  int fired = 0;

 private:
  Timer* NextDue(std::int64_t end) {
    Timer* next = nullptr;
    for (Timer* timer : timers_) {
      if (!timer->enabled_ || timer->running_ || timer->interval_ <= 0 || timer->due_ > end) continue;
      if (!next || timer->due_ < next->due_) next = timer;
    }
    return next;
  }

  std::vector<Timer*> timers_;
  std::int64_t now_ = 0;
};

/// 3 February 2026, 12:00:00 and what the loop's time adds to it.
class Clock final : public host::Clock {
 public:
  explicit Clock(const Loop& loop) : loop_(loop) {}
  basic::Date Now() const override {
    return basic::AddSeconds(start, static_cast<double>(loop_.Now() / 1000));
  }
  float Timer() const override {
    return static_cast<float>(std::fmod(timerStart + static_cast<double>(loop_.Now()) / 1000, 86400));
  }
  std::int64_t TickCount() const override { return loop_.Now(); }

  basic::Date start = basic::DateFrom(2026, 2, 3, 12, 0, 0);
  double timerStart = 43200;

 private:
  const Loop& loop_;
};

}  // namespace fakes
