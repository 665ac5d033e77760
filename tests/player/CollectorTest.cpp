// What a player takes from a distribution folder, and what it keeps when that fails.

#include <sys/stat.h>

#include "player/PlayerFixture.h"

namespace app::test {
namespace {

namespace fs = std::filesystem;

TEST_F(CollectorTest, TakesWhatIsForThisComputerAndLaysOutItsFiles) {
  const std::string shop = deckBytes("Shop", forComputer("BOARD"));
  const std::string plant = deckBytes("Plant", {{"COMPUTER", "\\\\board\tOther\t"}});
  const std::string elsewhere = deckBytes("Else", {{"COMPUTER", "Hall\tGate\t"}});
  folder.send("shop", 1, {{"shop.pptx", shop}, {"prices.txt", "1"}, {"pictures/a.png", "A"}}, "shop.1");
  folder.send("Plant", 2, {{"Plant.pptx", plant}});
  folder.send("Elsewhere", 3, {{"Elsewhere.pptx", elsewhere}, {"big.txt", std::string(1000, 'x')}}, "e");
  look();
  EXPECT_EQ(shown(), "Plant shop");
  EXPECT_EQ(deck("Elsewhere").why, "It is for other computers: Hall, Gate.");
  EXPECT_EQ(read(deck("shop").file), shop);
  EXPECT_EQ(deck("shop").path, deck("shop").file);
  EXPECT_EQ(read(fs::path(deck("shop").path).parent_path() / "pictures/a.png"), "A");
  EXPECT_EQ(filesCached(), 4U) << "what is for others takes no room";
  EXPECT_TRUE(log.empty());
}

TEST_F(CollectorTest, TakesDecksThatWerePutThereByHandWhenTheyHaveComeToRest) {
  folder.put("Hand.pptx", deckBytes("Hand"));
  folder.put("~$Hand.pptx", "lock of an editor");
  folder.put("notes.txt", "no deck");
  look();
  EXPECT_TRUE(collector->isBusy());
  EXPECT_FALSE(collector->isSettled());
  EXPECT_EQ(deck("Hand").why, "It is being written.");
  changed = [this] { EXPECT_EQ(deck("Hand").why, "") << "it has come to rest"; };
  look();
  changed = [] {};
  EXPECT_TRUE(collector->isSettled());
  EXPECT_EQ(shown(), "Hand");
  EXPECT_EQ(deck("Hand").path, (folder.path() / "Hand.pptx").string()) << "what it reads lies beside it";
  EXPECT_EQ(collector->decks().size(), 1U);

  const std::string before = deck("Hand").version;
  const std::string other = deckBytes("Other");
  folder.put("Hand.pptx", other);
  look();
  EXPECT_EQ(deck("Hand").version, before) << "it is being written, and the former one goes on";
  EXPECT_EQ(shown(), "Hand");
  look();
  EXPECT_EQ(read(deck("Hand").file), other);

  folder.remove("Hand.pptx");
  look();
  EXPECT_EQ(shown(), "");
}

TEST_F(CollectorTest, FollowsNewVersionsAndWithdrawals) {
  const auto prices = [](const char* text) {
    return SentFolder::Files{{"A.pptx", deckBytes("A")}, {"p.txt", text}};
  };
  folder.send("A", 1, prices("1"), "A.1");
  look();
  const FolderDeck first = deck("A");
  auto onShow = kept.keep(first.version);
  ASSERT_NE(onShow, nullptr);
  folder.send("A", 2, prices("2"), "A.2");
  look();
  const FolderDeck second = deck("A");
  EXPECT_NE(second.version, first.version);
  EXPECT_EQ(read(fs::path(second.file).parent_path() / "p.txt"), "2");
  EXPECT_EQ(read(fs::path(first.file).parent_path() / "p.txt"), "1") << "until the show has changed over";
  EXPECT_EQ(filesCached(), 3U) << "versions share files";

  folder.send("A", 3, prices("2"), "A.3");
  look();
  EXPECT_EQ(deck("A").version, second.version) << "the same files sent again are no other version";

  folder.withdraw("A", 4);
  look();
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(deck("A").why, "It was withdrawn.");
  EXPECT_EQ(filesCached(), 2U) << "what is on show stays";
  onShow.reset();
  look();
  EXPECT_EQ(filesCached(), 0U) << "nobody shows it any more";
  EXPECT_EQ(kept.keep("unknown"), nullptr);
}

TEST_F(CollectorTest, WaitsForFilesAndSaysSoAfterTenSeconds) {
  const std::string good = deckBytes("good");
  folder.send("A", 1, {{"A.pptx", good}});
  look();
  const std::string taken = deck("A").version;

  const std::string next = deckBytes("next");
  Note note = folder.note("A", 2, {{"A.pptx", next}, {"p.txt", "prices"}}, "A.2");
  folder.put(note);
  for (int i = 0; i < 9; ++i) look();
  EXPECT_EQ(deck("A").version, taken);
  EXPECT_TRUE(deck("A").isOn);
  EXPECT_NE(deck("A").why, "");
  EXPECT_TRUE(log.empty());
  for (int i = 0; i < 9; ++i) look();
  ASSERT_EQ(log.size(), 1U);
  EXPECT_EQ(log[0], "'A' is not taken: 'A.pptx' cannot be read: No such file or directory.");

  // Half a file, then another one of the right size, then the right one.
  folder.put("A.2/A.pptx", next.substr(0, 100));
  folder.put("A.2/p.txt", "PRICES");
  look(60'000);
  EXPECT_EQ(deck("A").version, taken);
  folder.put("A.2/A.pptx", next);
  look(60'000);
  EXPECT_EQ(deck("A").version, taken);
  EXPECT_NE(deck("A").why.find("'p.txt' is not what its note says."), std::string::npos) << deck("A").why;
  folder.put("A.2/p.txt", "prices");
  look(60'000);
  EXPECT_EQ(read(deck("A").file), next);
  EXPECT_EQ(deck("A").why, "");
  EXPECT_EQ(log.back(), "Nothing hinders 'A' any more.");
}

TEST_F(CollectorTest, RefusesDamagedDecksAndKeepsTheLastGoodOne) {
  folder.send("A", 1, {{"A.pptx", deckBytes("good")}});
  look();
  const std::string taken = deck("A").version;
  std::string cut = deckBytes("damaged");
  cut.resize(cut.size() / 2);
  support::DeckBuilder slideless = support::DeckBuilder::of();
  slideless.part("ppt/slides/slide1.xml", "<p:sld>");
  const std::string badDate = deckBytes("bad", {{"STOP", "soon"}});
  std::int64_t serial = 2;
  for (const std::string& bad : {cut, std::string("no archive"), std::string(), slideless.bytes(), badDate}) {
    folder.send("A", serial++, {{"A.pptx", bad}});
    look(60'000);
    EXPECT_EQ(deck("A").version, taken);
    EXPECT_NE(deck("A").why, "");
  }
  folder.send("B", 1, {{"B.pptx", cut}});
  look();
  EXPECT_FALSE(deck("B").isOn);
  EXPECT_NE(deck("B").why, "");
  EXPECT_EQ(shown(), "A");
}

TEST_F(CollectorTest, LeavesAloneWhatItDoesNotUnderstand) {
  folder.send("A", 1, {{"A.pptx", deckBytes("good")}});
  look();
  for (const char* text : {R"({"format": 2, "name": "A"})", "{", "[[[[", "", R"({"format": 1, "name": "B"})",
                           R"({"format":1,"name":"A","serial":2,"way":"live","folder":"..","files":[]})"}) {
    folder.put("A.sent.json", text);
    look();
    EXPECT_EQ(shown(), "A") << text;
    EXPECT_NE(deck("A").why, "") << text;
  }
  // A note that goes by another deck's name.
  folder.put("C.sent.json", folder.note("A", 9, {{"A.pptx", deckBytes("other")}}).json().dump());
  look();
  EXPECT_FALSE(deck("C").isOn);
  EXPECT_EQ(shown(), "A");
}

TEST_F(CollectorTest, OfNamesThatDifferInCaseTheFirstCounts) {
  folder.send("SHOP", 1, {{"SHOP.pptx", deckBytes("first")}});
  folder.send("shop", 1, {{"shop.pptx", deckBytes("second")}});
  look();
  EXPECT_EQ(shown(), "SHOP");
  EXPECT_EQ(deck("shop").why, "Its name differs from that of 'SHOP' in case alone.");
  folder.remove("SHOP.sent.json");
  folder.remove("SHOP.pptx");
  look();
  EXPECT_EQ(shown(), "shop");
}

TEST_F(CollectorTest, FollowsNoLinksOutOfTheFolder) {
  support::TemporaryFolder secret;
  const std::string bytes = deckBytes("secret");
  static_cast<void>(secret.write("Deck.pptx", bytes));
  fs::create_symlink(secret.path() / "Deck.pptx", folder.path() / "Plain.pptx");
  fs::create_symlink(secret.path() / "Deck.pptx", folder.path() / "File.pptx");
  fs::create_directory_symlink(secret.path(), folder.path() / "Folder.1");
  folder.put(folder.note("File", 1, {{"File.pptx", bytes}}));
  folder.put(folder.note("Folder", 1, {{"Deck.pptx", bytes}}, "Folder.1"));
  ASSERT_EQ(::mkfifo((folder.path() / "Pipe.pptx").c_str(), 0600), 0);
  look();
  look();
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(deck("Plain").why, "It cannot be read: it is a symbolic link.");
  EXPECT_EQ(deck("File").why, "'File.pptx' cannot be read: it is a symbolic link.");
  EXPECT_NE(deck("Folder").why, "");
  EXPECT_EQ(deck("Pipe").why, "It cannot be read: it is no regular file.");
}

TEST_F(CollectorTest, GoesByTheClockOnTheWall) {
  folder.send("Night", 1, {{"Night.pptx", deckBytes("n", {{"DAYS", "sun"}, {"HOURS", "22:00-06:00"}})}});
  folder.send("Over", 1, {{"Over.pptx", deckBytes("o", {{"STOP", "2026-11-22 11:00:00"}})}});
  folder.send(
      "Soon", 1,
      {{"Soon.pptx", deckBytes("s", {{"START", "2026-11-22 12:30:00"}, {"STOP", "2026-11-22 13:00:00"}})}});
  folder.send("Wrong", 1, {{"Wrong.pptx", deckBytes("w", {{"HOURS", "all day"}})}});
  look();
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(deck("Night").why, "Its time comes at 2026-11-22 22:00:00.");
  EXPECT_EQ(deck("Over").why, "Its time ended at 2026-11-22 11:00:00.");
  EXPECT_EQ(deck("Soon").why, "Its time comes at 2026-11-22 12:30:00.");
  EXPECT_EQ(deck("Wrong").why.find("Its times make no sense: Hours are written as"), 0U);
  EXPECT_EQ(filesCached(), 2U) << "what will be shown is got before its time";
  now = basic::DateFrom(2026, 11, 22, 12, 30, 0);
  EXPECT_EQ(shown(), "Soon");
  now = basic::DateFrom(2026, 11, 23, 5, 0, 0);
  EXPECT_EQ(shown(), "Night");
  look();
  EXPECT_EQ(filesCached(), 1U);
  // Set back.
  now = basic::DateFrom(2026, 11, 22, 10, 0, 0);
  look();
  EXPECT_EQ(shown(), "Over");
}

}  // namespace
}  // namespace app::test
