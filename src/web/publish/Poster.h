#pragma once

#include <boost/asio/io_context.hpp>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace web {

struct HubNode;

/// Posts messages to nodes of hubs over HTTP, by libcurl on a thread of its own, so that neither names that
/// are looked up nor handshakes hold up the loop.
class Poster {
 public:
  struct Answer {
    /// 0: there was none, or not all of it.
    long status = 0;
    /// Of an answer of JSON, as far as 64 kB.
    std::string body;
    /// Why there was none.
    std::string why;
  };
  using Then = std::function<void(const Answer& answer)>;

  /// Answers come on this loop, which outlives it. `timeout` is for one message, from the name to the end of
  /// the answer.
  Poster(boost::asio::io_context& loop, const std::string& token, std::chrono::milliseconds timeout);
  /// Gives up what is under way; nothing is called afterwards.
  ~Poster();
  Poster(const Poster&) = delete;
  Poster& operator=(const Poster&) = delete;

  /// `then` is called once, later, on the loop.
  void post(const HubNode& node, const std::string& channel, std::shared_ptr<const std::string> body,
            Then then);

 private:
  class Work;
  /// Answers that are on their way find it gone.
  std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
  std::shared_ptr<Work> work_;
};

}  // namespace web
