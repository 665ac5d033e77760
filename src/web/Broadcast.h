#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <memory>
#include <vector>

#include "web/Channel.h"
#include "web/Options.h"
#include "web/Response.h"
#include "web/Show.h"

namespace web {

/// The two channels, what goes onto them, and their heartbeat.
class Broadcast : public std::enable_shared_from_this<Broadcast> {
 public:
  Broadcast(boost::asio::io_context& loop, Show& show, const Options& options);

  /// Begins the heartbeat.
  void start();
  void open(boost::asio::ip::tcp::socket socket, StreamKind kind);
  void slideChanged();
  void shapesChanged(const std::vector<ShapeChange>& changes);
  /// Ends all streams; those that are not through by Options::stopTimeout are cut.
  void stop();
  /// Cuts all streams; nothing is called afterwards.
  void close();

  [[nodiscard]] std::size_t screens() const { return screens_.size(); }
  [[nodiscard]] std::size_t programs() const { return programs_.size(); }

 private:
  void beat();
  /// Runs `build`; a failure of the show is reported and gives null.
  SharedMessage guarded(const std::function<SharedMessage()>& build) const;

  Show& show_;
  const Options& options_;
  boost::asio::steady_timer heart_;
  Channel screens_;
  Channel programs_;
  bool ended_ = false;
  bool stopped_ = false;
};

}  // namespace web
