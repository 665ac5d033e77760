// The pace of a running show: its timers, and what each of them does.

#include "fakes/FakeDatabase.h"
#include "system/RuntimeShow.h"

namespace LF2000 {
namespace {

using RuntimeTimersTest = RuntimeShow;

TEST_F(RuntimeTimersTest, ClocksAreRewrittenWhenTheirTextChanges) {
  fakes::Slide& first = deck->Add();
  fakes::Shape& seconds = first.AddClock("hh:nn:ss");
  fakes::Shape& minutes = deck->Add().AddClock("hh:nn");
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

TEST_F(RuntimeTimersTest, TimersArePacedByWhatTheDeckHolds) {
  const struct {
    std::vector<const char*> rates;  // of databases
    const char* scroll;
    std::int32_t data;
    /// 0: the timer of connections does not run.
    std::int32_t connections;
  } cases[] = {
      {{}, nullptr, 1000, 0},
      {{"5000", "3000"}, nullptr, 3000, 0},
      {{"-2500"}, nullptr, 2500, 0},
      {{"0"}, nullptr, 1000, 0},
      {{"1E12"}, nullptr, 1000, 0},
      {{"5000"}, "True\t1\t400", 400, 5000},
      {{"300"}, "True\t1\t400", 300, 300},
      {{"0"}, "True\t1\t400", 1000, 1000},
      {{"0.4"}, "True\t1\t400", 1000, 1000},
      {{"5000"}, "False\t1\t400", 5000, 0},
  };
  for (const auto& c : cases) {
    fakes::Database database;
    machine.UseAdo(&database);
    deck = std::make_shared<fakes::Presentation>();
    deck->tags->Add("CORVANE VERSION", "1");
    int number = 0;
    for (const char* rate : c.rates) {
      deck->tags->Add("CORVANE CONNECTION00" + std::to_string(++number),
                      "1\tP\tDSN=x\tt\t\t" + std::string(rate) + "\t");
    }
    fakes::Slide& slide = deck->Add();
    if (c.scroll) slide.tags->Add("CORVANE SCROLLSTEP1", c.scroll);
    window = std::make_shared<fakes::Window>(deck);
    Start();
    FrmRuntimeTimer* const form = Runtime().Form();
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->tmrData().Interval(), c.data);
    EXPECT_EQ(form->tmrConnections().Enabled(), c.connections > 0);
    EXPECT_EQ(form->tmrConnections().Interval(), c.connections > 0 ? c.connections : 100);
    EXPECT_FALSE(form->tmrClock().Enabled());
    EXPECT_FALSE(form->tmrRefreshLinkedObjects().Enabled());
    End();
  }
}

TEST_F(RuntimeTimersTest, ADatabaseIsRequeriedAtItsRate) {
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
        slide.AddField("p", 1);
        window = std::make_shared<fakes::Window>(deck);
        Start();
        machine.loop.Advance(60'000);
        const auto reloads = std::count(database.log.begin(), database.log.end(), "requery -1");
        EXPECT_GE(reloads, fewest) << rate << " ms from second " << start << ", scrolling " << scrolls;
        EXPECT_LE(reloads, most) << rate << " ms from second " << start << ", scrolling " << scrolls;
        End();
      }
    }
  }
}

TEST_F(RuntimeTimersTest, AFileWhoseDateGoesBackIsReadAgain) {
  fakes::Shape& shape = deck->Add().AddField("p", 1);
  machine.files.Write("/srv/a.xls", "");
  deck->slides[0]->AddLinked("/srv/a.xls!Sheet1");
  Start();
  machine.files.files[Prices] = {"Item\tPrice\nTea\t2\n", 45000.0};
  machine.files.files["/srv/a.xls"].date = 45000.0;
  machine.loop.Advance(2500);
  EXPECT_EQ(shape.text, "2");
  EXPECT_EQ(deck->linkUpdates, 1);
}

TEST_F(RuntimeTimersTest, AScrollingShowRequeriesFromTheConnectionsTimer) {
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SCROLLSTEP1", "True\t1\t100");
  fakes::Shape& shape = slide.AddField("p", 1);
  Start();
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\n");
  machine.loop.Advance(900);
  EXPECT_EQ(shape.text, "3");
  machine.loop.Advance(300);
  EXPECT_EQ(shape.text, "4");
}

TEST_F(RuntimeTimersTest, AChangeOfSlideRestoresTheTimersAsTheyWere) {
  deck->Add().AddField("p", 1);
  deck->Add().AddField("p", 1);
  Start();
  FrmRuntimeTimer& form = *Runtime().Form();
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

TEST_F(RuntimeTimersTest, ChangedSourcesOfLinkedObjectsUpdateTheLinksOnce) {
  machine.files.Write("/srv/a.xls", "");
  machine.files.Write("/srv/b.xls", "");
  machine.files.Write("/srv/c.xls", "");
  fakes::Slide& slide = deck->Add();
  for (const char* source : {"/srv/a.xls!Sheet1!R1C1:R5C5", "/srv/b.xls!Sheet1", "/srv/c.xls"}) {
    slide.AddLinked(source);
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

TEST_F(RuntimeTimersTest, TheShowMayEndInsideATick) {
  deck->Add().AddField("p", 1);
  Start();
  machine.loop.onDoEvents = [&] { End(); };
  machine.loop.Advance(3000);
  EXPECT_FALSE(IsRunning());
  EXPECT_TRUE(machine.messageBox.shown.empty());
}

}  // namespace
}  // namespace LF2000
