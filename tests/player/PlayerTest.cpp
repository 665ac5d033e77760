// Decks that take turns on one stage.

#include "app/player/Player.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "app/ShowTest.h"
#include "support/TemporaryFolder.h"

namespace app::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct PlayerTest : ShowTest {
  support::TemporaryFolder folder;
  std::int64_t now = 0;
  bool isSynchronous = false;
  std::string whenEmpty;
  std::set<std::string> gone;
  int ends = 0;
  std::unique_ptr<Player> player;

  /// A deck of so many slides, each of which stays a second; 'h' hides one.
  FolderDeck deck(const std::string& name, const std::string& slides, const std::string& version = "1") {
    support::DeckBuilder builder;
    for (const char kind : slides) {
      const int slide = builder.addSlide(support::textShape(2, "p", name + version));
      builder.afterCommonData(slide, "<p:transition advTm=\"1000\"/>");
      if (kind == 'h') builder.slideAttributes(slide, "show=\"0\"");
    }
    FolderDeck deck;
    deck.name = name;
    deck.isOn = true;
    deck.version = version;
    deck.file = deck.path = folder.write(name + version + ".pptx", builder.bytes());
    return deck;
  }
  FolderDeck off(FolderDeck deck, const std::string& why) {
    deck.isOn = false;
    deck.why = why;
    return deck;
  }
  void play(std::vector<FolderDeck> decks) {
    Player::Options options;
    options.stage.seconds = 1;
    options.isSynchronous = isSynchronous;
    options.whenEmpty = whenEmpty;
    options.read = [](const FolderDeck& deck, const deck::SlideShowOptions& show,
                      const std::function<void(DeckRead)>& then) {
      then(readDeck(deck.file, deck.path, show));
    };
    options.keep = [this](const FolderDeck& deck) -> std::shared_ptr<const void> {
      return gone.contains(deck.name) ? nullptr : std::make_shared<int>();
    };
    options.now = [this] { return now; };
    player.reset();
    player = std::make_unique<Player>(host, loop, std::move(options));
    player->take(std::move(decks), {});
    player->begin([this] { ++ends; });
  }
  void take(std::vector<FolderDeck> decks) { player->take(std::move(decks), {}); }
  Stage& stage() { return player->stage(); }
  /// "NAMEVERSION slide", as the screens have it.
  std::string shown() {
    const web::ScreenState state = stage().state({});
    const std::string name = state.title + " ";
    return name + (state.current ? std::to_string(state.current->index) : "-");
  }
  std::vector<std::string> steps(int count) {
    std::vector<std::string> steps;
    for (int i = 0; i < count; ++i) {
      EXPECT_TRUE(stage().next().isDone());
      runPosted();
      steps.push_back(shown());
    }
    return steps;
  }
  /// Lets the player look at the clock.
  void tick(std::int64_t time, const std::vector<FolderDeck>& decks) {
    now = time;
    take(decks);
  }
  /// "name state: why", of each deck.
  std::vector<std::string> told() {
    std::vector<std::string> told;
    const web::Health health = stage().health();
    for (const web::DeckHealth& deck : health.decks->decks) {
      static constexpr const char* names[] = {"on show", "in turn", "not now", "refused"};
      told.push_back(deck.name + " " + names[static_cast<int>(deck.state)] +
                     (deck.why.empty() ? "" : ": " + deck.why));
    }
    return told;
  }
  /// Presentations that are open: the one on show and the one that is prepared.
  [[nodiscard]] std::size_t open() { return host.application().openPresentations().size(); }
};

TEST_F(PlayerTest, DecksTakeTurnsEachOnceThrough) {
  play({deck("A", "vv"), deck("b", "v"), deck("C", "vhv")});
  EXPECT_EQ(shown(), "A1 1");
  EXPECT_THAT(steps(6), ElementsAre("A1 2", "b1 1", "C1 1", "C1 3", "A1 1", "A1 2"));
  EXPECT_EQ(open(), 2U) << "the next one is ready";
  EXPECT_EQ(stage().health().decks->changes, 4U);
  EXPECT_THAT(told(), ElementsAre("A on show", "b in turn", "C in turn"));
  EXPECT_EQ(errorLog(), "");

  take({deck("b", "vv", "2")});
  EXPECT_EQ(shown(), "b2 1");
  EXPECT_THAT(steps(3), ElementsAre("b2 2", "b2 1", "b2 2")) << "alone, it begins anew";
  EXPECT_EQ(open(), 1U);
  EXPECT_EQ(ends, 0);
  player->shutDown();
  runPosted();
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(shown(), "b2 2") << "the last picture stands";
}

TEST_F(PlayerTest, TakesUpWhatBecomesOfTheFolder) {
  const FolderDeck a = deck("A", "vv");
  const FolderDeck b = deck("B", "vvv");
  const FolderDeck c = deck("C", "v");
  play({a, b, c});
  steps(3);
  EXPECT_EQ(shown(), "B1 2");
  EXPECT_TRUE(stage().blank(web::Blank::White).isDone());
  take({a, deck("B", "vvv", "2"), c});
  EXPECT_EQ(shown(), "B2 2") << "another version goes on where the former stood";
  EXPECT_EQ(stage().state({}).blank, web::Blank::White);
  EXPECT_TRUE(stage().blank(web::Blank::None).isDone());

  take({a, off(b, "over"), c});
  EXPECT_EQ(shown(), "C1 1") << "expired, it makes way at once";
  EXPECT_THAT(told(), ElementsAre("A in turn", "B not now: over", "C on show"));
  take({a, b, c});
  EXPECT_EQ(shown(), "C1 1") << "new ones wait for their turn";
  EXPECT_THAT(steps(3), ElementsAre("A1 1", "A1 2", "B1 1"));
  take({a, c});
  EXPECT_EQ(shown(), "C1 1") << "gone, its turn is that of the next one";
}

TEST_F(PlayerTest, PassesOverWhatCannotBeShown) {
  const FolderDeck a = deck("A", "v");
  const FolderDeck damaged = deck("B", "v");
  std::ofstream(damaged.file) << "no deck";
  const FolderDeck hidden = deck("C", "hh");
  const FolderDeck away = deck("D", "v");
  gone.insert("D");
  FolderDeck unsigned_ = off(deck("E", "v"), "unsigned");
  unsigned_.file.clear();
  play({a, damaged, hidden, away, unsigned_});
  EXPECT_THAT(steps(2), ElementsAre("A1 1", "A1 1"));
  const auto states = told();
  EXPECT_EQ(states[0], "A on show");
  EXPECT_THAT(states[1], HasSubstr("B refused: "));
  EXPECT_THAT(states[2], HasSubstr("C refused: All slides of "));
  EXPECT_EQ(states[3], "D in turn: The files of D are gone.");
  EXPECT_EQ(states[4], "E refused: unsigned");
  std::istringstream log(errorLog());
  int lines = 0;
  for (std::string line; std::getline(log, line);) ++lines;
  EXPECT_EQ(lines, 3) << "each once:\n" << errorLog();

  gone.clear();
  EXPECT_THAT(steps(2), ElementsAre("D1 1", "A1 1"));
  take({damaged, hidden});
  EXPECT_EQ(stage().deck(), nullptr);
  EXPECT_EQ(shown(), "Lumenfold 0") << "a plain ground";
  EXPECT_EQ(open(), 0U);
}

TEST_F(PlayerTest, RestsWhileThereIsNothingToShow) {
  play({});
  EXPECT_EQ(shown(), "Lumenfold 0");
  EXPECT_TRUE(stage().health().isReady);
  EXPECT_FALSE(stage().next().isDone());
  EXPECT_EQ(stage().view(3, {}), (web::View{web::View::Kind::Slide, 0, {}}));
  take({deck("A", "v")});
  EXPECT_EQ(shown(), "A1 1");
  take({});
  EXPECT_EQ(shown(), "Lumenfold 0");
  EXPECT_EQ(errorLog(), "");
  EXPECT_TRUE(stage().end().isDone());
  runPosted();
  EXPECT_EQ(ends, 1);
}

TEST_F(PlayerTest, ShowsTheLastSlideOfTheDeckForThatCase) {
  whenEmpty = deck("filler", "vvh").file;
  play({});
  EXPECT_EQ(shown(), "filler1 3") << "it was asked for, so it may be hidden";
  EXPECT_FALSE(stage().next().isDone());
  take({deck("A", "v")});
  EXPECT_EQ(shown(), "A1 1");
  EXPECT_THAT(steps(1), ElementsAre("A1 1"));
  take({});
  EXPECT_EQ(shown(), "filler1 3");

  whenEmpty = (folder.path() / "away.pptx").string();
  play({});
  EXPECT_EQ(shown(), "Lumenfold 0");
  EXPECT_THAT(errorLog(), HasSubstr("away.pptx is not shown: "));
}

TEST_F(PlayerTest, FollowsTheClockWhereverItJumps) {
  isSynchronous = true;
  const std::vector<FolderDeck> decks = {deck("A", "vhv"), deck("B", "v")};
  now = 1500;
  play(decks);
  EXPECT_EQ(shown(), "A1 3");
  const std::pair<std::int64_t, const char*> times[] = {{2000, "B1 1"},   {2999, "B1 1"}, {3000, "A1 1"},
                                                        {61'000, "A1 3"}, {2500, "B1 1"}, {-1, "B1 1"}};
  for (const auto& [time, place] : times) {
    tick(time, decks);
    EXPECT_EQ(shown(), place) << time;
  }
  EXPECT_FALSE(stage().next().isDone());
  EXPECT_TRUE(stage().blank(web::Blank::Black).isDone());
  tick(3000, decks);
  EXPECT_EQ(stage().state({}).blank, web::Blank::Black) << "another deck is no end of it";
  tick(4000, decks);
  EXPECT_EQ(shown(), "A1 1");
  EXPECT_TRUE(stage().blank(web::Blank::None).isDone());
  tick(4100, decks);
  EXPECT_EQ(shown(), "A1 3") << "it finds its place again";

  tick(5000, decks);
  gone.insert("B");
  tick(7000, decks);
  EXPECT_EQ(shown(), "A1 3");
  tick(8000, decks);
  EXPECT_EQ(shown(), "A1 1") << "the next deck stands in for one that cannot be shown";
  tick(8900, decks);
  EXPECT_EQ(shown(), "A1 1");
  gone.clear();
  tick(9000, decks);
  tick(11'000, decks);
  EXPECT_EQ(shown(), "B1 1") << "and is tried again when its time comes";
}

TEST_F(PlayerTest, ScreensOfSynchronousPlayersChangeAtTheSameMoments) {
  isSynchronous = true;
  const std::vector<FolderDeck> decks = {deck("A", "vv"), deck("B", "v")};
  const auto shownAt = [this] {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               stage().state({}).shownAt->time_since_epoch()) -
           TimeToPrepare;
  };
  now = 1500;
  play(decks);
  EXPECT_EQ(shownAt().count(), 1000) << "the moment of the players that were there before";
  tick(2040, decks);
  EXPECT_EQ(shownAt().count(), 2000);
  tick(61'020, decks);
  EXPECT_EQ(shownAt().count(), 61'000);
  now = 61'200;
  EXPECT_TRUE(stage().blank(web::Blank::Black).isDone());
  EXPECT_EQ(shownAt().count(), 61'200) << "this player's operator alone";
}

TEST_F(PlayerTest, SynchronousPlayersGoThroughACustomShowAsItStands) {
  isSynchronous = true;
  support::DeckBuilder builder;
  for (int i = 0; i < 3; ++i) {
    builder.afterCommonData(builder.addSlide(support::textShape(2, "p", "x")),
                            "<p:transition advTm=\"1000\"/>");
  }
  builder.customShow(4, {3, 1, 3});
  builder.presentationProperties("<p:showPr><p:present/><p:custShow id=\"4\"/></p:showPr>");
  FolderDeck custom = deck("A", "v");
  static_cast<void>(folder.write("A1.pptx", builder.bytes()));
  const std::vector<FolderDeck> decks = {custom, deck("B", "v")};
  play(decks);
  std::vector<std::string> places;
  for (now = 0; now < 5000; now += 1000) {
    tick(now, decks);
    places.push_back(shown());
  }
  EXPECT_THAT(places, ElementsAre("A1 3", "A1 1", "A1 3", "B1 1", "A1 3"));
}

}  // namespace
}  // namespace app::test
