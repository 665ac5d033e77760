#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "host/services.h"

namespace deck::test {

/// A loop whose time passes when a test says so.
class FakeLoop final : public host::Loop {
 public:
  std::unique_ptr<host::Timer> CreateTimer(std::function<void()> handler) override {
    return std::make_unique<FakeTimer>(*this, std::move(handler));
  }
  void DoEvents() override { pass(0); }

  /// Lets milliseconds pass, firing what falls due in order.
  void pass(std::int64_t milliseconds) {
    const std::int64_t until = now_ + milliseconds;
    while (FakeTimer* due = next(until)) {
      now_ = due->dueAt;
      due->dueAt += due->interval;
      due->handler();
    }
    now_ = until;
  }

 private:
  struct FakeTimer final : host::Timer {
    FakeTimer(FakeLoop& owner, std::function<void()> action) : loop(owner), handler(std::move(action)) {
      loop.timers_.push_back(this);
    }
    ~FakeTimer() override { std::erase(loop.timers_, this); }
    [[nodiscard]] std::int32_t Interval() const override { return interval; }
    void Interval(std::int32_t milliseconds) override {
      interval = milliseconds;
      dueAt = loop.now_ + interval;
    }
    [[nodiscard]] bool Enabled() const override { return enabled; }
    void Enabled(bool on) override {
      if (on && !enabled) dueAt = loop.now_ + interval;
      enabled = on;
    }

    FakeLoop& loop;
    std::function<void()> handler;
    std::int32_t interval = 0;
    std::int64_t dueAt = 0;
    bool enabled = false;
  };

  FakeTimer* next(std::int64_t until) {
    FakeTimer* found = nullptr;
    for (FakeTimer* timer : timers_) {
      if (!timer->enabled || timer->interval == 0 || timer->dueAt > until) continue;
      if (found == nullptr || timer->dueAt < found->dueAt) found = timer;
    }
    return found;
  }

  std::vector<FakeTimer*> timers_;
  std::int64_t now_ = 0;
};

}  // namespace deck::test
