// How the program does, told to the service manager.

#include "platform/ServiceManager.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace platform {

namespace {

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::optional<long long> number(const std::string& text) {
  long long value = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (failure != std::errc() || end != text.data() + text.size() || value <= 0) return std::nullopt;
  return value;
}

std::optional<std::chrono::microseconds> wantedWatchdog() {
  const std::string process = variable("WATCHDOG_PID");
  if (!process.empty() && number(process) != ::getpid()) return std::nullopt;
  const auto interval = number(variable("WATCHDOG_USEC"));
  if (!interval) return std::nullopt;
  return std::chrono::microseconds(*interval);
}

}  // namespace

ServiceManager::ServiceManager() : address_(variable("NOTIFY_SOCKET")) {
  if (address_.size() < 2 || address_.size() >= sizeof sockaddr_un{}.sun_path) return;
  if (address_.front() == '@') address_.front() = '\0';
  if (address_.front() != '\0' && address_.front() != '/') return;
  socket_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (isThere()) watchdog_ = wantedWatchdog();
}

ServiceManager::~ServiceManager() {
  if (isThere()) ::close(socket_);
}

void ServiceManager::tell(std::string_view lines) {
  if (!isThere()) return;
  // Who does not read for so long gets the newest.
  constexpr std::size_t MostUnsent = 16'384;
  if (unsent_.size() + lines.size() > MostUnsent) unsent_.clear();
  unsent_ += lines;
  if (unsent_.empty()) return;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, address_.data(), address_.size());
  const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + address_.size());
  const ssize_t sent = ::sendto(socket_, unsent_.data(), unsent_.size(), MSG_NOSIGNAL,
                                reinterpret_cast<const sockaddr*>(&address), length);
  if (sent >= 0 || (errno != EAGAIN && errno != EINTR && errno != ENOBUFS)) unsent_.clear();
}

bool isReloadedByHangUp() {
  if (!variable("NOTIFY_SOCKET").empty()) return true;
  const int terminal = ::open("/dev/tty", O_RDONLY | O_NOCTTY | O_CLOEXEC);
  if (terminal < 0) return true;
  ::close(terminal);
  return false;
}

}  // namespace platform
