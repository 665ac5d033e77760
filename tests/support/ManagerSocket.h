#pragma once

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <string>

namespace support {

/// The service manager's end of the line to a service.
class ManagerSocket {
 public:
  /// A path, or with @ in front an abstract address.
  explicit ManagerSocket(std::string name) : socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0)) {
    if (name.front() == '@') name.front() = '\0';
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.data(), name.size());
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), length), 0);
  }
  ~ManagerSocket() { ::close(socket_); }
  ManagerSocket(const ManagerSocket&) = delete;
  ManagerSocket& operator=(const ManagerSocket&) = delete;

  /// The next datagram; empty when there is none.
  std::string next() {
    std::array<char, 65'536> bytes{};
    const ssize_t count = ::recv(socket_, bytes.data(), bytes.size(), 0);
    return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
  }

 private:
  int socket_;
};

}  // namespace support
