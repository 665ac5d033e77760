#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

#include "web/http/EventStream.h"

namespace web {

/// The streams that carry the same events, and the numbers of those events, which count up by one.
/// What a number stands for is built once, and not at all while nobody listens.
class Channel : private EventStream::Source {
 public:
  using Time = std::chrono::steady_clock::time_point;
  /// Builds the event of the given sequence number.
  using Build = std::function<SharedMessage(std::uint64_t sequence)>;

  /// `state` builds the whole state; it may return null, which ends the streams
  /// that asked for it. `left` hears the name of a stream that has closed by itself.
  explicit Channel(Build state, std::function<void(const std::string& name)> left = {});
  ~Channel() override;
  Channel(const Channel&) = delete;
  Channel& operator=(const Channel&) = delete;

  /// Turns a connection into a stream. It begins with `greeting`, when there is one,
  /// and the state. `options` outlive the channel or its close().
  void open(Connection connection, const Options& options, std::string name = {},
            SharedMessage greeting = nullptr);
  /// Counts one event, and builds and sends it when somebody listens. `changed` is
  /// when its cause happened.
  void publish(const Build& build, Time changed);
  /// Sends something that does not count.
  void send(const SharedMessage& message);
  /// Sends the last event on every stream and closes them.
  void finish(const Build& build);
  /// Closes them at once; `left` hears nothing.
  void close();
  /// Cuts streams as if they had closed by themselves, all or those whose name `which` picks: their readers
  /// come back.
  void dismiss(const std::function<bool(const std::string& name)>& which = {});

  [[nodiscard]] std::size_t size() const { return streams_.size(); }
  /// The number of the newest event.
  [[nodiscard]] std::uint64_t sequence() const { return sequence_; }
  /// When the cause of that event happened; nothing when it is none of the newest 128.
  [[nodiscard]] std::optional<Time> changedAt(std::uint64_t sequence) const;

 private:
  struct Reader {
    std::shared_ptr<EventStream> stream;
    std::string name;
  };

  SharedMessage state() override;
  void left(EventStream& stream) override;

  Build buildState_;
  std::function<void(const std::string&)> left_;
  std::uint64_t sequence_ = 0;
  /// The state at `sequence_`, built when first asked for: a crowd that comes
  /// back at once shares it.
  SharedMessage state_;
  std::unordered_map<EventStream*, Reader> streams_;
  /// The causes of the newest events, by sequence modulo the size.
  std::array<std::pair<std::uint64_t, Time>, 128> causes_{};
};

}  // namespace web
