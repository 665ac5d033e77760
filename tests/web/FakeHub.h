#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace web::test {

/// A node of a hub on a real socket, which answers as a test says. Every request has a connection of its own.
class FakeHub {
 public:
  struct Posted {
    std::string path;
    std::string authorization;
    std::string body;
  };
  /// The bytes of the answer; empty: none, and the connection stays open.
  using Answer = std::function<std::string(const Posted& posted)>;

  explicit FakeHub(boost::asio::io_context& loop);
  ~FakeHub();

  [[nodiscard]] std::string address() const;
  /// Closes the door; later it opens at the same place.
  void close();
  void open();

  /// Takes everything, under ids that count up.
  [[nodiscard]] static Answer taking();
  [[nodiscard]] static std::string answerOf(int status, const std::string& body = "{}");

  Answer answer = taking();
  /// All requests in the order in which they came, refused ones as well.
  std::vector<Posted> posted;
  /// The bodies of those to one channel.
  [[nodiscard]] std::vector<std::string> bodies(const std::string& channel) const;

 private:
  struct Session;
  void accept();

  boost::asio::io_context& loop_;
  std::unique_ptr<boost::asio::ip::tcp::acceptor> acceptor_;
  std::uint16_t port_ = 0;
  std::vector<std::weak_ptr<Session>> sessions_;
};

}  // namespace web::test
