// One change of ten shapes on its way to all screens over loopback. The real time
// is from the call until the last screen has the whole message; the counter
// `server_us` is what the server's thread spends on it.
#include <benchmark/benchmark.h>
#include <sys/epoll.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "web/FakeShow.h"
#include "web/show/Messages.h"
#include "web/show/Server.h"

namespace {

namespace asio = boost::asio;
using Clock = std::chrono::steady_clock;

std::vector<web::ShapeChange> tenShapes() {
  std::vector<web::ShapeChange> shapes;
  for (int i = 0; i < 10; ++i) {
    const std::string id = "s1-sh" + std::to_string(i);
    const std::string text = "Flight " + std::to_string(i) + " at gate 7";
    shapes.push_back({1, id,
                      "<div class=\"shape\" id=\"" + id +
                          "\" style=\"left:10px;top:20px;width:300px;height:40px\"><p><span style=\"font:"
                          "24px sans-serif;color:#204080\">" +
                          text + "</span></p></div>",
                      "Flight", text});
  }
  return shapes;
}

bool all(const web::ShapeChange&) { return true; }

double threadSeconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Screens that count, on a thread of their own, the bytes that arrive.
class Screens {
 public:
  Screens(std::uint16_t port, std::size_t count) : epoll_(epoll_create1(0)) {
    for (std::size_t i = 0; i < count; ++i) {
      sockets_.emplace_back(loop_);
      sockets_.back().connect({asio::ip::address_v4::loopback(), port});
      const std::string request = "GET /screen/events HTTP/1.1\r\nHost: localhost\r\n\r\n";
      asio::write(sockets_.back(), asio::buffer(request));
      epoll_event event{};
      event.events = EPOLLIN;
      event.data.fd = sockets_.back().native_handle();
      epoll_ctl(epoll_, EPOLL_CTL_ADD, event.data.fd, &event);
    }
    thread_ = std::thread([this] { read(); });
  }
  ~Screens() {
    over_ = true;
    thread_.join();
    ::close(epoll_);
  }
  [[nodiscard]] std::size_t received() const { return received_; }

 private:
  void read() {
    std::array<epoll_event, 256> events{};
    std::array<char, 65536> piece{};
    while (!over_) {
      const int ready = epoll_wait(epoll_, events.data(), events.size(), 20);
      for (int i = 0; i < ready; ++i) {
        const ssize_t size = ::read(events[static_cast<std::size_t>(i)].data.fd, piece.data(), piece.size());
        if (size > 0) received_ += static_cast<std::size_t>(size);
      }
    }
  }

  asio::io_context loop_;
  int epoll_;
  std::vector<asio::ip::tcp::socket> sockets_;
  std::atomic<std::size_t> received_{0};
  std::atomic<bool> over_{false};
  std::thread thread_;
};

void BM_Broadcast(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  asio::io_context loop;
  web::test::FakeShow show;
  web::Options options;
  options.port = 0;
  options.heartbeat = std::chrono::hours(1);
  web::Server server(loop, show, options);
  Screens screens(server.port(), count);
  while (server.screens() < count) loop.run_one_for(std::chrono::milliseconds(10));
  loop.run_for(std::chrono::milliseconds(300));  // the screens' first pictures

  const auto shapes = tenShapes();
  std::size_t sequence = 0;
  double serverSeconds = 0;
  for (auto _ : state) {
    const std::size_t size = web::shapesMessage(++sequence, shapes, all)->bytes.size();
    const std::size_t whole = screens.received() + count * size;
    const double before = threadSeconds();
    const auto start = Clock::now();
    server.shapesChanged(shapes);
    loop.poll();
    serverSeconds += threadSeconds() - before;
    while (screens.received() < whole) std::this_thread::yield();
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
  }
  state.counters["server_us"] = benchmark::Counter(serverSeconds * 1e6, benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_Broadcast)->Arg(1)->Arg(50)->Arg(200)->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_BuildMessage(benchmark::State& state) {
  const auto shapes = tenShapes();
  for (auto _ : state) benchmark::DoNotOptimize(web::shapesMessage(1, shapes, all));
}
BENCHMARK(BM_BuildMessage)->Unit(benchmark::kMicrosecond);

}  // namespace
