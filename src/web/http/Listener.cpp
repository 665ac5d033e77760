// Who comes in: the listening socket, the seats, and the guests beyond them.
#include "web/http/Listener.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/v6_only.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace web {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

namespace {

constexpr std::chrono::milliseconds acceptPause{100};

[[noreturn]] void fail(const std::string& description) {
  throw basic::Error(basic::AdapterError, "web", description);
}

[[noreturn]] void failToListen(const Options& options, const error_code& why) {
  const std::string port = std::to_string(options.port);
  if (why == asio::error::address_in_use) {
    fail("Port " + port + " of " + options.address +
         " is in use by another program. Choose another port with --port, or stop that program.");
  }
  if (why == asio::error::access_denied) {
    fail("The system does not let this user listen on port " + port +
         ". Choose a port above 1023 with --port.");
  }
  fail("Cannot listen on " + options.address + ", port " + port + ": " + why.message() + ".");
}

}  // namespace

Listener::Listener(asio::io_context& loop, const Options& options, Handler& handler)
    : options_(options),
      acceptor_(loop),
      timer_(loop),
      handler_(handler),
      seats_(options.maxConnections, options.maxPerAddress, options.keptSeats) {
  bind();
}

void Listener::bind() {
  error_code failed;
  const auto address = asio::ip::make_address(options_.address, failed);
  if (failed) fail("\"" + options_.address + "\" is not an IP address to listen on.");
  const tcp::endpoint endpoint(address, options_.port);
  acceptor_.open(endpoint.protocol(), failed);
  if (failed) failToListen(options_, failed);
  acceptor_.set_option(tcp::acceptor::reuse_address(true));
  if (address.is_v6()) acceptor_.set_option(asio::ip::v6_only(false));
  acceptor_.bind(endpoint, failed);
  if (!failed) acceptor_.listen(asio::socket_base::max_listen_connections, failed);
  if (failed) failToListen(options_, failed);
}

std::string Listener::url() const {
  const auto address = asio::ip::make_address(options_.address);
  std::string name = address.to_string();
  if (address.is_unspecified()) {
    name = "localhost";
  } else if (address.is_v6()) {
    name = '[' + name + ']';
  }
  return "http://" + name + ':' + std::to_string(endpoint().port()) + '/';
}

void Listener::start() { accept(); }

void Listener::stop() {
  if (std::exchange(stopped_, true)) return;
  error_code ignored;
  acceptor_.close(ignored);
  timer_.expires_after(options_.stopTimeout);
  timer_.async_wait([self = shared_from_this()](error_code cancelled) {
    if (!cancelled) self->close();
  });
  std::vector<std::shared_ptr<Session>> all;  // as sessions leave the map meanwhile
  for (const auto& [key, session] : sessions_) all.push_back(session);
  for (const auto& session : all) session->finish();
  if (sessions_.empty()) timer_.cancel();
}

void Listener::close() {
  stopped_ = true;
  error_code ignored;
  acceptor_.close(ignored);
  timer_.cancel();
  for (const auto& [key, session] : sessions_) session->close();
  sessions_.clear();
  guests_.clear();
}

void Listener::accept() {
  acceptor_.async_accept([self = shared_from_this()](error_code failed, tcp::socket socket) {
    if (self->stopped_) return;
    // First, so that a connection that cannot be served does not close the door.
    if (!failed || failed == asio::error::connection_aborted) {
      self->accept();
    } else {
      self->acceptLater();
    }
    if (!failed) self->admit(std::move(socket));
  });
}

void Listener::admit(tcp::socket socket) {
  error_code gone;
  const auto from = socket.remote_endpoint(gone);
  if (gone) return;
  auto seat = seats_.take(from.address());
  const bool isGuest = !seat;
  auto session = Session::make(std::move(socket), std::move(seat), handler_, *this, options_);
  sessions_.emplace(session.get(), session);
  if (isGuest) greet(*session);
  session->start();
}

void Listener::greet(Session& guest) {
  guests_.push_back(&guest);
  if (guests_.size() <= options_.maxGuests) return;
  const auto first = sessions_.find(guests_.front());
  guests_.pop_front();
  first->second->close();
  sessions_.erase(first);
}

/// Out of file descriptors, most likely: trying at once would spin.
void Listener::acceptLater() {
  timer_.expires_after(acceptPause);
  timer_.async_wait([self = shared_from_this()](error_code) {
    if (!self->stopped_) self->accept();
  });
}

void Listener::left(Session& session) {
  std::erase(guests_, &session);
  sessions_.erase(&session);
  if (stopped_ && sessions_.empty()) timer_.cancel();
}

}  // namespace web
