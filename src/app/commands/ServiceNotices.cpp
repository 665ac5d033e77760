#include "app/commands/ServiceNotices.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "basic/Strings.h"

namespace app {

namespace {

/// Several within what the manager waits for, as the loop may be late.
std::int32_t intervalFor(const platform::ServiceManager& manager) {
  constexpr std::int64_t Second = 1000;
  constexpr std::int64_t Signs = 4;
  if (!manager.watchdog()) return Second;
  const auto wanted = std::chrono::duration_cast<std::chrono::milliseconds>(*manager.watchdog()).count();
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(wanted / Signs, 1, Second));
}

}  // namespace

ServiceNotices::ServiceNotices(platform::EventLoop& loop, std::function<Standing()> look)
    : look_(std::move(look)), timer_(loop.CreateTimer([this] { tick(); })) {
  if (!manager_.isThere()) return;
  timer_->Interval(intervalFor(manager_));
  timer_->Enabled(true);
}

void ServiceNotices::tick() {
  std::string lines;
  if (manager_.watchdog()) lines += "WATCHDOG=1\n";
  if (isStopping_) return manager_.tell(lines);
  Standing standing = look_();
  if (standing.isReady && !isReady_) {
    isReady_ = true;
    lines += "READY=1\n";
  }
  std::string status = basic::Replace(standing.status, "\n", " ");
  if (status != status_) {
    status_ = std::move(status);
    lines += "STATUS=" + status_ + "\n";
  }
  manager_.tell(lines);
}

void ServiceNotices::reloading() {
  if (std::exchange(isReloading_, true)) return;
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(now).count();
  manager_.tell("RELOADING=1\nMONOTONIC_USEC=" + std::to_string(microseconds) + "\n");
}

void ServiceNotices::reloaded() {
  if (std::exchange(isReloading_, false)) manager_.tell("READY=1\n");
}

void ServiceNotices::stopping() {
  if (!std::exchange(isStopping_, true)) manager_.tell("STOPPING=1\nSTATUS=Ending\n");
}

}  // namespace app
