#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Who started this program as a service and wants to hear how it does, by the protocol of sd_notify(3):
/// datagrams of lines VARIABLE=VALUE to the socket that NOTIFY_SOCKET names, a path or, with @ in front, an
/// abstract address. Without that variable there is nobody, and nothing is told.
class ServiceManager {
 public:
  ServiceManager();
  ~ServiceManager();
  ServiceManager(const ServiceManager&) = delete;
  ServiceManager& operator=(const ServiceManager&) = delete;

  [[nodiscard]] bool isThere() const { return socket_ >= 0; }
  /// Within which time it wants each WATCHDOG=1 (WATCHDOG_USEC, for this process by WATCHDOG_PID); nothing
  /// when it wants none.
  [[nodiscard]] std::optional<std::chrono::microseconds> watchdog() const { return watchdog_; }

  /// Lines with an end each. Never waits: what the socket does not take now goes with the next lines.
  void tell(std::string_view lines);

 private:
  std::string address_;
  std::optional<std::chrono::microseconds> watchdog_;
  std::string unsent_;
  int socket_ = -1;
};

/// Whether a hang-up (SIGHUP) asks this program to read its settings again: a service manager started it, or
/// it has no terminal that could close. To be asked at the start, as a terminal that closes is no longer
/// there.
[[nodiscard]] bool isReloadedByHangUp();

}  // namespace platform
