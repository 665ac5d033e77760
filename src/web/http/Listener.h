#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <deque>
#include <memory>
#include <unordered_map>

#include "web/http/Options.h"
#include "web/http/Session.h"

namespace web {

/// The listening socket and the connections that speak HTTP on it.
///
/// Of those there are at most Options::maxConnections, streams included, and of one
/// address Options::maxPerAddress. Whoever comes beyond is a guest: heard out for a
/// moment, so that what watches over the program and who holds the token get through
/// (Session::Owner::answerGuest). Of too many guests the first has to go.
class Listener : public std::enable_shared_from_this<Listener> {
 public:
  /// Binds and listens; throws basic::Error when it cannot, saying what to do. Of
  /// `owner` all but `left` is taken.
  Listener(boost::asio::io_context& loop, const Options& options, Session::Owner owner);

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
  /// Makes room for the newest guest.
  void greet(Session& guest);
  void acceptLater();
  void left(Session& session);

  const Options& options_;
  boost::asio::ip::tcp::acceptor acceptor_;
  /// The pause after a failed accept; after stop(), the connections' last deadline.
  boost::asio::steady_timer timer_;
  Session::Owner owner_;
  Seats seats_;
  std::unordered_map<Session*, std::shared_ptr<Session>> sessions_;
  /// In the order in which they came.
  std::deque<Session*> guests_;
  bool stopped_ = false;
};

}  // namespace web
