#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <cstddef>
#include <functional>
#include <memory>
#include <unordered_map>

#include "web/Options.h"
#include "web/Session.h"

namespace web {

/// The listening socket and the connections that speak HTTP on it.
class Listener : public std::enable_shared_from_this<Listener> {
 public:
  /// Binds and listens; throws basic::Error when it cannot, saying what to do.
  /// `answer` and `stream` are as in Session::Owner; `streams` tells how many
  /// connections have become streams.
  Listener(boost::asio::io_context& loop, const Options& options,
           std::function<Response(const Request&)> answer,
           std::function<void(boost::asio::ip::tcp::socket, const StreamWanted&)> stream,
           std::function<std::size_t()> streams);

  void start();
  /// Takes no more connections and closes the idle ones.
  void stop();
  /// Closes everything at once; nothing is called afterwards.
  void close();

  [[nodiscard]] boost::asio::ip::tcp::endpoint endpoint() const { return acceptor_.local_endpoint(); }

 private:
  void bind();
  void accept();
  void admit(boost::asio::ip::tcp::socket socket);
  void acceptLater();
  void left(Session& session);

  const Options& options_;
  boost::asio::ip::tcp::acceptor acceptor_;
  /// The pause after a failed accept; after stop(), the connections' last deadline.
  boost::asio::steady_timer timer_;
  Session::Owner owner_;
  std::function<std::size_t()> streams_;
  std::unordered_map<Session*, std::shared_ptr<Session>> sessions_;
  bool stopped_ = false;
};

}  // namespace web
