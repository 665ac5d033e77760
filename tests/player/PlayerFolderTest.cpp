// The decks of a folder as the loop sees them, with the thread that collects them.

#include "app/player/PlayerFolder.h"

#include <future>

#include "fakes/FakeServices.h"
#include "player/PlayerFixture.h"

namespace app::test {
namespace {

struct PlayerFolderTest : testing::Test {
  fakes::Machine machine;
  platform::EventLoop loop;
  SentFolder folder;
  support::TemporaryFolder cacheFolder;
  std::vector<std::string> log;

  std::unique_ptr<PlayerFolder> player() {
    PlayerFolderOptions options;
    options.place = folder.path().string();
    options.computer = "Board";
    options.cache = (cacheFolder.path() / "cache").string();
    return std::make_unique<PlayerFolder>(loop, machine.clock, options,
                                          [this](const std::string& line) { log.push_back(line); });
  }
  /// Runs the loop until it is so; a test that waits in vain ends by its own time.
  void until(const std::function<bool()>& isSo) {
    while (!isSo()) loop.DoEvents();
  }
  static bool isOn(const PlayerFolder& player, const std::string& name) {
    const auto& decks = player.decks();
    return std::any_of(decks.begin(), decks.end(),
                       [&](const FolderDeck& each) { return each.name == name && each.isOn; });
  }
};

TEST_F(PlayerFolderTest, ReadsTheClockEverySecond) {
  folder.send("A", 1, {{"A.pptx", deckBytes("1", {{"START", "2026-02-03 12:30:00"}})}});
  const auto decks = player();
  until([&] { return !decks->decks().empty() && !decks->decks().front().file.empty(); });
  EXPECT_EQ(decks->decks().front().why, "Its time comes at 2026-02-03 12:30:00.");
  machine.clock.start = basic::DateFrom(2026, 2, 3, 12, 30, 0);
  until([&] { return isOn(*decks, "A"); });
}

/// A share that does not answer, until somebody mends it.
class HangingFolder final : public DeckFolder {
 public:
  explicit HangingFolder(std::shared_future<void> mended) : mended_(std::move(mended)) {}
  FolderListing list() override {
    mended_.wait();
    return {};
  }
  void read(const ListedDeck&, const SentFile&, std::uint64_t, const Take&) override {}

 private:
  std::shared_future<void> mended_;
};

TEST_F(PlayerFolderTest, NobodyWaitsForAShareThatHangs) {
  folder.send("A", 1, {{"A.pptx", deckBytes("1")}});
  {
    const auto decks = player();
    int changes = 0;
    decks->onChange([&] { ++changes; });
    until([&] { return isOn(*decks, "A"); });
    EXPECT_GT(changes, 0);
    EXPECT_THROW(static_cast<void>(player()), basic::Error) << "one player a cache";
  }
  std::promise<void> mend;
  std::shared_ptr<DeckFolder> hanging = std::make_shared<HangingFolder>(mend.get_future().share());
  std::optional<PlayerFolder> decks;
  PlayerFolderOptions options;
  options.computer = "Board";
  options.cache = (cacheFolder.path() / "cache").string();
  decks.emplace(
      loop, machine.clock, options, [&](const auto&) { return hanging; },
      [this](const std::string& line) { log.push_back(line); });
  until([&] { return isOn(*decks, "A"); });
  EXPECT_FALSE(decks->wasRead());
  decks.reset();
  // The thread comes back when all of it is gone, and leaves.
  mend.set_value();
  while (hanging.use_count() > 1) loop.DoEvents();
  EXPECT_TRUE(log.empty());
}

}  // namespace
}  // namespace app::test
