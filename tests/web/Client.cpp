// The other end of a connection, byte by byte.
#include "web/Client.h"

#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <chrono>
#include <stdexcept>

namespace web::test {

namespace asio = boost::asio;
using boost::system::error_code;

bool runUntil(asio::io_context& loop, const std::function<bool()>& done) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    loop.restart();
    loop.run_one_for(std::chrono::milliseconds(1));
  }
  return true;
}

Client::Client(asio::io_context& loop, std::uint16_t port, int receiveBuffer) : loop_(loop), socket_(loop) {
  socket_.open(asio::ip::tcp::v4());
  if (receiveBuffer > 0) socket_.set_option(asio::socket_base::receive_buffer_size(receiveBuffer));
  socket_.connect({asio::ip::address_v4::loopback(), port});
  socket_.non_blocking(true);
}

void Client::send(std::string_view bytes) {
  while (!bytes.empty()) {
    error_code failed;
    bytes.remove_prefix(socket_.write_some(asio::buffer(bytes.data(), bytes.size()), failed));
    if (failed && failed != asio::error::would_block) {
      cut_ = true;
      return;
    }
    loop_.poll();
  }
}

bool Client::receive() {
  std::array<char, 65536> piece;
  while (true) {
    error_code failed;
    const std::size_t size = socket_.read_some(asio::buffer(piece), failed);
    received_.append(piece.data(), size);
    cut_ = cut_ || (failed && failed != asio::error::would_block && failed != asio::error::eof);
    if (failed) return failed == asio::error::would_block;
  }
}

std::string Client::receiveAll() {
  if (!runUntil(loop_, [&] { return !receive(); })) throw std::runtime_error("the server keeps it open");
  return std::exchange(received_, {});
}

Answer Client::answer(bool hasBody) {
  std::size_t headSize = std::string::npos;
  std::size_t size = 0;
  Answer answer;
  const bool came = runUntil(loop_, [&] {
    receive();
    if (headSize == std::string::npos) {
      headSize = received_.find("\r\n\r\n");
      if (headSize == std::string::npos) return false;
      answer.status = std::stoi(received_.substr(received_.find(' ')));
      for (std::size_t at = received_.find("\r\n") + 2; at < headSize;) {
        const std::size_t colon = received_.find(": ", at);
        const std::size_t end = received_.find("\r\n", at);
        answer.headers[received_.substr(at, colon - at)] = received_.substr(colon + 2, end - colon - 2);
        at = end + 2;
      }
      headSize += 4;
      if (hasBody && answer.headers.count("Content-Length")) {
        size = std::stoul(answer.headers["Content-Length"]);
      }
    }
    return received_.size() >= headSize + size;
  });
  if (!came) throw std::runtime_error("no answer: " + received_);
  answer.body = received_.substr(headSize, size);
  received_.erase(0, headSize + size);
  return answer;
}

Answer Client::get(std::string_view path, std::string_view moreHeaders) {
  send("GET " + std::string(path) + " HTTP/1.1\r\nHost: localhost\r\n" + std::string(moreHeaders) + "\r\n");
  return answer();
}

Answer Client::post(std::string_view path, std::string_view authorization, std::string_view moreHeaders) {
  send("POST " + std::string(path) + " HTTP/1.1\r\nHost: localhost\r\nContent-Length: 0\r\nAuthorization: " +
       std::string(authorization) + "\r\n" + std::string(moreHeaders) + "\r\n");
  return answer();
}

void Client::open(std::string_view path, std::string_view moreHeaders) {
  send("GET " + std::string(path) + " HTTP/1.1\r\nHost: localhost\r\n" + std::string(moreHeaders) + "\r\n");
}

Event Client::event() {
  std::optional<Event> event;
  const bool came = runUntil(loop_, [&] {
    receive();
    unchunk();
    event = takeEvent();
    return event.has_value();
  });
  if (!came) throw std::runtime_error("no event: " + received_ + text_);
  return *event;
}

std::vector<Event> Client::events() {
  receive();
  unchunk();
  std::vector<Event> all;
  while (auto event = takeEvent()) all.push_back(std::move(*event));
  return all;
}

void Client::unchunk() {
  if (!headRead_) {
    const std::size_t end = received_.find("\r\n\r\n");
    if (end == std::string::npos) return;
    if (received_.find("200 OK") != 9) throw std::runtime_error("no stream: " + received_);
    received_.erase(0, end + 4);
    headRead_ = true;
  }
  std::size_t at = 0;
  while (true) {
    const std::size_t line = received_.find("\r\n", at);
    if (line == std::string::npos) break;
    const std::size_t size = std::stoul(received_.substr(at, line - at), nullptr, 16);
    if (received_.size() < line + 2 + size + 2) break;
    if (received_.compare(line + 2 + size, 2, "\r\n") != 0) throw std::runtime_error("chunk without end");
    complete_ = complete_ || size == 0;
    text_.append(received_, line + 2, size);
    at = line + 2 + size + 2;
  }
  received_.erase(0, at);
}

std::optional<Event> Client::takeEvent() {
  const std::size_t end = text_.find("\n\n");
  if (end == std::string::npos) return std::nullopt;
  if (text_.find('\r') < end) throw std::runtime_error("a line break of another kind");
  Event event;
  for (std::size_t at = 0; at < end + 1;) {
    const std::size_t next = text_.find('\n', at);
    const std::string line = text_.substr(at, next - at);
    at = next + 1;
    if (line.starts_with("event: ")) event.name = line.substr(7);
    if (line.starts_with("id: ")) event.id = std::stoull(line.substr(4));
    if (line.starts_with("data: ")) event.data += (event.data.empty() ? "" : "\n") + line.substr(6);
  }
  text_.erase(0, end + 2);
  if (event.name == "hello") {
    hello_ = event.data;
    return takeEvent();
  }
  return event;
}

}  // namespace web::test
