// Whatever a client sends, the server answers or hangs up, and serves the next
// one. Each input is one connection's bytes.
#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "web/FakeShow.h"
#include "web/show/Server.h"

namespace {

namespace asio = boost::asio;

struct World {
  World() {
    options.port = 0;
    options.token = "t";
    show.assets["a"] = {std::make_shared<const std::string>("bytes"), "image/png"};
  }
  asio::io_context loop;
  web::test::FakeShow show;
  web::Options options;
  web::Server server{loop, show, options};
};

/// What the server says to these bytes before it closes, or has no more to say.
std::string visit(World& world, const void* bytes, std::size_t size) {
  asio::ip::tcp::socket socket(world.loop);
  socket.connect({asio::ip::address_v4::loopback(), world.server.port()});
  socket.non_blocking(true);
  boost::system::error_code failed;
  socket.write_some(asio::buffer(bytes, size), failed);
  socket.shutdown(asio::socket_base::shutdown_send, failed);
  std::string said;
  std::array<char, 4096> piece{};
  failed = {};
  for (int turns = 0; turns < 1000 && (!failed || failed == asio::error::would_block); ++turns) {
    world.loop.poll();
    said.append(piece.data(), socket.read_some(asio::buffer(piece), failed));
  }
  world.loop.poll();
  return said;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static World world;
  const std::string said = visit(world, data, size);
  if (!said.empty() && !said.starts_with("HTTP/1.")) std::abort();
  static const std::string sane = "GET /healthz HTTP/1.1\r\nHost: localhost\r\n\r\n";
  if (!visit(world, sane.data(), sane.size()).starts_with("HTTP/1.1 200")) std::abort();
  world.show.commands.clear();
  return 0;
}
