// Ticks of a running show of two slides with 100 linked shapes each, or of a table, on a real
// deck and a real file, with a screen attached over loopback.
//
// The limits: a tick without a change asks the file's date once (one system call,
// about 1 µs) and compares 200 texts; one with changes reads the file, renders
// the changed shapes and writes one message to each socket.
#include <benchmark/benchmark.h>

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "addin/Connect.h"
#include "app/LinkedDeck.h"
#include "app/show/Stage.h"
#include "app/wiring/Environment.h"
#include "runtime/FrmRuntimeTimer.h"
#include "web/show/Server.h"

namespace {

namespace asio = boost::asio;
constexpr int Shapes = 100;

class RunningShow {
 public:
  RunningShow(const std::string& deck, const std::string& data)
      : folder_(std::filesystem::temp_directory_path() / "lumenfold-tick-bench") {
    std::filesystem::create_directories(folder_);
    std::ofstream(folder_ / "deck.pptx", std::ios::binary) << deck;
    writeData(data);
    stage_.emplace(host_, environment_.loop(), host_.open((folder_ / "deck.pptx").string()),
                   app::Stage::Options{});
    web::Options options;
    options.port = 0;
    server_.emplace(environment_.loop().context(), *stage_, options);
    stage_->connect(&*server_);
    stage_->begin(std::nullopt, [] {});
    form().tmrData().Enabled(false);
    screen_.connect({asio::ip::address_v4::loopback(), server_->port()});
    asio::write(screen_, asio::buffer(std::string("GET /screen/events HTTP/1.1\r\nHost: localhost\r\n\r\n")));
    while (server_->screens() == 0) environment_.loop().context().poll();
  }
  ~RunningShow() {
    stage_->connect(nullptr);
    stage_->shutDown();
    std::filesystem::remove_all(folder_);
  }

  void writeData(const std::string& data) { std::ofstream(folder_ / "data.txt", std::ios::binary) << data; }
  void tick(std::int16_t slides) {
    form().RefreshData();
    for (std::int16_t slide = 1; slide <= slides; ++slide) form().RefreshSlide(slide);
  }
  /// Until everything is on the sockets.
  void deliver() {
    while (environment_.loop().context().poll() > 0) {
    }
  }
  /// Takes what the screen has got, at least one byte.
  std::size_t drain() {
    std::vector<char> piece(1 << 20);
    return screen_.read_some(asio::buffer(piece));
  }

 private:
  LF2000::FrmRuntimeTimer& form() { return *host_.runtimeTimer(); }

  std::filesystem::path folder_;
  app::Environment environment_;
  app::AddInHost host_;
  std::optional<app::Stage> stage_;
  std::optional<web::Server> server_;
  asio::io_context screenLoop_;
  asio::ip::tcp::socket screen_{screenLoop_};
};

void TickWithoutChange(benchmark::State& state) {
  RunningShow show(bench::linkedDeck(2, Shapes), bench::linkedData(2 * Shapes, 0, 0));
  for (auto _ : state) show.tick(2);
}
BENCHMARK(TickWithoutChange)->Unit(benchmark::kMicrosecond);

/// `dataOf(round)` is what the file holds.
template <typename Data>
void changingTicks(benchmark::State& state, RunningShow& show, std::int16_t slides, const Data& dataOf) {
  show.deliver();
  show.drain();
  int round = 0;
  std::size_t bytes = 0;
  for (auto _ : state) {
    state.PauseTiming();
    show.writeData(dataOf(++round));
    state.ResumeTiming();
    show.tick(slides);
    show.deliver();
    state.PauseTiming();
    bytes += show.drain();
    state.ResumeTiming();
  }
  state.counters["bytes"] = static_cast<double>(bytes) / static_cast<double>(state.iterations());
}

void TickWithChangedShapes(benchmark::State& state) {
  RunningShow show(bench::linkedDeck(2, Shapes), bench::linkedData(2 * Shapes, 0, 0));
  changingTicks(state, show, 2, [&](int round) {
    return bench::linkedData(2 * Shapes, static_cast<int>(state.range(0)), round);
  });
}
BENCHMARK(TickWithChangedShapes)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);

/// A table of 20 x 8 of which so many cells change.
void TickWithChangedTable(benchmark::State& state) {
  constexpr int Rows = 20;
  constexpr int Columns = 8;
  RunningShow show(bench::tableDeck(Rows, Columns), bench::tableData(Rows, Columns, 0, 0));
  changingTicks(state, show, 1, [&](int round) {
    return bench::tableData(Rows, Columns, static_cast<int>(state.range(0)), round);
  });
}
BENCHMARK(TickWithChangedTable)->Arg(1)->Arg(8)->Arg(160)->Unit(benchmark::kMicrosecond);

}  // namespace
