// What a player's cache gives after a restart, and what goes when it is full.

#include "basic/Error.h"
#include "player/PlayerFixture.h"

namespace app::test {
namespace {

struct RestartTest : CollectorTest {};

TEST_F(RestartTest, ShowsTheSameWithoutItsFolderAsLongAsItIsWhole) {
  folder.send("A", 1, {{"A.pptx", deckBytes("a")}, {"p.txt", "prices"}}, "A.1");
  folder.send("B", 1, {{"B.pptx", deckBytes("b")}});
  folder.send("Other", 1, {{"Other.pptx", deckBytes("o", forComputer("Hall"))}});
  look();
  const FolderDeck before = deck("A");
  const std::string gone = folder.path().string() + ".gone";
  std::filesystem::rename(folder.path(), gone);
  start();
  EXPECT_EQ(shown(), "A B");
  EXPECT_EQ(deck("A"), before);
  look();
  EXPECT_EQ(shown(), "A B");
  EXPECT_FALSE(collector->trouble().empty());
  EXPECT_FALSE(collector->wasRead());
  EXPECT_EQ(log.size(), 1U);

  // A disk that forgets.
  for (const auto& file : std::filesystem::directory_iterator(cacheFolder.path() / "cache" / "content")) {
    if (file.file_size() != 6) continue;
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    std::ofstream(file.path()) << "PRICES";
  }
  start();
  EXPECT_EQ(shown(), "B");
  std::filesystem::rename(gone, folder.path());
  look();
  EXPECT_EQ(shown(), "A B");
  EXPECT_EQ(read(std::filesystem::path(deck("A").file).parent_path() / "p.txt"), "prices");
}

TEST_F(RestartTest, KnowsNothingWhereItsMemoryIsDamaged) {
  folder.send("A", 1, {{"A.pptx", deckBytes("a")}});
  look();
  std::ofstream(cacheFolder.path() / "cache" / "known.json") << "{";
  start();
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(log.size(), 1U);
  look();
  EXPECT_EQ(shown(), "A");
}

TEST_F(RestartTest, AShareThatIsNotMountedIsNoEmptyFolder) {
  folder.put("Hand.pptx", deckBytes("a"));
  look();
  look();
  ASSERT_EQ(shown(), "Hand");
  folder.remove("Hand.pptx");
  // As another device would look: it held the deck.
  source->device(source->device() + 1);
  look();
  EXPECT_EQ(shown(), "Hand");
  EXPECT_NE(collector->trouble().find("nothing seems to be mounted there"), std::string::npos);
}

TEST_F(RestartTest, AFolderOfOtherFilesIsNoCache) {
  std::filesystem::create_directories(cacheFolder.path() / "cache" / "content");
  static_cast<void>(cacheFolder.write("cache/content/letter.txt", "mine"));
  EXPECT_THROW(start(), basic::Error);
  EXPECT_EQ(cacheFolder.read("cache/content/letter.txt"), "mine");
}

/// The cache holds two of the decks, of 100 kB and a little each.
struct RoomTest : CollectorTest {
  RoomTest() { options.cacheBytes = 250'000; }
  void send(const std::string& name, const std::string& hours, std::size_t size = 100'000) {
    Tags tags;
    if (!hours.empty()) tags.emplace_back("HOURS", hours);
    folder.send(name, 1, {{name + ".pptx", deckBytes(name, tags)}, {"data.txt", std::string(size, name[0])}},
                name);
  }
};

TEST_F(RoomTest, WhatIsOnShowNeverGoesAndTheLeastRecentlyShownGoesFirst) {
  send("A", "08:00-09:00");
  send("B", "10:00-11:00");
  send("C", "12:00-13:00");
  now = basic::DateFrom(2026, 11, 22, 8, 0, 0);
  look();
  EXPECT_EQ(shown(), "A");
  EXPECT_FALSE(deck("B").file.empty());
  EXPECT_TRUE(deck("C").file.empty()) << "what can wait makes nothing go";
  auto onShow = kept.keep(deck("A").version);
  now = basic::DateFrom(2026, 11, 22, 12, 0, 0);
  look();
  EXPECT_EQ(shown(), "C");
  EXPECT_FALSE(deck("A").file.empty());
  EXPECT_TRUE(deck("B").file.empty());
  onShow = kept.keep(deck("C").version);
  now = basic::DateFrom(2026, 11, 23, 10, 0, 0);
  look();
  EXPECT_EQ(shown(), "B");
  EXPECT_TRUE(deck("A").file.empty());
  EXPECT_FALSE(deck("C").file.empty());
}

TEST_F(RoomTest, ADeckThatNeverFitsIsNotTaken) {
  send("A", "");
  send("Large", "", 300'000);
  send("Small", "", 10);
  look();
  EXPECT_EQ(shown(), "A Small");
  EXPECT_EQ(deck("Large").why, "The cache has no room for it: it has 1 MB, the cache may hold 1 MB.");
  // A new version takes the place of the one before.
  folder.send("A", 2, {{"A.pptx", deckBytes("A")}, {"data.txt", std::string(200'000, 'x')}}, "A.2");
  look();
  EXPECT_EQ(deck("A").serial, 2);
}

}  // namespace
}  // namespace app::test
