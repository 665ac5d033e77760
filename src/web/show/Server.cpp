#include "web/show/Server.h"

#include <boost/asio/io_context.hpp>
#include <utility>

#include "web/http/Listener.h"
#include "web/show/Broadcast.h"
#include "web/show/Routes.h"

namespace web {

namespace asio = boost::asio;

Server::Server(asio::io_context& loop, Show& show, Options options, PublisherOptions hub)
    : options_(std::make_unique<const Options>(std::move(options))),
      broadcast_(std::make_shared<Broadcast>(loop, show, *options_, std::move(hub))),
      routes_(std::make_unique<Routes>(show, *broadcast_, *options_)) {
  listener_ = std::make_shared<Listener>(loop, *options_, *routes_);
  port_ = listener_->endpoint().port();
  broadcast_->start();
  listener_->start();
}

Server::~Server() {
  listener_->close();
  broadcast_->close();
}

std::uint16_t Server::port() const { return port_; }

std::string Server::url() const { return listener_->url(); }

void Server::slideChanged(Time changed) { broadcast_->slideChanged(changed); }

void Server::stateChanged(Time changed) { broadcast_->stateChanged(changed); }

void Server::deckChanged(Time changed) { broadcast_->deckChanged(changed); }

void Server::shapesChanged(const std::vector<ShapeChange>& changes, Time changed) {
  broadcast_->shapesChanged(changes, changed);
}

void Server::screensChanged() { broadcast_->screensChanged(); }

std::size_t Server::screens() const { return broadcast_->screens(); }

std::size_t Server::programs() const { return broadcast_->programs(); }

std::size_t Server::screensAtHubs() const { return broadcast_->screenBook().atHubs(); }

std::size_t Server::unpublished() const {
  const Publisher* const publisher = broadcast_->publisher();
  return publisher == nullptr ? 0 : publisher->waiting();
}

void Server::stop() {
  listener_->stop();
  broadcast_->stop();
}

}  // namespace web
