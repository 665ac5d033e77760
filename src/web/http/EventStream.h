#pragma once

#include <boost/asio/steady_timer.hpp>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "web/http/Connection.h"
#include "web/http/Event.h"

namespace web {

struct Options;

/// One reader of an event stream: a socket and what waits to be sent on it.
///
/// What waits is bounded. A reader that falls behind loses its queue and gets
/// the whole state as soon as it reads again, so it skips to the newest. The
/// pending operations keep the object alive; after close() it calls nobody. Bounds and
/// times are those of Options.
class EventStream : public std::enable_shared_from_this<EventStream> {
 public:
  /// What a stream needs of the channel it belongs to.
  class Source {
   public:
    virtual ~Source() = default;
    /// The present state; null when it cannot be had, which ends the stream.
    virtual SharedMessage state() = 0;
    /// The stream has closed by itself.
    virtual void left(EventStream& stream) = 0;
  };

  /// `options` and `source` outlive the stream or its close().
  EventStream(Connection connection, Source& source, const Options& options);

  /// Sends the response's head, the greeting when there is one, and the whole state.
  void start(SharedMessage greeting = nullptr);
  /// Sends it, or lets it wait its turn. What says everything replaces what waits; what finds no
  /// room (Options::queueMessages, queueBytes) is dropped with all that waits.
  void push(SharedMessage message);
  /// Sends `last` and closes; at the latest when Options::stopTimeout is over.
  void finish(SharedMessage last);
  /// Closes at once, without telling the source.
  void close();

 private:
  void watch();
  void write();
  void written();
  void leave();
  void enqueue(SharedMessage message);

  boost::asio::ip::tcp::socket socket_;
  std::optional<Seats::Seat> seat_;
  boost::asio::steady_timer deadline_;
  Source& source_;
  const Options& options_;
  std::vector<SharedMessage> queue_;
  std::vector<SharedMessage> inFlight_;
  /// Bytes of both.
  std::size_t unsent_ = 0;
  char scrap_ = 0;
  /// The queue was dropped: the next thing to send is the whole state.
  bool behind_ = false;
  bool finishing_ = false;
  bool closed_ = false;
};

}  // namespace web
