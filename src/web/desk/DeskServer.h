#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "json/Json.h"
#include "web/desk/Desk.h"
#include "web/http/Options.h"

namespace boost::asio {
class io_context;
}

namespace web {

class DeskRoutes;
class DeskWindows;
class Listener;

/// The HTTP server of a desk (see DeskRoutes for its addresses). It runs on the given loop and thread alone
/// and must be called from there.
class DeskServer {
 public:
  using Clock = std::chrono::steady_clock;
  /// Listens at once. Throws basic::Error when it cannot, saying which port and what to do. `loop` and `desk`
  /// outlive the server. By `now` it tells how long a window has been away.
  DeskServer(boost::asio::io_context& loop, Desk& desk, Options options,
             std::function<Clock::time_point()> now = &Clock::now);
  /// Cuts all connections; for a graceful end, stop() and run the loop first.
  ~DeskServer();
  DeskServer(const DeskServer&) = delete;
  DeskServer& operator=(const DeskServer&) = delete;

  [[nodiscard]] std::uint16_t port() const { return port_; }
  /// Where a browser on this machine finds the page: "http://127.0.0.1:2001/".
  [[nodiscard]] std::string url() const { return url_; }

  /// Whether a page reads the window's stream.
  [[nodiscard]] bool isOpen(const std::string& window) const;
  /// An event of docs/desk-protocol.md for a window; dropped when its page is away.
  void send(const std::string& window, std::string_view event, const json::Json& data);
  /// Streams open at present.
  [[nodiscard]] std::size_t windows() const;
  /// Ends the streams with an `end` event, answers what is being asked and takes nothing more.
  void stop();

 private:
  const std::unique_ptr<const Options> options_;
  std::shared_ptr<DeskWindows> windows_;
  std::unique_ptr<DeskRoutes> routes_;
  std::shared_ptr<Listener> listener_;
  std::uint16_t port_ = 0;
  std::string url_;
};

}  // namespace web
