#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <unordered_map>

#include "web/EventStream.h"

namespace web {

/// The streams that carry the same events, and the numbers of those events.
class Channel : private EventStream::Source {
 public:
  /// Builds the event of the given sequence number.
  using Build = std::function<SharedMessage(std::uint64_t sequence)>;

  /// `state` builds the whole state; it may return null, which ends the streams
  /// that asked for it.
  explicit Channel(Build state);
  ~Channel() override;
  Channel(const Channel&) = delete;
  Channel& operator=(const Channel&) = delete;

  /// Turns a connection into a stream.
  void open(boost::asio::ip::tcp::socket socket, const Options& options);
  /// Counts one event, and builds and sends it when somebody listens.
  void publish(const Build& build);
  /// Sends something that does not count.
  void send(const SharedMessage& message);
  /// Sends the last event on every stream and closes them.
  void finish(const Build& build);
  void close();

  [[nodiscard]] std::size_t size() const { return streams_.size(); }

 private:
  SharedMessage state() override;
  void left(EventStream& stream) override;

  Build buildState_;
  std::uint64_t sequence_ = 0;
  /// The state at `sequence_`, built when first asked for: a crowd that comes
  /// back at once shares it.
  SharedMessage state_;
  std::unordered_map<EventStream*, std::shared_ptr<EventStream>> streams_;
};

}  // namespace web
