// Tables that take a connection as a whole, while a deck is shown.

#include "system/RuntimeShow.h"

namespace LF2000 {
namespace {

constexpr const char* Trains = "/decks/trains.txt";

struct TablesTest : RuntimeShow {
  TablesTest() {
    machine.files.Write(Trains, "Zeit\tZug\tNach\n12:00\tIC 1\tBasel\n12:10\tIR 2\tChur\n12:20\tS 3\n");
    deck->tags->items[1].second = "0\tTrains\ttrains.txt\t-1\t";
    deck->tags->Add("CORVANE DISPLAYTYPE", "1");
  }
  std::string Errors() { return machine.files.files["/addin/errors.txt"].content; }
};

TEST_F(TablesTest, AShowWritesWhatHasChanged) {
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  fakes::Table& table = slide.AddTable("t", "Zeit|Nach/a|b/c|d");
  Start();
  EXPECT_FALSE(slide.transition->hidden) << "a table with rows counts as a value";
  EXPECT_EQ(table.Cells(), "Zeit|Nach/12:00|Basel/12:10|Chur");
  table.writes = 0;
  machine.loop.Advance(5000);
  EXPECT_EQ(table.writes, 0);
  machine.files.Write(Trains, "Zeit\tNach\n12:00\tBasel\n12:15\tChur\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(table.Cells(), "Zeit|Nach/12:00|Basel/12:15|Chur");
  EXPECT_EQ(table.writes, 1);
  machine.files.Write(Trains, "Zeit\tNach\n12:20\tBern\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(table.Cells(), "Zeit|Nach/12:20|Bern/ | ");

  machine.files.Write(Trains, "Zeit\tZiel\n12:30\tGenf\n");
  machine.loop.Advance(3000);
  EXPECT_EQ(table.Cells(), "Zeit|Nach/12:20|Bern/ | ") << "no time beside another train's destination";
  const std::size_t lines = LoggedErrors();
  EXPECT_NE(Errors().find("column 'Nach', which the show uses"), std::string::npos) << Errors();
  machine.loop.Advance(3000);
  EXPECT_EQ(LoggedErrors(), lines) << "told once: " << Errors();
  machine.files.Write(Trains, "Zeit\tNach\n12:30\tGenf\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(table.Cells(), "Zeit|Nach/12:30|Genf/ | ");
  machine.files.Write(Trains, "Zeit\tNach\n");
  machine.loop.Advance(1000);
  EXPECT_TRUE(slide.transition->hidden);
  EXPECT_EQ(table.Cells(), "Zeit|Nach/ | / | ");
}

TEST_F(TablesTest, FurtherRowsScrollOrAreLeftOut) {
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SCROLLSTEP1", "True\t2\t500");
  const fakes::Table& scrolling = slide.AddTable("t", "Zug/a/b");
  fakes::Slide& backwards = deck->Add();
  backwards.tags->Add("CORVANE SCROLLSTEP7", "True\t-1\t500");
  const fakes::Table& named = backwards.AddTable("7", "Zug/a/b");
  Start();
  std::vector<std::string> seen;
  for (int step = 0; step < 3; ++step) {
    seen.push_back(scrolling.Cells());
    machine.loop.Advance(500);
  }
  EXPECT_EQ(seen, (std::vector<std::string>{"Zug/IC 1/IR 2", "Zug/S 3/ ", "Zug/IC 1/IR 2"}));
  GoTo(2);
  seen.clear();
  for (int step = 0; step < 3; ++step) {
    seen.push_back(named.Cells());
    machine.loop.Advance(500);
  }
  EXPECT_EQ(seen, (std::vector<std::string>{"Zug/IC 1/IR 2", "Zug/ /IC 1", "Zug/IC 1/IR 2"}));
}

}  // namespace
}  // namespace LF2000
