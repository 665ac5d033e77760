// What data drives besides texts during a show: rows that scroll, pictures.

#include <gtest/gtest.h>

#include "runtime/ScrollIndexes.h"
#include "system/RuntimeShow.h"

namespace LF2000 {
namespace {

constexpr const char* Menu = "/decks/menu.txt";

struct DrivenShapesTest : RuntimeShow {
  DrivenShapesTest() {
    machine.files.Write(Menu, "Dish\nsoup\nstew\nroast\ntart\ncake\n");
    deck->tags->items[1].second = "0\tMenu\tmenu.txt\t-1\t";
  }
  fakes::Shape& Linked(fakes::Slide& slide, const std::string& name, int type, int row) {
    return slide.AddField(name, row, "001", "Dish", type);
  }
  fakes::Slide& SlideOfRows(int rows, const std::string& entry, const std::string& scroll) {
    fakes::Slide& slide = deck->Add();
    slide.tags->Add("CORVANE SCROLLSTEP" + entry, scroll);
    for (int row = 1; row <= rows; ++row) Linked(slide, "row " + std::to_string(row), 2, row);
    return slide;
  }
  static std::string Texts(const fakes::Slide& slide) {
    std::string all;
    for (const auto& shape : slide.shapes) all += (all.empty() ? "" : "|") + shape->text;
    return all;
  }
};

TEST_F(DrivenShapesTest, RowsScrollThroughTheDataAndStartAgain) {
  const fakes::Slide& slide = SlideOfRows(2, "1", "True\t2\t500");
  Start();
  std::vector<std::string> seen;
  for (int step = 0; step < 4; ++step) {
    seen.push_back(Texts(slide));
    machine.loop.Advance(500);
  }
  EXPECT_EQ(seen, (std::vector<std::string>{"soup|stew", "roast|tart", "cake| ", "soup|stew"}));
  // With fewer rows than were passed, the first ones are shown at once.
  machine.loop.Advance(500);
  EXPECT_EQ(Texts(slide), "cake| ");
  machine.files.Write(Menu, "Dish\nsalad\nfish\n");
  machine.loop.Advance(1100);
  EXPECT_EQ(Texts(slide), "salad|fish");
}

TEST_F(DrivenShapesTest, RowsOfASlideThatStandsDoNotMoveOn) {
  fakes::Slide& slide = SlideOfRows(1, "1", "True\t1\t500");
  slide.AddField("price", 1);
  Start();
  machine.loop.Advance(1000);
  EXPECT_EQ(Texts(slide), "") << "a column is missing";
  machine.files.Write(Menu, "Dish\tPrice\nsoup\t3\nstew\t4\nroast\t5\ntart\t6\ncake\t7\n");
  machine.loop.Advance(1500);
  EXPECT_EQ(Texts(slide), "stew|4") << "one step after it was read";
}

TEST_F(DrivenShapesTest, AnEntryIsItsNamesakesOrElseItsConnections) {
  fakes::Slide& slide = SlideOfRows(1, "1", "True\t1\t500");
  slide.tags->Add("CORVANE SCROLLSTEP7", "True\t2\t500");
  Linked(slide, "7", 2, 1);
  fakes::Slide& named = SlideOfRows(1, "1", "True\t1\t500");
  Linked(named, "1", 2, 1);
  Start();
  machine.loop.Advance(500);
  EXPECT_EQ(Texts(slide), "stew|roast");

  // A shape named 1 has entry 1 for itself, so its neighbours stand still.
  GoTo(2);
  machine.loop.Advance(500);
  EXPECT_EQ(Texts(named), "soup|stew");
}

TEST_F(DrivenShapesTest, OnlyTheSlideOnShowScrollsAndEnteringItStartsItsTime) {
  const fakes::Slide& first = SlideOfRows(1, "1", "True\t1\t1000");
  const fakes::Slide& second = SlideOfRows(1, "1", "True\t1\t1000");
  SlideOfRows(1, "9", "True\t1\t100");  // paces the ticks
  Start();
  machine.loop.Advance(700);
  GoTo(2);
  machine.loop.Advance(900);
  EXPECT_EQ(Texts(first) + " " + Texts(second), "soup soup");
  machine.loop.Advance(100);
  EXPECT_EQ(Texts(second), "stew");
  // What a slide has come to, it shows when it returns.
  GoTo(1);
  GoTo(2);
  machine.loop.Advance(100);
  EXPECT_EQ(Texts(first) + " " + Texts(second), "soup stew");
}

TEST_F(DrivenShapesTest, BrokenScrollEntriesLeaveTheShowRunning) {
  fakes::Slide& slide = SlideOfRows(1, "1", "True\t99999999999\t500");
  slide.tags->Add("CORVANE SCROLLSTEP2", "perhaps");
  slide.tags->Add("CORVANE SCROLLSTEP1000", "True\t1\t500");
  slide.tags->Add("CORVANE SCROLLSTEP3", "True\t0\t10");
  Start();
  ASSERT_TRUE(IsRunning());
  EXPECT_EQ(Runtime().Form()->tmrData().Interval(), 1000);
  EXPECT_NE(ErrorLog().find("Scroll entry 1 cannot be read: Overflow"), std::string::npos);
  machine.loop.Advance(2000);
  EXPECT_EQ(Texts(slide), "soup");
}

TEST(ScrollIndexesTest, EveryStepThatFellDueIsTaken) {
  constexpr std::int32_t Huge = 2147483647;
  const struct {
    std::int32_t step;
    std::int32_t time;
    double firstRow;
    double lastRow;
    double passed;
    double records;
    double offset;
  } cases[] = {
      {1, 1000, 1, 10, 1000, 100, 1},
      {1, 1000, 1, 10, 960, 100, 1},      // a tick that came a little early
      {1, 1000, 1, 10, 940, 100, 0},      //
      {3, 1000, 1, 10, 10'000, 100, 30},  // after a wait, as if there had been none
      {1, 1000, 1, 10, 99'000, 100, 99},
      {1, 1000, 1, 10, 100'000, 100, 0},
      {1, 1000, 5, 10, 96'000, 100, 0},  // row 5 leaves the data after 95 steps
      {1, 1, 1, 1, 1e12, 7, 1},          // 1e12 mod 7
      {Huge, 1000, 1, 1, 5000, 100, 0},
      {-Huge, 1000, 1, 1, 5000, 100, 0},
      {-2, 1000, 1, 9, 3000, 100, -6},
      {-2, 1000, 1, 9, 5000, 100, 0},
      {1, Huge, 1, 1, 1e9, 100, 0},
      {1, 1000, 1, 10, 5000, 0, 0},
      {1, 1000, 1e308, 1e308, 5000, 9, 0},
  };
  for (const auto& c : cases) {
    clsRTScrollInfo scroll;
    scroll.Step = c.step;
    scroll.Time = c.time;
    scroll.FirstRow = c.firstRow;
    scroll.LastRow = c.lastRow;
    PassTime(scroll, c.passed, 50, c.records);
    EXPECT_EQ(scroll.RowOffset(), c.offset) << c.step << " rows every " << c.time << " ms, " << c.passed;
  }
}

TEST_F(DrivenShapesTest, LateTimersPassOverNoRow) {
  std::string dishes = "Dish\n";
  for (int dish = 1; dish <= 200; ++dish) dishes += std::to_string(dish) + "\n";
  machine.files.Write(Menu, dishes);
  const fakes::Slide& slide = SlideOfRows(1, "1", "True\t1\t500");
  machine.loop.lateness = 8;
  Start();
  int before = 1;
  for (int time = 0; time < 90'000; time += 10) {
    machine.loop.Advance(10);
    const int shown = std::stoi(Texts(slide));
    ASSERT_LE(shown, before + 1);
    before = shown;
  }
  EXPECT_GE(before, 175);
  EXPECT_LE(before, 181);
}

TEST_F(DrivenShapesTest, APictureShowsTheFileThatItsDataName) {
  machine.files.Write("/decks/pics/soup.png", "");
  machine.files.Write("/decks/pics/stew.png", "");
  fakes::Slide& slide = deck->Add();
  fakes::Shape& shape = Linked(slide, "photo", 3, 1);
  shape.tags->Add("CORVANE COLUMN OBJECT FOLDER", "pics");
  shape.tags->Add("CORVANE COLUMN OBJECT EXTESION", "png");
  Start();
  machine.loop.Advance(3000);
  EXPECT_EQ(shape.shownFile, "/decks/pics/soup.png");
  EXPECT_EQ(shape.writes, 1);
  machine.files.Write("/decks/pics/soup.png", "");  // replaced under its name
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.writes, 2);
  machine.files.Write(Menu, "Dish\nstew\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.shownFile, "/decks/pics/stew.png");
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(DrivenShapesTest, APictureWhoseValueIsGoneShowsItsOwnInAShow) {
  machine.files.Write("/decks/soup", "");
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  fakes::Shape& photo = Linked(slide, "photo", 3, 1);
  Start();
  EXPECT_EQ(photo.shownFile, "/decks/soup");
  for (const char* rows : {"", "\"\"\n"}) {
    const int before = photo.writes;
    machine.files.Write(Menu, std::string("Dish\n") + rows);
    machine.loop.Advance(5000);
    EXPECT_EQ(photo.shownFile, "");
    EXPECT_EQ(photo.writes, before + 1);
    EXPECT_TRUE(slide.transition->hidden) << "a slide of pictures alone hides as well";
    machine.files.Write(Menu, "Dish\nsoup\n");
    machine.loop.Advance(1000);
    EXPECT_EQ(photo.shownFile, "/decks/soup") << "the same file as before";
    EXPECT_FALSE(slide.transition->hidden);
  }
  // A source that fails says nothing about its values.
  machine.files.files.erase(Menu);
  machine.loop.Advance(1000);
  EXPECT_EQ(photo.shownFile, "/decks/soup");
}

TEST_F(DrivenShapesTest, APictureThatAnEarlierShowHasLeftIsTakenBack) {
  fakes::Shape& never = Linked(deck->Add(), "never", 3, 9);
  never.shownFile = "/decks/soup";
  Start();
  EXPECT_EQ(never.shownFile, "");
}

TEST_F(DrivenShapesTest, APictureReplacedUnderItsNameIsShownSoonWhereFilesAreWatched) {
  fakes::FileWatcher watcher;
  machine.UseFileWatcher(&watcher);
  machine.files.Write("/decks/soup", "");
  const fakes::Shape& shape = Linked(deck->Add(), "photo", 3, 1);
  Start();
  machine.loop.Advance(1000);
  ASSERT_EQ(shape.writes, 1);
  machine.files.Write("/decks/soup", "");
  watcher.Change("/decks/soup");
  machine.loop.Advance(60);
  EXPECT_EQ(shape.writes, 2);
  End();
}

TEST_F(DrivenShapesTest, APictureThatCannotBeShownLeavesTheLastOneAndIsLoggedOnce) {
  machine.files.Write("/decks/soup", "");
  machine.files.Write("/decks/broken", "");
  fakes::Slide& slide = deck->Add();
  fakes::Shape& picture = Linked(slide, "photo", 3, 1);
  fakes::Shape& behind = Linked(slide, "text", 2, 1);
  Start();
  for (const char* bad : {"none", "broken", "../../etc/passwd", "/etc/passwd"}) {
    const std::size_t before = ErrorLog().size();
    machine.files.Write(Menu, std::string("Dish\n") + bad + "\n");
    machine.loop.Advance(5000);
    EXPECT_EQ(picture.shownFile, "/decks/soup") << bad;
    EXPECT_EQ(behind.text, bad);
    const std::string added = ErrorLog().substr(before);
    EXPECT_EQ(std::count(added.begin(), added.end(), '\n'), 1) << added;
    machine.files.Write(Menu, "Dish\nsoup\n");
    machine.loop.Advance(1000);
  }
}

TEST_F(DrivenShapesTest, AScrollingPictureBesideBlankTextsShowsItsOwn) {
  for (const char* dish : {"soup", "stew", "roast", "tart", "cake"}) {
    machine.files.Write(std::string("/decks/") + dish, "");
  }
  fakes::Slide& slide = SlideOfRows(1, "1", "True\t3\t500");
  const fakes::Shape& photo = Linked(slide, "photo 3", 3, 3);
  Start();
  EXPECT_EQ(photo.shownFile, "/decks/roast");
  machine.loop.Advance(500);
  EXPECT_EQ(Texts(slide), "tart|");
  EXPECT_EQ(photo.shownFile, "");
}

TEST_F(DrivenShapesTest, ASlideThatRefreshesItsLinksHasEveryLinkedFileWatched) {
  machine.files.Write("/srv/logo.png", "");
  for (const char* properties : {"0\t0\t", "0\t-1\t"}) {
    fakes::Slide& slide = deck->Add();
    slide.tags->Add("CORVANE SLIDE PROPERTIES", properties);
    slide.AddLinked("/srv/logo.png", PowerPoint::ShapeType::LinkedPicture);
    Start();
    machine.files.Write("/srv/logo.png", "");
    machine.loop.Advance(2500);
    End();
  }
  EXPECT_EQ(deck->linkUpdates, 1);
}

}  // namespace
}  // namespace LF2000
