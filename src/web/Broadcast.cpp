#include "web/Broadcast.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "web/ClientFiles.h"

namespace web {

using boost::system::error_code;

Broadcast::Broadcast(boost::asio::io_context& loop, Show& show, const Options& options)
    : show_(show),
      options_(options),
      heart_(loop),
      screens_([this](std::uint64_t sequence) {
        return guarded(
            [&] { return pictureMessage(sequence, show_.picture(), clientVersion(), options_.heartbeat); });
      }),
      programs_([this](std::uint64_t sequence) {
        return guarded([&] { return stateMessage(sequence, show_.state()); });
      }) {}

void Broadcast::start() {
  heart_.expires_after(options_.heartbeat);
  heart_.async_wait([self = shared_from_this()](error_code cancelled) {
    if (!cancelled && !self->stopped_) self->beat();
  });
}

void Broadcast::beat() {
  static const SharedMessage visible = heartbeatMessage(true);
  static const SharedMessage silent = heartbeatMessage(false);
  screens_.send(visible);
  programs_.send(silent);
  start();
}

void Broadcast::open(boost::asio::ip::tcp::socket socket, StreamKind kind) {
  (kind == StreamKind::Screens ? screens_ : programs_).open(std::move(socket), options_);
}

void Broadcast::slideChanged() {
  if (stopped_) return;
  const Picture picture = show_.picture();
  screens_.publish([&](std::uint64_t sequence) {
    return pictureMessage(sequence, picture, clientVersion(), options_.heartbeat);
  });
  programs_.publish([&](std::uint64_t sequence) { return positionMessage(sequence, picture); });
  if (picture.ended && !ended_) {
    programs_.publish([](std::uint64_t sequence) { return endMessage(sequence, "show"); });
  }
  ended_ = picture.ended;
}

void Broadcast::shapesChanged(const std::vector<ShapeChange>& changes) {
  if (stopped_ || changes.empty()) return;
  const bool onScreen = std::any_of(changes.begin(), changes.end(),
                                    [](const ShapeChange& change) { return !change.html.empty(); });
  if (onScreen) {
    screens_.publish([&](std::uint64_t sequence) { return shapesMessage(sequence, changes); });
  }
  programs_.publish([&](std::uint64_t sequence) { return valuesMessage(sequence, changes); });
}

void Broadcast::stop() {
  if (stopped_) return;
  stopped_ = true;
  heart_.cancel();
  const auto end = [](std::uint64_t sequence) { return endMessage(sequence, "server"); };
  screens_.finish(end);
  programs_.finish(end);
}

void Broadcast::close() {
  stopped_ = true;
  heart_.cancel();
  screens_.close();
  programs_.close();
}

SharedMessage Broadcast::guarded(const std::function<SharedMessage()>& build) const {
  try {
    return build();
  } catch (const basic::Error& error) {
    if (options_.onError) options_.onError(error);
  } catch (const std::exception& error) {
    if (options_.onError) options_.onError(basic::Error(basic::AdapterError, "web", error.what()));
  }
  return nullptr;
}

}  // namespace web
