#include "web/FakeHub.h"

#include <boost/asio/read.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>

namespace web::test {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

struct FakeHub::Session : std::enable_shared_from_this<FakeHub::Session> {
  explicit Session(tcp::socket opened) : socket(std::move(opened)) {}

  void read(FakeHub& hub) {
    asio::async_read_until(
        socket, asio::dynamic_buffer(text), "\r\n\r\n",
        [self = shared_from_this(), &hub](error_code failed, std::size_t head) {
          if (failed) return;
          const std::size_t size = std::stoul(self->between("Content-Length: ", "\r"));
          const std::size_t missing = head + size - std::min(head + size, self->text.size());
          asio::async_read(self->socket, asio::dynamic_buffer(self->text), asio::transfer_exactly(missing),
                           [self, &hub, head](error_code cut, std::size_t) {
                             if (!cut) self->take(hub, head);
                           });
        });
  }

  void take(FakeHub& hub, std::size_t head) {
    hub.posted.push_back({between("POST ", " "), between("Authorization: ", "\r"), text.substr(head)});
    bytes = hub.answer(hub.posted.back());
    // Nothing more comes: this sees that the other side has given up.
    if (bytes.empty()) {
      return asio::async_read(socket, asio::dynamic_buffer(text),
                              [self = shared_from_this()](error_code, std::size_t) {});
    }
    asio::async_write(socket, asio::buffer(bytes), [self = shared_from_this()](error_code, std::size_t) {});
  }

  [[nodiscard]] std::string between(std::string_view before, std::string_view after) const {
    const std::size_t found = text.find(before);
    if (found == std::string::npos) return "";
    const std::size_t begin = found + before.size();
    return text.substr(begin, text.find(after, begin) - begin);
  }

  tcp::socket socket;
  std::string text;
  std::string bytes;
};

FakeHub::FakeHub(asio::io_context& loop) : loop_(loop) { open(); }

FakeHub::~FakeHub() { close(); }

void FakeHub::open() {
  acceptor_ = std::make_unique<tcp::acceptor>(loop_, tcp::endpoint(asio::ip::address_v4::loopback(), port_));
  port_ = acceptor_->local_endpoint().port();
  accept();
}

void FakeHub::close() {
  acceptor_.reset();
  for (const auto& each : sessions_) {
    if (const auto session = each.lock()) session->socket.close();
  }
  sessions_.clear();
}

void FakeHub::accept() {
  acceptor_->async_accept([this](error_code failed, tcp::socket socket) {
    if (failed) return;
    const auto session = std::make_shared<Session>(std::move(socket));
    sessions_.push_back(session);
    session->read(*this);
    accept();
  });
}

std::string FakeHub::address() const { return "http://127.0.0.1:" + std::to_string(port_) + "/publish"; }

FakeHub::Answer FakeHub::taking() {
  return [count = 0](const Posted&) mutable {
    return answerOf(202, R"({"last_message_id":"17:)" + std::to_string(++count) + "\"}");
  };
}

std::string FakeHub::answerOf(int status, const std::string& body) {
  return "HTTP/1.1 " + std::to_string(status) +
         " X\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::vector<std::string> FakeHub::bodies(const std::string& channel) const {
  std::vector<std::string> all;
  for (const Posted& each : posted) {
    if (each.path == "/publish/" + channel) all.push_back(each.body);
  }
  return all;
}

}  // namespace web::test
