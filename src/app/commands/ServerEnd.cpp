#include "app/commands/ServerEnd.h"

#include <utility>

namespace app {

ServerEnd::ServerEnd(platform::EventLoop& loop, std::function<void()> close,
                     std::function<std::size_t()> listening)
    : loop_(loop),
      close_(std::move(close)),
      listening_(std::move(listening)),
      timer_(loop.CreateTimer([this] { tick(); })) {}

void ServerEnd::beginIn(std::int32_t milliseconds) {
  timer_->Interval(milliseconds);
  timer_->Enabled(true);
}

void ServerEnd::tick() {
  if (!closed_) {
    closed_ = true;
    close_();
    constexpr std::int32_t TimeToTell = 200;
    timer_->Interval(TimeToTell);
    return;
  }
  constexpr int LongestWait = 10;
  if (listening_() == 0 || ++waited_ >= LongestWait) loop_.stop();
}

}  // namespace app
