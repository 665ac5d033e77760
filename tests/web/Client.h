#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace web::test {

/// Runs the loop until `done`; false when that takes longer than ten seconds.
bool runUntil(boost::asio::io_context& loop, const std::function<bool()>& done);

struct Answer {
  int status = 0;
  std::map<std::string, std::string> headers;
  std::string body;
};

struct Event {
  std::string name;
  std::optional<std::uint64_t> id;
  std::string data;
};

/// The other end of a connection, on a plain socket that never blocks, so that
/// server and client take turns on one thread.
class Client {
 public:
  /// A `receiveBuffer` above 0 makes a reader that soon holds up the server.
  Client(boost::asio::io_context& loop, std::uint16_t port, int receiveBuffer = 0);

  void send(std::string_view bytes);
  /// Takes what has arrived. False once the server has closed and all is taken.
  bool receive();
  /// All bytes until the server closes.
  std::string receiveAll();
  /// Whether the server has cut the connection rather than closed it.
  [[nodiscard]] bool wasCut() const { return cut_; }
  /// The next answer; `hasBody` is false for an answer to HEAD.
  Answer answer(bool hasBody = true);
  Answer get(std::string_view path, std::string_view moreHeaders = {});
  Answer post(std::string_view path, std::string_view authorization, std::string_view moreHeaders = {});

  /// Asks for a stream.
  void open(std::string_view path, std::string_view moreHeaders = {});
  /// The next event of the stream, waiting for it; comments are events named "".
  Event event();
  /// The events that have arrived whole, without waiting.
  std::vector<Event> events();
  /// What the server said first on a screen's stream; event() leaves it out.
  [[nodiscard]] const std::string& hello() const { return hello_; }
  /// Whether the stream's last chunk has come.
  [[nodiscard]] bool isComplete() const { return complete_; }
  void close() { socket_.close(); }

 private:
  void unchunk();
  std::optional<Event> takeEvent();

  boost::asio::io_context& loop_;
  boost::asio::ip::tcp::socket socket_;
  std::string received_;
  /// The stream's text so far, without the chunks around it.
  std::string text_;
  std::string hello_;
  bool headRead_ = false;
  bool complete_ = false;
  bool cut_ = false;
};

}  // namespace web::test
