// Many screens in one process: streams of a hub's view, and how long its messages took to each of them.
//   fanout_readers COUNT VIEW ID PORT...
// opens COUNT streams of VIEW from the message ID on, by turns at the PORTs of this machine, and prints
// "ready". When standard input ends, it prints one JSON object. A message bears "sequence" and "sent", the
// nanoseconds of the monotonic clock when it was sent.

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

constexpr double MillisecondsOfNanosecond = 1e-6;

struct Tally {
  std::size_t screens = 0;
  std::size_t open = 0;
  std::size_t lost = 0;
  std::size_t missing = 0;
  std::size_t repeated = 0;
  std::vector<float> delays;
  /// By sequence: how long the message took to the last screen, and how many have it.
  std::map<std::int64_t, std::pair<float, std::size_t>> lasts;
};

std::optional<std::int64_t> member(std::string_view text, std::string_view name) {
  const std::size_t at = text.find(name);
  if (at == std::string_view::npos) return std::nullopt;
  std::int64_t number = 0;
  const char* begin = text.data() + at + name.size();
  return std::from_chars(begin, text.data() + text.size(), number).ec == std::errc() ? std::optional(number)
                                                                                     : std::nullopt;
}

class Screen : public std::enable_shared_from_this<Screen> {
 public:
  Screen(asio::io_context& loop, Tally& tally) : socket_(loop), tally_(tally) {}

  void open(std::uint16_t port, const std::string& target) {
    socket_.async_connect({asio::ip::address_v4::loopback(), port}, [self = shared_from_this(),
                                                                     target](error_code failed) {
      if (failed) return self->lose();
      self->request_ = "GET " + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\nAccept: text/event-stream\r\n\r\n";
      self->ask();
    });
  }

 private:
  void ask() {
    asio::async_write(socket_, asio::buffer(request_),
                      [self = shared_from_this()](error_code failed, std::size_t) {
                        if (failed) return self->lose();
                        self->read();
                      });
  }

  // Waits without a buffer, as most of thousands wait at any moment.
  void read() {
    socket_.async_wait(tcp::socket::wait_read, [self = shared_from_this()](error_code failed) {
      static std::vector<char> buffer(1 << 20);
      const std::size_t size = failed ? 0 : self->socket_.read_some(asio::buffer(buffer), failed);
      if (failed) return self->lose();
      self->take({buffer.data(), size});
      self->read();
    });
  }

  void take(std::string_view bytes) {
    rest_.append(bytes);
    std::size_t from = 0;
    for (std::size_t end; (end = rest_.find("\n\n", from)) != std::string::npos; from = end + 2) {
      message(std::string_view(rest_).substr(from, end - from));
    }
    rest_.erase(0, from);
    if (rest_.empty()) rest_.shrink_to_fit();
  }

  void message(std::string_view block) {
    if (!isOpen_ && block.find(" 200 ") != std::string_view::npos) {
      isOpen_ = true;
      if (++tally_.open == tally_.screens) std::cout << "ready" << std::endl;
    }
    const auto sequence = member(block, "\"sequence\":");
    const auto sent = member(block, "\"sent\":");
    if (!sequence || !sent) return;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const std::int64_t passed = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count() - *sent;
    const auto delay = static_cast<float>(static_cast<double>(passed) * MillisecondsOfNanosecond);
    if (last_ && *sequence <= *last_) ++tally_.repeated;
    if (last_ && *sequence > *last_ + 1) tally_.missing += static_cast<std::size_t>(*sequence - *last_ - 1);
    last_ = sequence;
    tally_.delays.push_back(delay);
    auto& [longest, count] = tally_.lasts[*sequence];
    longest = std::max(longest, delay);
    ++count;
  }

  void lose() { ++tally_.lost; }

  tcp::socket socket_;
  Tally& tally_;
  std::string request_, rest_;
  bool isOpen_ = false;
  std::optional<std::int64_t> last_;
};

float part(std::vector<float>& values, double share) {
  if (values.empty()) return 0;
  const auto place = static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), values.begin() + place, values.end());
  return values[static_cast<std::size_t>(place)];
}

void print(Tally& tally) {
  std::vector<float> lasts;
  std::size_t incomplete = 0;
  for (const auto& [sequence, last] : tally.lasts) {
    lasts.push_back(last.first);
    if (last.second != tally.screens) ++incomplete;
  }
  std::cout << R"({"messages":)" << tally.lasts.size() << R"(,"deliveries":)" << tally.delays.size()
            << R"(,"median":)" << part(tally.delays, 0.5) << R"(,"of99":)" << part(tally.delays, 0.99)
            << R"(,"longest":)" << part(tally.delays, 1) << R"(,"lastScreen":)" << part(lasts, 0.5)
            << R"(,"incomplete":)" << incomplete << R"(,"missing":)" << tally.missing << R"(,"repeated":)"
            << tally.repeated << R"(,"lost":)" << tally.lost << "}" << std::endl;
}

void allowFiles(std::size_t count) {
  rlimit limit{};
  ::getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, count + 64);
  ::setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 5) {
    std::cerr << "usage: fanout_readers COUNT VIEW ID PORT...\n";
    return 2;
  }
  asio::io_context loop(1);
  Tally tally;
  tally.screens = std::stoul(argv[1]);
  allowFiles(tally.screens);
  const std::string target = std::string("/screen/hub/") + argv[2] + "?last_event_id=" + argv[3];
  const std::vector<std::string> ports(argv + 4, argv + argc);
  // In small groups, as a hub's queue of those who knock is bounded.
  asio::steady_timer pause(loop);
  std::size_t opened = 0;
  const std::function<void(error_code)> openSome = [&](error_code) {
    for (int group = 0; group < 100 && opened < tally.screens; ++group, ++opened) {
      const auto port = static_cast<std::uint16_t>(std::stoul(ports[opened % ports.size()]));
      std::make_shared<Screen>(loop, tally)->open(port, target);
    }
    if (opened == tally.screens) return;
    pause.expires_after(std::chrono::milliseconds(20));
    pause.async_wait(openSome);
  };
  openSome({});
  asio::posix::stream_descriptor input(loop, ::dup(STDIN_FILENO));
  input.async_wait(asio::posix::stream_descriptor::wait_read, [&](error_code) { loop.stop(); });
  loop.run();
  print(tally);
}
