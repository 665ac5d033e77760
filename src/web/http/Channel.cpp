#include "web/http/Channel.h"

#include <utility>

namespace web {

Channel::Channel(Build state, std::function<void(const std::string& name)> left)
    : buildState_(std::move(state)), left_(std::move(left)) {}

Channel::~Channel() { close(); }

void Channel::open(Connection connection, const Options& options, std::string name, SharedMessage greeting) {
  EventStream::Source& source = *this;
  auto stream = std::make_shared<EventStream>(std::move(connection), source, options);
  streams_.emplace(stream.get(), Reader{stream, std::move(name)});
  stream->start(std::move(greeting));
}

void Channel::publish(const Build& build, Time changed) {
  ++sequence_;
  causes_[sequence_ % causes_.size()] = {sequence_, changed};
  state_ = nullptr;
  if (streams_.empty()) return;
  const SharedMessage message = build(sequence_);
  if (message->complete) state_ = message;
  send(message);
}

void Channel::send(const SharedMessage& message) {
  for (const auto& [key, reader] : streams_) reader.stream->push(message);
}

void Channel::finish(const Build& build) {
  const SharedMessage last = build(++sequence_);
  for (const auto& [key, reader] : streams_) reader.stream->finish(last);
}

void Channel::close() {
  for (const auto& [key, reader] : streams_) reader.stream->close();
  streams_.clear();
}

void Channel::dismiss(const std::function<bool(const std::string& name)>& which) {
  std::unordered_map<EventStream*, Reader> dismissed;
  for (auto reader = streams_.begin(); reader != streams_.end();) {
    const auto next = std::next(reader);
    if (!which || which(reader->second.name)) dismissed.insert(streams_.extract(reader));
    reader = next;
  }
  for (const auto& [key, reader] : dismissed) {
    reader.stream->close();
    if (left_) left_(reader.name);
  }
}

std::optional<Channel::Time> Channel::changedAt(std::uint64_t sequence) const {
  const auto& [known, time] = causes_[sequence % causes_.size()];
  return known == sequence && sequence > 0 ? std::optional(time) : std::nullopt;
}

SharedMessage Channel::state() {
  if (!state_) state_ = buildState_(sequence_);
  return state_;
}

void Channel::left(EventStream& stream) {
  const auto found = streams_.find(&stream);
  if (found == streams_.end()) return;
  const std::string name = std::move(found->second.name);
  streams_.erase(found);
  if (left_) left_(name);
}

}  // namespace web
