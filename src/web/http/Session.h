#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <functional>
#include <memory>
#include <optional>

#include "web/http/Request.h"
#include "web/http/Response.h"
#include "web/http/Seats.h"

namespace web {

struct Options;

/// One connection that speaks HTTP: reads requests, writes the answers, one at
/// a time, until it is idle for too long, asks to close, or turns into a stream.
/// Its pending operations keep it alive; after close() it calls nobody.
class Session {
 public:
  struct Owner {
    std::function<Response(const Request&)> answer;
    /// The same for guests.
    std::function<Response(const Request&)> answerGuest;
    /// Takes over the socket of a connection that becomes a stream, and its seat; a guest
    /// has none. Comes after `left`.
    std::function<void(boost::asio::ip::tcp::socket, std::optional<Seats::Seat>, const StreamWanted&)> stream;
    /// The connection has ended by itself.
    std::function<void(Session&)> left;
  };

  /// `owner` and `options` outlive the session or its close(). Without a seat it is a
  /// guest's: one request, soon.
  static std::shared_ptr<Session> make(boost::asio::ip::tcp::socket socket, std::optional<Seats::Seat> seat,
                                       const Owner& owner, const Options& options);
  virtual ~Session() = default;

  virtual void start() = 0;
  /// Closes as soon as the request at hand, if any, is answered.
  virtual void finish() = 0;
  /// Closes at once, without telling the owner.
  virtual void close() = 0;
};

}  // namespace web
