#include "web/Channel.h"

#include <utility>

namespace web {

Channel::Channel(Build state) : buildState_(std::move(state)) {}

Channel::~Channel() { close(); }

void Channel::open(boost::asio::ip::tcp::socket socket, const Options& options) {
  EventStream::Source& source = *this;
  auto stream = std::make_shared<EventStream>(std::move(socket), source, options);
  streams_.emplace(stream.get(), stream);
  stream->start();
}

void Channel::publish(const Build& build) {
  ++sequence_;
  state_ = nullptr;
  if (streams_.empty()) return;
  const SharedMessage message = build(sequence_);
  if (message->complete) state_ = message;
  send(message);
}

void Channel::send(const SharedMessage& message) {
  for (const auto& [key, stream] : streams_) stream->push(message);
}

void Channel::finish(const Build& build) {
  const SharedMessage last = build(++sequence_);
  for (const auto& [key, stream] : streams_) stream->finish(last);
}

void Channel::close() {
  for (const auto& [key, stream] : streams_) stream->close();
  streams_.clear();
}

SharedMessage Channel::state() {
  if (!state_) state_ = buildState_(sequence_);
  return state_;
}

void Channel::left(EventStream& stream) { streams_.erase(&stream); }

}  // namespace web
