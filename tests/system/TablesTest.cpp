// Tables that take a connection as a whole: while a deck is edited, while it is shown.

#include "addin/support/modErrors.h"
#include "model/clsPresentation.h"
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

TEST_F(TablesTest, ColumnsGoByTheHeaderOrElseByPosition) {
  struct Case {
    const char* cells;
    bool hasHeader;
    bool hasTotal;
    const char* filled;
  };
  modErrors::SlideShowRunning = true;  // errors are logged
  const Case cases[] = {
      {"nach| Zeit /a|b", true, false, "nach| Zeit /Basel|12:00"},
      {"Zeit||Nach/a|own|b/c|own|d", true, false, "Zeit||Nach/12:00|own|Basel/12:10|own|Chur"},
      {"Zeit|Zug/a|b/^|c/d|e", true, false, "Zeit|Zug/12:00|IC 1/^|IR 2/12:20|S 3"},
      {"a|b|c/d|e|f/g|h|i/j|k|l", false, false, "12:00|IC 1|Basel/12:10|IR 2|Chur/12:20|S 3| / | | "},
      {"Zug/a/b/sum", true, true, "Zug/IC 1/IR 2/sum"},
      {"Na\vch/a", true, false, "Na\vch/a"},
      {"Zug|Gleis/a|b", true, false, "Zug|Gleis/a|b"},
      {"a|b|c|d", false, false, "a|b|c|d"},
  };
  for (const Case& c : cases) {
    deck->slides.clear();
    fakes::Table& table = deck->Add().AddTable("t", c.cells);
    table.hasHeader = c.hasHeader;
    table.hasTotal = c.hasTotal;
    clsPresentation presentation;
    presentation.ActivePresentation(handed(deck));
    EXPECT_EQ(table.Cells(), c.filled);
    const int writes = table.writes;
    presentation.FillValues(true);
    EXPECT_EQ(table.writes, writes) << "cells that say so already are not written";
  }
  EXPECT_NE(Errors().find("column 'Na ch'"), std::string::npos) << Errors();
  EXPECT_NE(Errors().find("column 'Gleis', which the table's header names. It has: Zeit, Zug, Nach."),
            std::string::npos)
      << Errors();
  EXPECT_NE(Errors().find("3 columns, and the table 4"), std::string::npos) << Errors();
}

TEST_F(TablesTest, WhileADeckIsEditedCellsFollowTheDisplayAndTheAuthorsAreSaved) {
  fakes::Table& table = deck->Add().AddTable("t", "Zug|Nach/a|b/c|d");
  clsPresentation presentation;
  presentation.ActivePresentation(handed(deck));
  EXPECT_EQ(table.Cells(), "Zug|Nach/IC 1|Basel/IR 2|Chur");
  presentation.DisplayType(5);
  presentation.FillValues(false);
  EXPECT_EQ(table.Cells(), "Zug|Nach/Zug 1|Nach 1/Zug 2|Nach 2");
  presentation.PrepareSave();
  EXPECT_EQ(table.Cells(), "Zug|Nach/a|b/c|d");
}

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
