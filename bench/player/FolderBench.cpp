// What a player's look at its folder costs, once a second around the clock, and how soon a new version is
// taken.
//
// The limits: a look at which nothing has changed reads the folder and the state of each note (some
// microseconds a deck); a new version is copied, digested and inflated once.
#include <benchmark/benchmark.h>

#include <memory>
#include <optional>
#include <string>

#include "player/PlayerFixture.h"

namespace {

using namespace app;
using namespace app::test;

/// A player with so many decks, which has seen them all.
class World {
 public:
  World(int decks, const PrivateKey* key) {
    for (int i = 0; i < decks; ++i) {
      const std::string name = "Deck" + std::to_string(i);
      SentFolder::Files files = {{name + ".pptx", deckBytes(name)}};
      for (int file = 0; file < 3; ++file) {
        files.emplace_back("data" + std::to_string(file) + ".txt", name + std::to_string(file));
      }
      folder.send(name, 1, files, name + ".1", key);
    }
    if (key != nullptr) options_.trust = key->publicKey();
    collector_.emplace(local_, cache_, kept_, options_,
                       DeckCollector::Hearer{[] {}, [](const std::string&) {}});
    look();
  }
  void look() { collector_->look(now_, ticks_ += 1000); }

  SentFolder folder;

 private:
  std::int64_t ticks_ = 0;
  basic::Date now_ = basic::DateFrom(2026, 11, 22, 12, 0, 0);
  support::TemporaryFolder cacheFolder_;
  DeckCollector::Options options_{"Board", std::nullopt, std::uint64_t{1} << 30U};
  LocalFolder local_{folder.path().string(), [this] { return ticks_; }, [] {}};
  DeckCache cache_{cacheFolder_.path() / "cache"};
  KeptVersions kept_;
  std::optional<DeckCollector> collector_;
};

void LookWithoutChange(benchmark::State& state) {
  const PrivateKey key = PrivateKey::generate();
  World world(static_cast<int>(state.range(0)), state.range(1) != 0 ? &key : nullptr);
  for (auto _ : state) world.look();
}
BENCHMARK(LookWithoutChange)
    ->ArgNames({"decks", "signed"})
    ->ArgsProduct({{10, 100}, {0, 1}})
    ->Iterations(300)  // its world is made once
    ->Unit(benchmark::kMicrosecond);

void TakeNewVersion(benchmark::State& state) {
  World world(20, nullptr);
  std::int64_t serial = 2;
  for (auto _ : state) {
    state.PauseTiming();
    world.folder.send("Deck0", serial, {{"Deck0.pptx", deckBytes(std::to_string(serial))}});
    ++serial;
    state.ResumeTiming();
    world.look();
  }
}
BENCHMARK(TakeNewVersion)->Iterations(100)->Unit(benchmark::kMicrosecond);

}  // namespace
