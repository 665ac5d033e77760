#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "web/http/Options.h"
#include "web/http/Session.h"

namespace web {

/// The listening socket and the connections that speak HTTP on it.
///
/// Of those there are at most Options::maxConnections, streams included, and of one
/// address Options::maxPerAddress. Whoever comes beyond is a guest: heard out for a
/// moment (Options::guestTimeout), so that the handler can let through who must get through
/// (Handler::answerGuest()). Of more than Options::maxGuests the first has to go.
///
/// It runs on the given loop and is called from its thread alone.
class Listener : public std::enable_shared_from_this<Listener>, private Session::Owner {
 public:
  /// Binds and listens; throws basic::Error when it cannot, saying what to do. `loop`, `options` and
  /// `handler` outlive the listener or its close().
  Listener(boost::asio::io_context& loop, const Options& options, Handler& handler);

  /// Begins to accept.
  void start();
  /// Takes no more connections, closes the idle ones, and the others once they are answered, at the
  /// latest after Options::stopTimeout.
  void stop();
  /// Closes everything at once; nothing is called afterwards.
  void close();

  /// Where it listens, with the port that was free.
  [[nodiscard]] boost::asio::ip::tcp::endpoint endpoint() const { return acceptor_.local_endpoint(); }
  /// Where a browser on this machine finds it: "http://127.0.0.1:8080/".
  [[nodiscard]] std::string url() const;

 private:
  void bind();
  void accept();
  void admit(boost::asio::ip::tcp::socket socket);
  /// Makes room for the newest guest.
  void greet(Session& guest);
  void acceptLater();
  std::optional<Seats::Seat> keptSeat() override { return seats_.takeKept(); }
  void left(Session& session) override;

  const Options& options_;
  boost::asio::ip::tcp::acceptor acceptor_;
  /// The pause after a failed accept; after stop(), the connections' last deadline.
  boost::asio::steady_timer timer_;
  Handler& handler_;
  Seats seats_;
  std::unordered_map<Session*, std::shared_ptr<Session>> sessions_;
  /// In the order in which they came.
  std::deque<Session*> guests_;
  bool stopped_ = false;
};

}  // namespace web
