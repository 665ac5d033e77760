// A running show where the machine tells of changed files.

#include "fakes/FakeDatabase.h"
#include "system/RuntimeShow.h"

namespace LF2000 {
namespace {

struct FileChangesTest : RuntimeShow {
  fakes::FileWatcher watcher;

  FileChangesTest() {
    machine.UseFileWatcher(&watcher);
    machine.loop.lateness = 8;
  }
  ~FileChangesTest() override { addIn.reset(); }
  void Change(const std::string& path, const std::string& content) {
    machine.files.Write(path, content);
    watcher.Change(path);
  }
  /// How often the changing file is read in a minute.
  int ReadingsInAMinute(std::int64_t betweenChanges) {
    const int before = machine.files.opens;
    for (std::int64_t time = 0; time < 60'000; time += betweenChanges) {
      Change(Prices, "Item\tPrice\nTea\t4\n");
      machine.loop.Advance(betweenChanges);
    }
    return machine.files.opens - before;
  }
};

TEST_F(FileChangesTest, AChangeIsOnTheSlideSoon) {
  machine.files.Write("/decks/far.txt", "Price\n7\n");
  deck->tags->Add("CORVANE CONNECTION002", "0\tFar\tfar.txt\t-1\t");
  for (const bool scrolls : {false, true}) {
    deck->slides.clear();
    window->position = 1;
    fakes::Slide& slide = deck->Add();
    if (scrolls) slide.tags->Add("CORVANE SCROLLSTEP9", "True\t1\t30000");
    fakes::Shape& shape = slide.AddField("p", 1);
    deck->Add();
    fakes::Slide& last = deck->Add();
    last.AddField("far", 1, "002");
    Start();
    EXPECT_EQ(watcher.watched, std::set<std::string>{Prices});
    for (const char* price : {"4", "5", "3"}) {
      machine.loop.Advance(200);
      Change(Prices, std::string("Item\tPrice\nTea\t") + price + "\n");
      machine.loop.Advance(60);
      EXPECT_EQ(shape.text, price) << "scrolling " << scrolls;
    }
    GoTo(3);
    EXPECT_TRUE(watcher.watched.contains("/decks/far.txt"));
    window->position = 4;  // the end of the show
    machine.loop.Advance(3000);
    End();
  }
  EXPECT_FALSE(IsRunning());
}

TEST_F(FileChangesTest, AFileThatNeverRestsCostsNoMoreThanTheInterval) {
  machine.files.Write("/decks/calm.txt", "Price\n7\n");
  deck->tags->Add("CORVANE CONNECTION002", "0\tCalm\tcalm.txt\t-1\t");
  fakes::Slide& slide = deck->Add();
  slide.AddField("p", 1);
  fakes::Shape& calm = slide.AddField("calm", 1, "002");
  Start();
  const int before = machine.files.opens;
  for (int i = 0; i < 500; ++i) {
    Change(Prices, "Item\tPrice\nTea\t4\n");
    machine.loop.Advance(2);
  }
  EXPECT_LE(machine.files.opens - before, 20 + 1);
  static_cast<void>(ReadingsInAMinute(2));
  for (const std::int64_t pause : {1, 10, 70, 100}) EXPECT_LE(ReadingsInAMinute(pause), 61) << pause;
  Change("/decks/calm.txt", "Price\n8\n");
  machine.loop.Advance(60);
  EXPECT_EQ(calm.text, "8") << "its neighbour is as quick as ever";
  EXPECT_GE(ReadingsInAMinute(250), 180);
}

TEST_F(FileChangesTest, EarlyLooksTakeNothingFromADatabasesRate) {
  fakes::Database database;
  database.ticksPerRequery = 3;
  machine.UseAdo(&database);
  deck->tags->Add("CORVANE CONNECTION002", "1\tStock\tDSN=x\tt\t\t1000\t");
  fakes::Slide& slide = deck->Add();
  slide.AddField("p", 1);
  slide.AddField("stock", 1, "002");
  machine.loop.onDoEvents = [&] { database.Progress(); };
  Start();
  for (int i = 0; i < 60; ++i) {
    Change(Prices, "Item\tPrice\nTea\t4\n");
    machine.loop.Advance(990);
  }
  const auto reloads = std::count(database.log.begin(), database.log.end(), "requery -1");
  EXPECT_GE(reloads, 57);
  EXPECT_LE(reloads, 61);
}

TEST_F(FileChangesTest, AChangeWhileADatabaseIsWaitedForIsReadAfterwards) {
  fakes::Database database;
  machine.UseAdo(&database);
  deck->tags->Add("CORVANE CONNECTION002", "1\tStock\tDSN=x\tt\t\t1000\t");
  fakes::Slide& slide = deck->Add();
  fakes::Shape& shape = slide.AddField("p", 1);
  slide.AddField("stock", 1, "002");
  Start();
  database.ticksPerRequery = 25;
  machine.loop.onDoEvents = [&] {
    if (database.ticksToFetch == 23) Change(Prices, "Item\tPrice\nTea\t4\n");
    database.Progress();
    machine.loop.Advance(30);
  };
  const int before = machine.loop.fired;
  machine.loop.Advance(1010);
  machine.loop.onDoEvents = {};
  EXPECT_LE(machine.loop.fired, before + 2) << "of the tick and the change";
  EXPECT_EQ(std::count(database.log.begin(), database.log.end(), "requery -1"), 1);
  machine.loop.Advance(70);
  EXPECT_EQ(shape.text, "4");
}

TEST_F(FileChangesTest, TheShowMayEndWhileFilesAreWatched) {
  deck->Add().AddField("p", 1);
  for (const bool onSlideChange : {false, true}) {
    Start();
    watcher.onFiles = [&] { End(); };
    if (onSlideChange) {
      GoTo(1);
    } else {
      machine.loop.Advance(1010);
    }
    watcher.onFiles = {};
    EXPECT_FALSE(watcher.goneInUse);
    EXPECT_FALSE(IsRunning());
  }
}

TEST_F(FileChangesTest, ALinkedFileThatChangesTwiceInASecondIsRefreshedTwice) {
  machine.files.Write("/srv/a.xls", "");
  deck->Add().AddLinked("/srv/a.xls!Sheet1");
  Start();
  for (int change = 1; change <= 2; ++change) {
    machine.files.files["/srv/a.xls"].date += 0.2 / 86400;
    watcher.Change("/srv/a.xls");
    machine.loop.Advance(70);
    EXPECT_EQ(deck->linkUpdates, change);
  }
  machine.loop.Advance(10'000);
  EXPECT_EQ(deck->linkUpdates, 2);
}

}  // namespace
}  // namespace LF2000
