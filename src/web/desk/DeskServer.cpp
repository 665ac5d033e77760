#include "web/desk/DeskServer.h"

#include <boost/asio/io_context.hpp>
#include <utility>

#include "web/desk/DeskRoutes.h"
#include "web/desk/DeskWindows.h"
#include "web/http/Listener.h"

namespace web {

DeskServer::DeskServer(boost::asio::io_context& loop, Desk& desk, Options options,
                       std::function<Clock::time_point()> now)
    : options_(std::make_unique<const Options>(std::move(options))),
      windows_(std::make_shared<DeskWindows>(loop, desk, *options_, std::move(now))),
      routes_(std::make_unique<DeskRoutes>(desk, *windows_, *options_)) {
  listener_ = std::make_shared<Listener>(loop, *options_, *routes_);
  port_ = listener_->endpoint().port();
  url_ = listener_->url();
  windows_->start();
  listener_->start();
}

DeskServer::~DeskServer() {
  listener_->close();
  windows_->close();
}

bool DeskServer::isOpen(const std::string& window) const { return windows_->isOpen(window); }

void DeskServer::send(const std::string& window, std::string_view event, const json::Json& data) {
  windows_->send(window, event, data);
}

std::size_t DeskServer::windows() const { return windows_->streams(); }

void DeskServer::stop() {
  listener_->stop();
  windows_->stop();
}

}  // namespace web
