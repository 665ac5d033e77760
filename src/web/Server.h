#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "web/Options.h"
#include "web/Show.h"

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
  /// what to do. `loop` and `show` outlive the server.
  Server(boost::asio::io_context& loop, Show& show, Options options);
  /// Cuts all connections; for a graceful end, stop() and run the loop first.
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// The port in use, also when the options left it open.
  [[nodiscard]] std::uint16_t port() const;
  /// Where a browser on this machine finds the screen: "http://127.0.0.1:8080/".
  [[nodiscard]] std::string url() const;

  /// Tells every stream that the picture has changed other than by
  /// shapesChanged(): another slide, another deck, a blank screen, the end. What
  /// Show::picture() throws passes through.
  void slideChanged();
  /// Tells every stream of these shapes, in one message.
  void shapesChanged(const std::vector<ShapeChange>& changes);

  /// Streams open at present.
  [[nodiscard]] std::size_t screens() const;
  [[nodiscard]] std::size_t programs() const;

  /// Ends the streams with an `end` event, answers what is being asked and takes
  /// nothing more. The loop runs out of the server's work within
  /// Options::stopTimeout.
  void stop();

 private:
  const std::unique_ptr<const Options> options_;
  std::unique_ptr<Routes> routes_;
  std::shared_ptr<Broadcast> broadcast_;
  std::shared_ptr<Listener> listener_;
  std::uint16_t port_ = 0;
};

}  // namespace web
