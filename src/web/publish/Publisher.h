#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "web/publish/HubNode.h"
#include "web/publish/Poster.h"

namespace web {

struct PublisherOptions {
  /// Nodes of one hub, any of which takes a message for all.
  std::vector<HubNode> nodes;
  /// What the hub wants of who publishes; empty: nothing.
  std::string token;
  /// An answer that takes longer is none.
  std::chrono::milliseconds timeout{4'000};
  /// When no node takes a message: how long until the next round, twice as long each time.
  std::chrono::milliseconds firstPause{500};
  std::chrono::milliseconds longestPause{15'000};
  /// Between two questions to a node that takes nothing.
  std::chrono::milliseconds probePause{15'000};
  /// What may wait for one channel; beyond it a whole state takes its place.
  std::size_t queueMessages = 64;
  std::size_t queueBytes = 256 * 1024;
  /// Hears, as a line, when a node goes and when it is back. May be empty.
  std::function<void(const std::string& line)> tell;
};

/// Sends the messages of a show to a hub: each once, in the order of its channel, and none for which nobody
/// waits any more. It never ends by itself and never grows: what a hub does not take waits, and a whole state
/// takes its place before it is too much.
///
/// It runs on the given loop and is called from its thread alone.
class Publisher {
 public:
  using Clock = std::chrono::steady_clock;
  /// The whole state of a channel, as a message; nothing when it cannot be had.
  using WholeState = std::function<std::optional<std::string>(const std::string& channel)>;

  /// The loop outlives it.
  Publisher(boost::asio::io_context& loop, PublisherOptions options, WholeState wholeState);
  ~Publisher();
  Publisher(const Publisher&) = delete;
  Publisher& operator=(const Publisher&) = delete;

  void publish(const std::string& channel, std::string message);
  /// The same for a sign of life, which is not worth waiting for.
  void beat(const std::string& channel, std::string message);
  /// Nobody looks any more: what waits is dropped.
  void forget(const std::string& channel) { channels_.erase(channel); }

  /// What the hub calls the last message that it has taken of a channel.
  [[nodiscard]] std::optional<std::string> lastId(const std::string& channel) const;
  /// Messages that no node has taken yet.
  [[nodiscard]] std::size_t waiting() const;

  struct Node {
    HubNode address;
    /// Nothing while it has not been asked yet.
    std::optional<bool> isUp;
    /// Why it takes nothing, as a sentence.
    std::string why;
    /// Since when it does or does not.
    Clock::time_point since;
    bool isProbed = false;
  };
  [[nodiscard]] const std::vector<Node>& nodes() const { return nodes_; }
  /// Messages taken so far, and attempts that failed.
  [[nodiscard]] std::uint64_t taken() const { return taken_; }
  [[nodiscard]] std::uint64_t failures() const { return failures_; }

 private:
  struct Channel {
    /// Tells it from one of the same name before.
    std::uint64_t number = 0;
    std::deque<std::shared_ptr<const std::string>> queue;
    std::size_t bytes = 0;
    /// The first of the queue is under way.
    bool isSending = false;
    /// What waited has been dropped: the whole state is next.
    bool wantsState = false;
    /// Nodes in turn that did not take the first of the queue.
    std::size_t refusals = 0;
    std::optional<std::string> lastId;
  };

  Channel& channelOf(const std::string& name);
  static void drop(Channel& channel);
  void goOn(const std::string& name, Channel& channel);
  void goOnWithAll();
  void answered(const std::string& name, std::uint64_t number, std::size_t node,
                const Poster::Answer& answer);
  static void takeFirst(Channel& channel);
  /// Whether the node took the message, or at least it is no fault of the node's that it did not.
  bool judge(std::size_t node, const Poster::Answer& answer);
  void nodeIsUp(std::size_t node);
  void nodeIsDown(std::size_t node, std::string why);
  void rest();
  void probeLater();
  void probe();
  void tell(const std::string& line) const {
    if (options_.tell) options_.tell(line);
  }

  PublisherOptions options_;
  WholeState wholeState_;
  std::vector<Node> nodes_;
  /// The node that messages go to.
  std::size_t current_ = 0;
  std::map<std::string, Channel> channels_;
  std::uint64_t lastNumber_ = 0;
  std::uint64_t taken_ = 0;
  std::uint64_t failures_ = 0;
  /// No node takes anything: the rounds so far, and whether the next one is waited for.
  int rounds_ = 0;
  bool isResting_ = false;
  bool isTooLargeTold_ = false;
  /// A timer may have expired when this goes.
  std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
  boost::asio::steady_timer rest_;
  boost::asio::steady_timer probes_;
  Poster poster_;
};

}  // namespace web
