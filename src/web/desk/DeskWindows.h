#pragma once

#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "json/Json.h"
#include "web/desk/Desk.h"
#include "web/http/Channel.h"
#include "web/http/Options.h"

namespace web {

/// The event streams of a desk's windows, a channel each, as no two windows show the same. A window without a
/// stream is kept for KeptFor. After close() nobody is called.
class DeskWindows : public std::enable_shared_from_this<DeskWindows> {
 public:
  static constexpr std::size_t MostStreams = 16;
  static constexpr std::chrono::minutes KeptFor{10};
  using Clock = std::chrono::steady_clock;

  /// All outlive it.
  DeskWindows(boost::asio::io_context& loop, Desk& desk, const Options& options,
              std::function<Clock::time_point()> now);

  /// Begins to send signs of life.
  void start();
  [[nodiscard]] bool isFull() const { return streams() >= MostStreams; }
  [[nodiscard]] std::size_t streams() const;
  [[nodiscard]] bool isOpen(const std::string& window) const;
  /// The connection becomes the window's stream, which begins with its whole state.
  void open(Connection connection, const std::string& window);
  /// An event on the window's stream, if it has one.
  void send(const std::string& window, std::string_view event, const json::Json& data);
  /// Ends the streams.
  void stop();
  void close();

 private:
  struct Window {
    explicit Window(Channel::Build state) : channel(std::move(state)) {}
    Channel channel;
    /// When its stream was seen last.
    Clock::time_point seen;
  };

  void beat();
  SharedMessage state(const std::string& window, std::uint64_t sequence);

  Desk& desk_;
  const Options& options_;
  std::function<Clock::time_point()> now_;
  boost::asio::steady_timer heart_;
  std::map<std::string, Window> windows_;
  bool stopped_ = false;
};

}  // namespace web
