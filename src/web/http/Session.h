#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <memory>
#include <optional>

#include "web/http/Handler.h"
#include "web/http/Seats.h"

namespace web {

struct Options;

/// One connection that speaks HTTP/1.1 (RFC 9112): reads requests, writes the answers, one
/// at a time, until it is idle for too long, asks to close, or turns into a stream.
/// A request's headers may have 16 KiB, its body what the handler allows; a guest's has 16 KiB.
///
/// Its pending operations keep it alive; after close() it calls nobody.
class Session {
 public:
  /// Who keeps the sessions.
  class Owner {
   public:
    virtual ~Owner() = default;
    /// The seat of a guest whose connection becomes a stream; nothing when there is none.
    virtual std::optional<Seats::Seat> keptSeat() = 0;
    /// The connection has ended by itself, or becomes a stream.
    virtual void left(Session& session) = 0;
  };

  /// `handler`, `owner` and `options` outlive the session or its close(). Without a seat it is a
  /// guest's: one request, soon.
  static std::shared_ptr<Session> make(boost::asio::ip::tcp::socket socket, std::optional<Seats::Seat> seat,
                                       Handler& handler, Owner& owner, const Options& options);
  virtual ~Session() = default;

  virtual void start() = 0;
  /// Closes as soon as the request at hand, if any, is answered.
  virtual void finish() = 0;
  /// Closes at once, without telling the owner.
  virtual void close() = 0;
};

}  // namespace web
