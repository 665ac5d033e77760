// What one reader of a stream is sent, and when it is given up.
#include "web/http/EventStream.h"

#include <netinet/tcp.h>
#include <sys/socket.h>

#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <utility>

#include "web/http/Options.h"

namespace web {

namespace asio = boost::asio;
using boost::system::error_code;

EventStream::EventStream(Connection connection, Source& source, const Options& options)
    : socket_(std::move(connection.socket)),
      seat_(std::move(connection.seat)),
      deadline_(socket_.get_executor()),
      source_(source),
      options_(options) {
  error_code ignored;  // each of these only makes a good stream better
  socket_.set_option(asio::ip::tcp::no_delay(true), ignored);
  socket_.set_option(asio::socket_base::send_buffer_size(options.streamSendBuffer), ignored);
  // The kernel cuts the connection when the reader takes nothing for so long; a
  // machine that vanished would else be waited for a quarter of an hour, and a
  // browser that hangs for ever.
  const auto patience = static_cast<unsigned>(options.writeTimeout.count());
  ::setsockopt(socket_.native_handle(), IPPROTO_TCP, TCP_USER_TIMEOUT, &patience, sizeof patience);
}

void EventStream::start(SharedMessage greeting) {
  watch();
  enqueue(streamHead());
  if (greeting) enqueue(std::move(greeting));
  if (SharedMessage state = source_.state()) {
    enqueue(std::move(state));
    write();
  } else {
    leave();
  }
}

void EventStream::push(SharedMessage message) {
  if (closed_ || finishing_) return;
  if (message->complete) {
    for (const SharedMessage& waiting : queue_) unsent_ -= waiting->bytes.size();
    queue_.clear();
    behind_ = false;
  } else if (behind_) {
    return;
  } else if (unsent_ > 0 && (queue_.size() + inFlight_.size() >= options_.queueMessages ||
                             unsent_ + message->bytes.size() > options_.queueBytes)) {
    for (const SharedMessage& waiting : queue_) unsent_ -= waiting->bytes.size();
    queue_.clear();
    behind_ = true;
    return;
  }
  enqueue(std::move(message));
  write();
}

void EventStream::finish(SharedMessage last) {
  if (closed_ || finishing_) return;
  enqueue(std::move(last));
  finishing_ = true;
  deadline_.expires_after(options_.stopTimeout);
  deadline_.async_wait([self = shared_from_this()](error_code cancelled) {
    if (!cancelled) self->leave();
  });
  write();
}

void EventStream::close() {
  if (std::exchange(closed_, true)) return;
  seat_.reset();
  error_code ignored;
  socket_.close(ignored);
  deadline_.cancel();
}

/// Readers of a stream have nothing to say: whatever arrives, end of file above
/// all, is the end.
void EventStream::watch() {
  socket_.async_read_some(asio::buffer(&scrap_, 1),
                          [self = shared_from_this()](error_code, std::size_t) { self->leave(); });
}

void EventStream::enqueue(SharedMessage message) {
  unsent_ += message->bytes.size();
  queue_.push_back(std::move(message));
}

void EventStream::write() {
  if (closed_ || !inFlight_.empty() || queue_.empty()) return;
  inFlight_.swap(queue_);
  std::vector<asio::const_buffer> buffers;
  buffers.reserve(inFlight_.size());
  for (const SharedMessage& message : inFlight_) buffers.emplace_back(asio::buffer(message->bytes));
  asio::async_write(socket_, buffers, [self = shared_from_this()](error_code failed, std::size_t) {
    if (self->closed_) return;
    if (failed) {
      self->leave();
    } else {
      self->written();
    }
  });
}

void EventStream::written() {
  for (const SharedMessage& message : inFlight_) unsent_ -= message->bytes.size();
  inFlight_.clear();
  if (behind_ && !finishing_) {
    behind_ = false;
    SharedMessage state = source_.state();
    if (!state) return leave();
    enqueue(std::move(state));
  }
  if (queue_.empty() && finishing_) return leave();
  write();
}

void EventStream::leave() {
  if (closed_) return;
  close();
  source_.left(*this);
}

}  // namespace web
