// A linked deck while it is edited: filled when it is opened, shown by display type, blank in its file.

#include "basic/Conversion.h"
#include "system/EditedDeck.h"

namespace LF2000 {
namespace {

struct EditedDeckTest : EditedDeck {
  EditedDeckTest() { machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t3\nMilk\n"); }

  void Link(int displayType = 1) {
    deck->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"},
                         {"CORVANE DISPLAYTYPE", std::to_string(displayType)}};
  }
  static fakes::Shape& AddField(fakes::Slide& slide, const std::string& name, const std::string& column,
                                int row, const std::string& connection = "001") {
    fakes::Shape& shape = slide.AddField(name, row, connection, column);
    shape.text = "sample";
    return shape;
  }
};

TEST_F(EditedDeckTest, FillsByDisplayType) {
  const struct {
    int type;
    const char* field;
    const char* clock;
  } cases[] = {
      {1, "3", "12:00"},       {2, "Prices", "[n/a]"},       {3, "Price", "hh:nn"}, {4, "1", "[n/a]"},
      {5, "Price 1", "[n/a]"}, {6, "Prices Price", "[n/a]"}, {7, " ", ""},          {0, " ", ""}};
  for (const auto& c : cases) {
    deck = std::make_shared<fakes::Presentation>();
    Link(c.type);
    fakes::Slide& slide = deck->Add();
    fakes::Shape& field = AddField(slide, "p", "Price", 1);
    fakes::Shape& clock = slide.AddClock("hh:nn");
    Open();
    EXPECT_EQ(field.text, c.field) << c.type;
    EXPECT_EQ(clock.text, c.clock) << c.type;
  }
  EXPECT_TRUE(machine.messageBox.shown.empty());
}

TEST_F(EditedDeckTest, LeavesAloneWhatItCannotFill) {
  Link();
  fakes::Slide& slide = deck->Add();
  fakes::Shape& unchanged = AddField(slide, "same", "Price", 1);
  unchanged.text = "3";
  fakes::Shape& unknown = AddField(slide, "unknown", "Price", 1, "002");
  fakes::Shape& empty = AddField(slide, "empty", "Price", 2);
  fakes::Shape& beyond = AddField(slide, "beyond", "Price", 9);
  fakes::Shape& type5 = AddField(slide, "type5", "Price", 1);
  type5.tags->items[0].second = "5";
  fakes::Shape& graph = AddField(slide, "graph", "Price", 1);
  graph.tags->items[0].second = "4";
  Open();
  EXPECT_EQ(unchanged.writes, 0);
  EXPECT_EQ(unknown.text, "sample");
  EXPECT_EQ(empty.text, "[Empty]");
  EXPECT_EQ(beyond.text, "[Row not available in current dataset]");
  EXPECT_EQ(type5.text, "sample");
  EXPECT_EQ(graph.text, "sample");
}

TEST_F(EditedDeckTest, AShapeThatScrollsByItsNameIsBlankBeyondTheData) {
  Link();
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SCROLLSTEP7", "True\t1\t500");
  slide.tags->Add("CORVANE SCROLLSTEP8", "False\t1\t500");
  fakes::Slide& broken = deck->Add();
  broken.tags->Add("CORVANE SCROLLSTEP7", "perhaps");
  const fakes::Shape& first = AddField(slide, "7", "Item", 2);
  constexpr const char* Marker = "[Row not available in current dataset]";
  const std::pair<const fakes::Shape&, const char*> beyond[] = {
      {AddField(slide, "7", "Item", 9), " "},
      {AddField(slide, "8", "Item", 9), Marker},
      {AddField(slide, "Title", "Item", 9), Marker},
      {AddField(broken, "7", "Item", 9), Marker},
  };
  Open();
  EXPECT_EQ(first.text, "Milk");
  for (const auto& [shape, text] : beyond) EXPECT_EQ(shape.text, text) << shape.name;
}

TEST_F(EditedDeckTest, TheMeterCountsSlidesAndConnections) {
  Link();
  deck->Add();
  Open();
  EXPECT_TRUE(machine.meter.log.empty());
  deck->tags->Add("CORVANE CONNECTION002", "0\tMore\tprices.txt\t-1\t");
  Open();
  ASSERT_FALSE(machine.meter.log.empty());
  EXPECT_EQ(machine.meter.log.front(), "show Opening presentation 3") << "one slide, two connections";
  Link();
  machine.meter.log.clear();
  deck->Add();
  Open();
  EXPECT_EQ(machine.meter.log,
            (std::vector<std::string>{"show Opening presentation 3", "Opening connection Prices", "step",
                                      "\r\nPopulating slide 1", "step", "\r\nPopulating slide 2", "step",
                                      "close"}));
}

TEST_F(EditedDeckTest, SavingBlanksLinkedTextsOnly) {
  Link();
  fakes::Slide& slide = deck->Add();
  fakes::Shape& field = AddField(slide, "p", "Price", 1);
  fakes::Shape& plain = slide.Add("plain");
  plain.text = "Menu";
  fakes::Shape& picture = AddField(slide, "picture", "Price", 1);
  picture.hasTextFrame = false;
  Open();
  deck->onSave = [&] {
    EXPECT_EQ(field.text, " ");
    EXPECT_EQ(plain.text, "Menu");
  };
  Save();
  EXPECT_EQ(field.text, "3");
  // What is asked for anew is read, though the file has kept its date.
  machine.files.files["/decks/prices.txt"].content = "Item\tPrice\nTea\t4\n";
  Save();
  EXPECT_EQ(field.text, "3");
  Press("cbrRefresh");
  EXPECT_EQ(field.text, "4");
}

TEST_F(EditedDeckTest, AShapeThatTakesNoTextKeepsNoOtherFromBeingFilledOrBlanked) {
  Link();
  fakes::Slide& slide = deck->Add();
  slide.AddClock("hh:nn").hasTextFrame = false;
  slide.AddChart("chart").fails = true;
  fakes::Shape& field = AddField(slide, "p", "Price", 1);
  Open();
  EXPECT_EQ(field.text, "3");
  ASSERT_EQ(machine.messageBox.shown.size(), 2U);
  EXPECT_EQ(machine.messageBox.shown[0].text,
            "Error while filling values. \r\nshape clock has no text frame");
  std::string saved;
  deck->onSave = [&] { saved = field.text; };
  Save();
  EXPECT_EQ(saved, " ");
}

TEST_F(EditedDeckTest, ChartsTakeAllRowsWhileValuesAreOnDisplay) {
  Link(3);
  fakes::Slide& slide = deck->Add();
  fakes::Chart& broken = slide.AddChart("broken");
  fakes::Chart& chart = slide.AddChart("chart");
  fakes::Chart& unknown = slide.AddChart("unknown", "002");
  broken.fails = true;
  Open();
  EXPECT_EQ(chart.fills, 0);
  Press("cbrDisplayValue");
  EXPECT_EQ(chart.cells.rows(), 3U);
  EXPECT_EQ(std::get<std::string>(chart.cells.cell(0, 1)), "Price");
  EXPECT_EQ(basic::CStr(chart.cells.cell(1, 1)), "3");
  EXPECT_FALSE(std::holds_alternative<std::string>(chart.cells.cell(2, 1))) << "a gap";
  EXPECT_EQ(unknown.fills, 0);
  ASSERT_EQ(machine.messageBox.shown.size(), 1U);
  EXPECT_EQ(machine.messageBox.shown[0].text, "Error while filling values. \r\nthe chart takes no data");

  machine.files.Write("/decks/prices.txt", "Item\tPrice\n");
  Press("cbrRefresh");
  EXPECT_EQ(chart.cells.rows(), 3U) << "without a row the chart stays as it is";
}

struct EditedTablesTest : EditedDeck {
  EditedTablesTest() {
    machine.files.Write("/decks/trains.txt",
                        "Zeit\tZug\tNach\n12:00\tIC 1\tBasel\n12:10\tIR 2\tChur\n12:20\tS 3\n");
    deck->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE CONNECTION001", "0\tTrains\ttrains.txt\t-1\t"},
                         {"CORVANE DISPLAYTYPE", "1"}};
  }
};

TEST_F(EditedTablesTest, ColumnsGoByTheHeaderOrElseByPosition) {
  struct Case {
    const char* cells;
    bool hasHeader;
    bool hasTotal;
    const char* filled;
  };
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
    Open();
    EXPECT_EQ(table.Cells(), c.filled);
    const int writes = table.writes;
    Press("cbrRefresh");
    EXPECT_EQ(table.writes, writes) << "cells that say so already are not written";
  }
  std::string told;
  for (const auto& box : machine.messageBox.shown) told += box.text + "\n";
  EXPECT_NE(told.find("column 'Na ch'"), std::string::npos) << told;
  EXPECT_NE(told.find("column 'Gleis', which the table's header names. It has: Zeit, Zug, Nach."),
            std::string::npos)
      << told;
  EXPECT_NE(told.find("3 columns, and the table 4"), std::string::npos) << told;
}

TEST_F(EditedTablesTest, WhileADeckIsEditedCellsFollowTheDisplayAndTheAuthorsAreSaved) {
  fakes::Table& table = deck->Add().AddTable("t", "Zug|Nach/a|b/c|d");
  Open();
  EXPECT_EQ(table.Cells(), "Zug|Nach/IC 1|Basel/IR 2|Chur");
  Press("cbrDisplayColumnIndex");
  EXPECT_EQ(table.Cells(), "Zug|Nach/Zug 1|Nach 1/Zug 2|Nach 2");
  std::string saved;
  deck->onSave = [&] { saved = table.Cells(); };
  Save();
  EXPECT_EQ(saved, "Zug|Nach/a|b/c|d");
}

}  // namespace
}  // namespace LF2000
