#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "web/http/Options.h"
#include "web/publish/Publisher.h"
#include "web/show/Show.h"

namespace boost::asio {
class io_context;
}

namespace web {

class Routes;
class Broadcast;
class Listener;

/// The HTTP server of a show: the screens' page, their event streams, and the
/// commands of programs (see Routes for all addresses, Messages.h for the events,
/// Guard for who is let in).
///
/// It runs on the given loop and thread alone and must be called from there.
class Server {
 public:
  /// Listens at once. Throws basic::Error when it cannot, saying which port and
  /// what to do. `loop` and `show` outlive the server. Messages go to the nodes of `hub` as well, if there
  /// are any.
  Server(boost::asio::io_context& loop, Show& show, Options options, PublisherOptions hub = {});
  /// Cuts all connections; for a graceful end, stop() and run the loop first.
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// The port in use, also when the options left it open.
  [[nodiscard]] std::uint16_t port() const;
  /// Where a browser on this machine finds the screen: "http://127.0.0.1:8080/".
  [[nodiscard]] std::string url() const;

  using Time = std::chrono::steady_clock::time_point;

  // `changed` is when the cause happened; the paints' delays count from there.

  /// Tells programs and the screens that follow the show of another slide on show, or
  /// another next one. What Show::state() throws passes through.
  void slideChanged(Time changed = std::chrono::steady_clock::now());
  /// Tells every stream that the state has changed other than by slideChanged() and
  /// shapesChanged(): a blank screen, the end, old data. As above.
  void stateChanged(Time changed = std::chrono::steady_clock::now());
  /// Tells every stream of another deck. Views other than the show's are resolved anew: their screens
  /// keep their picture and connect again. As above.
  void deckChanged(Time changed = std::chrono::steady_clock::now());
  /// Tells every stream of these shapes, in one message.
  void shapesChanged(const std::vector<ShapeChange>& changes,
                     Time changed = std::chrono::steady_clock::now());

  /// Cuts the streams of who may not look any more (Options::screens).
  void screensChanged();

  /// Streams open at present.
  [[nodiscard]] std::size_t screens() const;
  [[nodiscard]] std::size_t programs() const;

  /// Screens at hubs that have reported lately.
  [[nodiscard]] std::size_t screensAtHubs() const;
  /// Messages that no hub has taken yet.
  [[nodiscard]] std::size_t unpublished() const;

  /// Ends the streams with an `end` event, answers what is being asked and takes
  /// nothing more. The loop runs out of the server's work within
  /// Options::stopTimeout.
  void stop();

 private:
  const std::unique_ptr<const Options> options_;
  std::shared_ptr<Broadcast> broadcast_;
  std::unique_ptr<Routes> routes_;
  std::shared_ptr<Listener> listener_;
  std::uint16_t port_ = 0;
};

}  // namespace web
