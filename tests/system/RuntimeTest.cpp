// A running show: the model, its timers, hiding slides, clocks, failing sources.

#include <gtest/gtest.h>

#include "addin/support/modErrors.h"
#include "fakes/FakeDatabase.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "runtime/clsRuntime.h"

namespace LF2000 {
namespace {

constexpr const char* Prices = "/decks/prices.txt";

struct RuntimeTest : testing::Test {
  fakes::Machine machine;
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  std::shared_ptr<fakes::Window> window = std::make_shared<fakes::Window>(deck);
  clsRuntime runtime;

  RuntimeTest() {
    machine.files.Write(Prices, "Item\tPrice\nTea\t3\n");
    deck->tags->items = {{"CORVANE VERSION", "1"}, {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"}};
    modErrors::SlideShowRunning = true;
  }
  fakes::Shape& Field(fakes::Slide& slide, const std::string& name, int row,
                      const std::string& connection = "001", const std::string& column = "Price") {
    fakes::Shape& shape = slide.Add(name);
    shape.tags->items = {{"CORVANE COLUMN TYPE", "2"},
                         {"CORVANE COLUMN TAG", connection},
                         {"CORVANE COLUMN COLUMNNAME", column},
                         {"CORVANE COLUMN ROW", std::to_string(row)}};
    return shape;
  }
  fakes::Shape& Clock(fakes::Slide& slide, const std::string& format) {
    fakes::Shape& shape = slide.Add("clock");
    shape.tags->items = {{"CORVANE COLUMN TYPE", "1"}, {"CORVANE COLUMN DATE FORMAT", format}};
    return shape;
  }
  void Start() {
    runtime.ActivePresentation(deck);
    runtime.StartTimers(window);
  }
  void GoTo(std::int32_t slide) {
    window->position = slide;
    runtime.SlideShowNextSlide(window);
  }
  std::size_t LoggedErrors() {
    const std::string& log = machine.files.files["/addin/errors.txt"].content;
    return static_cast<std::size_t>(std::count(log.begin(), log.end(), '\n'));
  }
};

TEST_F(RuntimeTest, AValueFollowsItsFile) {
  fakes::Shape& shape = Field(deck->Add(), "p", 1);
  Start();
  ASSERT_NE(runtime.Form(), nullptr);
  EXPECT_EQ(shape.text, "3");
  machine.loop.Advance(5000);
  EXPECT_EQ(shape.writes, 1);
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.text, "4");
  machine.files.Write(Prices, "Item\tPrice\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.text, " ");
  runtime.UnSetLinkedObjects();
  machine.files.Write(Prices, "Item\tPrice\nTea\t5\n");
  machine.loop.Advance(5000);
  EXPECT_EQ(shape.text, " ");
}

TEST_F(RuntimeTest, OnlyTheSlideOnShowAndTheNextAreKeptCurrent) {
  for (int i = 0; i < 4; ++i) Field(deck->Add(), "p", 1);
  Start();
  const auto texts = [&] {
    std::string all;
    for (const auto& slide : deck->slides) all += slide->shapes[0]->text + " ";
    return all;
  };
  EXPECT_EQ(texts(), "3 3 3 3 ");
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(texts(), "4 4 3 3 ");
  GoTo(4);
  machine.files.Write(Prices, "Item\tPrice\nTea\t5\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(texts(), "5 4 3 5 ");
  window->position = 5;
  machine.loop.Advance(3000);
  EXPECT_EQ(LoggedErrors(), 0U);
}

TEST_F(RuntimeTest, ASlideWithoutDataHidesAndReturns) {
  machine.files.Write("/decks/alerts.txt", "Text\n");
  deck->tags->Add("CORVANE CONNECTION002", "0\tAlerts\talerts.txt\t-1\t");
  Field(deck->Add(), "p", 1);
  fakes::Slide& alerts = deck->Add();
  alerts.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  Field(alerts, "a", 1, "002", "Text");
  fakes::Slide& never = deck->Add();
  Field(never, "b", 9);
  Start();
  EXPECT_TRUE(alerts.transition->hidden);
  EXPECT_FALSE(never.transition->hidden);
  machine.loop.Advance(3000);
  EXPECT_TRUE(alerts.transition->hidden);
  machine.files.Write("/decks/alerts.txt", "Text\nGate closed\n");
  machine.loop.Advance(1000);
  EXPECT_FALSE(alerts.transition->hidden);
  EXPECT_EQ(alerts.shapes[0]->text, "Gate closed");
  machine.files.Write("/decks/alerts.txt", "Text\n");
  machine.loop.Advance(1000);
  EXPECT_TRUE(alerts.transition->hidden);
}

TEST_F(RuntimeTest, AChartIsFilledWhenItsDataWereReadAndCountsAsAValue) {
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  fakes::Shape& shape = slide.Add("chart");
  shape.tags->items = {{"CORVANE COLUMN TYPE", "4"}, {"CORVANE COLUMN TAG", "001"}};
  shape.chart = std::make_shared<fakes::Chart>();
  deck->Add();
  Start();
  EXPECT_EQ(shape.chart->fills, 1);
  machine.loop.Advance(5000);
  EXPECT_EQ(shape.chart->fills, 1);
  EXPECT_FALSE(slide.transition->hidden);
  machine.files.Write(Prices, "Item\tPrice\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.chart->fills, 1);
  EXPECT_TRUE(slide.transition->hidden);
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\nMilk\t2\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.chart->cells.rows(), 3U);
  EXPECT_FALSE(slide.transition->hidden);

  shape.chart->fails = true;
  machine.files.Write(Prices, "Item\tPrice\nTea\t5\n");
  machine.loop.Advance(3000);
  EXPECT_EQ(LoggedErrors(), 1U);
  shape.chart->fails = false;
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.chart->cells.rows(), 2U) << "what failed is tried again";
}

TEST_F(RuntimeTest, ASlideHiddenBehindTheLastOneReturnsWhenTheShowWraps) {
  machine.files.Write("/decks/alerts.txt", "Text\n");
  deck->tags->Add("CORVANE CONNECTION002", "0\tAlerts\talerts.txt\t-1\t");
  Field(deck->Add(), "p", 1);
  fakes::Slide& alerts = deck->Add();
  alerts.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  Field(alerts, "a", 1, "002", "Text");
  Start();
  EXPECT_TRUE(alerts.transition->hidden);
  machine.files.Write("/decks/alerts.txt", "Text\nBack\n");
  machine.loop.Advance(1000);
  EXPECT_FALSE(alerts.transition->hidden);
}

TEST_F(RuntimeTest, ClocksAreRewrittenWhenTheirTextChanges) {
  fakes::Slide& first = deck->Add();
  fakes::Shape& seconds = Clock(first, "hh:nn:ss");
  fakes::Shape& minutes = Clock(deck->Add(), "hh:nn");
  Start();
  EXPECT_EQ(seconds.text, "12:00:00");
  EXPECT_EQ(minutes.text, "12:00");
  const int before = seconds.writes;
  machine.loop.Advance(10'000);
  EXPECT_EQ(seconds.text, "12:00:10");
  EXPECT_EQ(seconds.writes, before + 10);
  EXPECT_EQ(minutes.writes, 1);
  machine.clock.start = basic::DateFrom(2026, 2, 3, 9, 30);
  machine.loop.Advance(100);
  EXPECT_EQ(seconds.text, "09:30:10");
  EXPECT_EQ(minutes.text, "09:30");
}

TEST_F(RuntimeTest, AFailingSourceLeavesItsValuesIsLoggedOnceAndRecovers) {
  machine.files.Write("/decks/other.txt", "Price\n7\n");
  deck->tags->Add("CORVANE CONNECTION002", "0\tOther\tother.txt\t-1\t");
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  fakes::Shape& shape = Field(slide, "p", 1);
  fakes::Shape& other = Field(slide, "o", 1, "002");
  Start();
  const auto good = machine.files.files[Prices];
  machine.files.files.erase(Prices);
  machine.files.Write("/decks/other.txt", "Price\n8\n");
  machine.loop.Advance(60'000);
  EXPECT_EQ(shape.text, "3");
  EXPECT_EQ(other.text, "8");
  EXPECT_FALSE(slide.transition->hidden);
  EXPECT_EQ(LoggedErrors(), 2U);  // one line whose text has a line break of its own
  machine.files.files[Prices] = good;
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.text, "4");
  machine.files.files.erase(Prices);
  machine.loop.Advance(5000);
  EXPECT_EQ(LoggedErrors(), 4U);
  EXPECT_TRUE(machine.messageBox.shown.empty());
}

TEST_F(RuntimeTest, ASourceThatIsMissingAtTheStartIsTakenUpLater) {
  fakes::Shape& shape = Field(deck->Add(), "p", 1);
  shape.text = "before";
  machine.files.files.clear();
  Start();
  ASSERT_NE(runtime.Form(), nullptr);
  EXPECT_EQ(shape.text, "before");
  EXPECT_GT(LoggedErrors(), 0U);
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.text, "4");
}

TEST_F(RuntimeTest, WhatIsOutOfBoundsIsSkipped) {
  deck->tags->Add("CORVANE CONNECTION1000", "0\tFar\tgone.txt\t-1\t");
  deck->tags->Add("CORVANE CONNECTIONX", "0\tOdd\tgone.txt\t-1\t");
  deck->tags->Add("CORVANE CONNECTION003", "zero");
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SLIDE PROPERTIES", "nonsense");
  Field(slide, "far", 1, "1000");
  Field(slide, "odd", 1, "abc");
  fakes::Shape& good = Field(slide, "good", 1);
  fakes::Shape& twin = Field(slide, "good", 1, "001", "Item");
  Start();
  ASSERT_NE(runtime.Form(), nullptr);
  EXPECT_EQ(good.text, "3");
  EXPECT_EQ(twin.text, "");
  EXPECT_NE(machine.files.files["/addin/errors.txt"].content.find("two linked shapes named 'good'"),
            std::string::npos);
  EXPECT_EQ(runtime.ShapesInfo()[1].size(), 1U);
}

TEST_F(RuntimeTest, SlidesBeyondTheRangeOfTheirNumberAreReportedOnce) {
  Field(deck->Add(), "p", 1);
  Start();
  for (const std::int32_t slide : {32768, 40000, 65537}) runtime.Form()->RefreshSlideAt(slide);
  EXPECT_EQ(LoggedErrors(), 1U);
  EXPECT_NE(machine.files.files["/addin/errors.txt"].content.find("Slides after number 32767"),
            std::string::npos);
}

TEST_F(RuntimeTest, NullHasNoValueAndAnEmptyTextHas) {
  machine.files.Write(Prices, "Item\tPrice\nTea\t\nMilk\n");
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  const std::pair<const char*, int> shapes[] = {{"empty", 1}, {"null", 2}, {"no row", 3}};
  for (const auto& [name, row] : shapes) Field(slide, name, row);
  Start();
  for (const auto& [name, row] : shapes) {
    EXPECT_EQ(runtime.Form()->HasValue(1, name), row == 1) << name;
    EXPECT_EQ(slide.Item(std::string_view(name))->TextFrame()->TextRange()->Text(), " ") << name;
  }
  EXPECT_TRUE(slide.transition->hidden) << "nothing to see is no data";
}

TEST_F(RuntimeTest, AnErrorOnOneShapeEndsItsSlideForTheTick) {
  fakes::Slide& slide = deck->Add();
  fakes::Shape& before = Field(slide, "before", 1);
  Field(slide, "missing", 1, "001", "Colour");
  fakes::Shape& after = Field(slide, "after", 1);
  Start();
  EXPECT_EQ(before.text, "3");
  EXPECT_EQ(after.text, "");
  machine.loop.Advance(10'000);
  const std::string& log = machine.files.files["/addin/errors.txt"].content;
  EXPECT_EQ(log.find("column Colour"), log.rfind("column Colour"));
  machine.files.Write(Prices, "Item\tPrice\tColour\nTea\t3\tgreen\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(after.text, "3");
}

TEST_F(RuntimeTest, TimersArePacedByWhatTheDeckHolds) {
  const struct {
    std::vector<std::pair<const char*, const char*>> tags;
    const char* scroll;
    std::int32_t data;
    bool connectionsEnabled;
    std::int32_t connections;
  } cases[] = {
      {{{"CORVANE CONNECTION001", "0\tP\tprices.txt\t-1\t"}}, nullptr, 1000, false, 100},
      {{{"CORVANE CONNECTION001", "1\tP\tDSN=x\tt\t\t5000\t"},
        {"CORVANE CONNECTION002", "1\tP\tDSN=x\tt\t\t3000\t"}},
       nullptr,
       3000,
       false,
       100},
      {{{"CORVANE CONNECTION001", "1\tP\tDSN=x\tt\t\t-2500\t"}}, nullptr, 2500, false, 100},
      {{{"CORVANE CONNECTION001", "1\tP\tDSN=x\tt\t\t0\t"}}, nullptr, 1000, false, 100},
      {{{"CORVANE CONNECTION001", "1\tP\tDSN=x\tt\t\t1E12\t"}}, nullptr, 1000, false, 100},
      {{}, nullptr, 1000, false, 100},
      {{{"CORVANE CONNECTION001", "1\tP\tDSN=x\tt\t\t5000\t"}}, "True\t1\t400", 400, true, 5000},
      {{{"CORVANE CONNECTION001", "1\tP\tDSN=x\tt\t\t300\t"}}, "True\t1\t400", 300, true, 300},
      {{{"CORVANE CONNECTION001", "1\tP\tDSN=x\tt\t\t0\t"}}, "True\t1\t400", 1000, true, 1000},
      {{{"CORVANE CONNECTION001", "1\tP\tDSN=x\tt\t\t0.4\t"}}, "True\t1\t400", 1000, true, 1000},
      {{{"CORVANE CONNECTION001", "1\tP\tDSN=x\tt\t\t5000\t"}}, "False\t1\t400", 5000, false, 100},
  };
  for (const auto& c : cases) {
    fakes::Database database;
    machine.UseAdo(&database);
    deck = std::make_shared<fakes::Presentation>();
    deck->tags->Add("CORVANE VERSION", "1");
    for (const auto& [name, value] : c.tags) deck->tags->Add(name, value);
    fakes::Slide& slide = deck->Add();
    if (c.scroll) slide.tags->Add("CORVANE SCROLLSTEP1", c.scroll);
    window = std::make_shared<fakes::Window>(deck);
    clsRuntime each;
    each.ActivePresentation(deck);
    each.StartTimers(window);
    ASSERT_NE(each.Form(), nullptr);
    EXPECT_EQ(each.Form()->tmrData().Interval(), c.data);
    EXPECT_EQ(each.Form()->tmrConnections().Enabled(), c.connectionsEnabled);
    EXPECT_EQ(each.Form()->tmrConnections().Interval(), c.connections);
    EXPECT_FALSE(each.Form()->tmrClock().Enabled());
    EXPECT_FALSE(each.Form()->tmrRefreshLinkedObjects().Enabled());
  }
}

TEST_F(RuntimeTest, ADatabaseIsRequeriedAtItsRate) {
  const struct {
    int rate;
    std::int64_t fewest;
    std::int64_t most;
  } cases[] = {{500, 112, 121}, {1000, 57, 61}, {5000, 11, 12}};
  for (const auto& [rate, fewest, most] : cases) {
    for (const double start : {43200.0, 69960.0, 72000.0, 86370.0}) {
      for (const bool scrolls : {false, true}) {
        fakes::Database database;
        database.ticksPerRequery = 3;
        machine.UseAdo(&database);
        machine.loop.lateness = 8;
        machine.loop.onDoEvents = [&] {
          machine.loop.Pass(4);
          database.Progress();
        };
        machine.clock.timerStart = start - static_cast<double>(machine.loop.Now()) / 1000;
        deck = std::make_shared<fakes::Presentation>();
        deck->tags->Add("CORVANE VERSION", "1");
        deck->tags->Add("CORVANE CONNECTION001", "1\tStock\tDSN=x\tt\t\t" + std::to_string(rate) + "\t");
        fakes::Slide& slide = deck->Add();
        if (scrolls) slide.tags->Add("CORVANE SCROLLSTEP1", "True\t1\t400");
        Field(slide, "p", 1);
        window = std::make_shared<fakes::Window>(deck);
        clsRuntime each;
        each.ActivePresentation(deck);
        each.StartTimers(window);
        machine.loop.Advance(60'000);
        const auto reloads = std::count(database.log.begin(), database.log.end(), "requery -1");
        EXPECT_GE(reloads, fewest) << rate << " ms from second " << start << ", scrolling " << scrolls;
        EXPECT_LE(reloads, most) << rate << " ms from second " << start << ", scrolling " << scrolls;
      }
    }
  }
}

TEST_F(RuntimeTest, AChartFollowsItsDatabase) {
  fakes::Database database;
  database.rows = {{"Tea", "3"}};
  machine.UseAdo(&database);
  deck->tags->items = {{"CORVANE VERSION", "1"}, {"CORVANE CONNECTION001", "1\tStock\tDSN=x\tt\t\t1000\t"}};
  fakes::Shape& shape = deck->Add().Add("chart");
  shape.tags->items = {{"CORVANE COLUMN TYPE", "4"}, {"CORVANE COLUMN TAG", "001"}};
  shape.chart = std::make_shared<fakes::Chart>();
  machine.loop.lateness = 8;
  Start();
  ASSERT_EQ(shape.chart->cells.rows(), 2U);
  database.rows.emplace_back("Milk", "2");
  machine.loop.Advance(2000);
  EXPECT_EQ(shape.chart->cells.rows(), 3U);
}

TEST_F(RuntimeTest, AFileWhoseDateGoesBackIsReadAgain) {
  fakes::Shape& shape = Field(deck->Add(), "p", 1);
  machine.files.Write("/srv/a.xls", "");
  fakes::Shape& object = deck->slides[0]->Add("object");
  object.type = PowerPoint::ShapeType::LinkedOLEObject;
  object.hasTextFrame = false;
  object.linkSource = "/srv/a.xls!Sheet1";
  Start();
  machine.files.files[Prices] = {"Item\tPrice\nTea\t2\n", 45000.0};
  machine.files.files["/srv/a.xls"].date = 45000.0;
  machine.loop.Advance(2500);
  EXPECT_EQ(shape.text, "2");
  EXPECT_EQ(deck->linkUpdates, 1);
}

TEST_F(RuntimeTest, AScrollingShowRequeriesFromTheConnectionsTimer) {
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SCROLLSTEP1", "True\t1\t100");
  fakes::Shape& shape = Field(slide, "p", 1);
  Start();
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\n");
  machine.loop.Advance(900);
  EXPECT_EQ(shape.text, "3");
  machine.loop.Advance(300);
  EXPECT_EQ(shape.text, "4");
}

TEST_F(RuntimeTest, AChangeOfSlideRestoresTheTimersAsTheyWere) {
  Field(deck->Add(), "p", 1);
  Field(deck->Add(), "p", 1);
  Start();
  FrmRuntimeTimer& form = *runtime.Form();
  form.EnableTimer();
  std::vector<bool> enabled;
  window->onPosition = [&] {
    enabled.push_back(form.tmrData().Enabled());
    enabled.push_back(form.tmrConnections().Enabled());
  };
  form.CurrentSlide(2);
  EXPECT_EQ(enabled, (std::vector{false, false})) << "no tick runs on a slide that is half changed";
  window->onPosition = {};
  form.DisableTimer();
  GoTo(2);
  EXPECT_FALSE(form.tmrData().Enabled());
  EXPECT_FALSE(form.tmrConnections().Enabled());
  form.EnableTimer();
  GoTo(1);
  EXPECT_TRUE(form.tmrData().Enabled());
  EXPECT_TRUE(form.tmrConnections().Enabled());
}

TEST_F(RuntimeTest, ChangedSourcesOfLinkedObjectsUpdateTheLinksOnce) {
  machine.files.Write("/srv/a.xls", "");
  machine.files.Write("/srv/b.xls", "");
  machine.files.Write("/srv/c.xls", "");
  fakes::Slide& slide = deck->Add();
  for (const char* source : {"/srv/a.xls!Sheet1!R1C1:R5C5", "/srv/b.xls!Sheet1", "/srv/c.xls"}) {
    fakes::Shape& shape = slide.Add(source);
    shape.type = PowerPoint::ShapeType::LinkedOLEObject;
    shape.hasTextFrame = false;
    shape.linkSource = source;
  }
  Start();
  machine.loop.Advance(10'000);
  EXPECT_EQ(deck->linkUpdates, 0);
  machine.files.files["/srv/a.xls"].date += 1;
  machine.files.files["/srv/b.xls"].date += 1;
  machine.files.files["/srv/c.xls"].date += 1;
  machine.loop.Advance(2500);
  EXPECT_EQ(deck->linkUpdates, 1);
  machine.files.files.erase("/srv/a.xls");
  machine.files.files["/srv/b.xls"].date += 1;
  machine.loop.Advance(2500);
  EXPECT_EQ(deck->linkUpdates, 2);
}

TEST_F(RuntimeTest, TheShowMayEndInsideATick) {
  Field(deck->Add(), "p", 1);
  Start();
  machine.loop.onDoEvents = [&] { runtime.UnSetLinkedObjects(); };
  machine.loop.Advance(3000);
  EXPECT_EQ(runtime.Form(), nullptr);
  EXPECT_TRUE(machine.messageBox.shown.empty());
}

struct FileChangesTest : RuntimeTest {
  fakes::FileWatcher watcher;

  FileChangesTest() {
    machine.UseFileWatcher(&watcher);
    machine.loop.lateness = 8;
  }
  ~FileChangesTest() override { runtime.UnSetLinkedObjects(); }
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
    fakes::Shape& shape = Field(slide, "p", 1);
    deck->Add();
    fakes::Slide& last = deck->Add();
    Field(last, "far", 1, "002");
    clsRuntime each;
    each.ActivePresentation(deck);
    each.StartTimers(window);
    EXPECT_EQ(watcher.watched, std::set<std::string>{Prices});
    for (const char* price : {"4", "5", "3"}) {
      machine.loop.Advance(200);
      Change(Prices, std::string("Item\tPrice\nTea\t") + price + "\n");
      machine.loop.Advance(60);
      EXPECT_EQ(shape.text, price) << "scrolling " << scrolls;
    }
    window->position = 3;
    each.SlideShowNextSlide(window);
    EXPECT_TRUE(watcher.watched.contains("/decks/far.txt"));
    window->position = 4;  // the end of the show
    machine.loop.Advance(3000);
  }
  EXPECT_FALSE(machine.loop.HasTimers());
}

TEST_F(FileChangesTest, AFileThatNeverRestsCostsNoMoreThanTheInterval) {
  machine.files.Write("/decks/calm.txt", "Price\n7\n");
  deck->tags->Add("CORVANE CONNECTION002", "0\tCalm\tcalm.txt\t-1\t");
  fakes::Slide& slide = deck->Add();
  Field(slide, "p", 1);
  fakes::Shape& calm = Field(slide, "calm", 1, "002");
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
  Field(slide, "p", 1);
  Field(slide, "stock", 1, "002");
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
  fakes::Shape& shape = Field(slide, "p", 1);
  Field(slide, "stock", 1, "002");
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
  Field(deck->Add(), "p", 1);
  for (const bool onSlideChange : {false, true}) {
    Start();
    watcher.onFiles = [&] { runtime.UnSetLinkedObjects(); };
    if (onSlideChange) {
      GoTo(1);
    } else {
      machine.loop.Advance(1010);
    }
    watcher.onFiles = {};
    EXPECT_FALSE(watcher.goneInUse);
    EXPECT_EQ(runtime.Form(), nullptr);
    EXPECT_FALSE(machine.loop.HasTimers());
  }
}

TEST_F(FileChangesTest, ALinkedFileThatChangesTwiceInASecondIsRefreshedTwice) {
  machine.files.Write("/srv/a.xls", "");
  fakes::Shape& object = deck->Add().Add("object");
  object.type = PowerPoint::ShapeType::LinkedOLEObject;
  object.hasTextFrame = false;
  object.linkSource = "/srv/a.xls!Sheet1";
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

TEST_F(RuntimeTest, AnUnlinkedPresentationStaysInactive) {
  deck->tags->items.clear();
  deck->Add();
  Start();
  EXPECT_EQ(runtime.Form(), nullptr);
}

}  // namespace
}  // namespace LF2000
