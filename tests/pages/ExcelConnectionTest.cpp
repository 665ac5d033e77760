// The dialog of worksheets.

#include <gmock/gmock.h>

#include "fakes/FakeExcel.h"
#include "pages/ConnectionDialogs.h"

namespace LF2000::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* Invalid =
    "txtRange: Invalid range specification. Enter A1:B2 for cells A1, A2, B1 and B2.";

struct ExcelConnectionTest : ConnectionDialogs {
  fakes::ExcelProgram excel;

  ExcelConnectionTest() {
    machine.UseExcel(&excel);
    machine.files.Write("/decks/prices.xlsx", "");
    // Its cells are B3:D9, whatever is asked for.
    excel.sheets = {{"Offer", {{{"Item"}, {"Price"}}, {{"Rye"}, {"4.80"}}, {{"Tart"}, {"3.20"}}}},
                    {"Old", {{{"1"}, {"2"}}, {{"3"}, {"4"}}}}};
    excel.ranges = {"B3:C1048576", "Prices", "1:1048576", "B3:D9"};
  }
};

TEST_F(ExcelConnectionTest, AWorkbookIsConnectedAsItIsFound) {
  Load({});
  OpenNew(ConnectionKind::Excel, "/decks/prices.xlsx");
  EXPECT_EQ(view.Top().Caption(), "Worksheet");
  EXPECT_THAT(view.Items("cmbSheet"), ElementsAre("Offer", "Old"));
  EXPECT_EQ(view.Text("cmbSheet"), "Offer");
  EXPECT_EQ(view.Text("txtRange"), "B3:C1048576");
  EXPECT_EQ(view.Text("lblFound"), "2 columns, 2 rows; the sheet uses B3:C5");
  EXPECT_EQ(Preview(), "Rye 4.80 /Tart 3.20 ");
  const auto columns = std::get<Forms::Items>(view.Get("grdPreview").Properties().at("Columns"));
  EXPECT_EQ(columns.at(1).Note, "C");
  EXPECT_FALSE(view.Visible("cmdWholeSheet"));
  view.Click("cmdOK");
  EXPECT_EQ(Tag("001"), "2|prices|prices.xlsx|Offer|-1|B3:C1048576|");
  EXPECT_EQ(excel.opened, excel.closed);
}

TEST_F(ExcelConnectionTest, ARangeOfItsOwnStaysAndTheWholeSheetIsOffered) {
  Load({"2|Offer|prices.xlsx|Offer|-1|B3:D9|"});
  OpenExisting("001");
  EXPECT_EQ(view.Text("txtRange"), "B3:D9");
  EXPECT_EQ(view.Property("cmdWholeSheet", "Caption"), "&Use B3:C1048576");
  view.Click("cmdWholeSheet");
  machine.RunJobs();
  EXPECT_EQ(view.Text("txtRange"), "B3:C1048576");
  view.Choose("cmbSheet", "Old");
  machine.RunJobs();
  EXPECT_EQ(view.Text("lblFound"), "2 columns, 1 row; the sheet uses B3:C4");
}

TEST_F(ExcelConnectionTest, ARangeIsChecked) {
  Load({});
  OpenNew(ConnectionKind::Excel, "prices.xlsx");
  for (const char* range : {"", "A1:", "A0:B2", "1x", "A1:B2:C3", "A1 B2", "Old!A1:B2", "Nowhere"}) {
    view.complaints.clear();
    view.Set("txtRange", range);
    machine.RunJobs();
    view.Click("cmdOK");
    EXPECT_THAT(view.complaints, testing::Contains(Invalid)) << range;
  }
  EXPECT_TRUE(presentation->Connections().empty());
  view.Set("txtRange", "Prices");  // a defined name
  machine.RunJobs();
  view.Click("cmdOK");
  EXPECT_EQ(Tag("001"), "2|prices|prices.xlsx|Offer|-1|Prices|");
}

TEST_F(ExcelConnectionTest, WhatIsDrawnInThePreviewBecomesTheRange) {
  excel.sheets = {
      {"Offer",
       {{{"Item"}, {"Price"}, {"Until"}}, {{"Rye"}, {"4.80"}, {"May"}}, {{"Tart"}, {"3.20"}, {"June"}}}}};
  const struct {
    const char* range;
    bool hasNames;
    Forms::Places drawn;
    const char* expected;
    bool hasNamesThen;
  } cases[] = {
      {"B3:D9", true, {-1, 0, 0, 1}, "B3:C4", true},
      {"B3:D9", true, {0, 1, 0, 2}, "C4:D4", false},
      {"B3:D9", true, {0, 2, 1, 2}, "D4:D5", false},
      {"B3:D9", true, {-1, 1, -1, 2}, "C3:D9", true},
      {"B3:D9", false, {0, 0, 1, 0}, "B3:B4", false},
      {"B3:C1048576", true, {-1, 1, -1, 1}, "C3:C1048576", true},
  };
  for (const auto& c : cases) {
    Load({"2|Offer|prices.xlsx|Offer|" + std::string(c.hasNames ? "-1" : "0") + "|" + c.range + "|"});
    OpenExisting("001");
    EXPECT_EQ(view.Select("grdPreview", c.drawn), "") << c.expected;
    EXPECT_EQ(view.Text("txtRange"), c.expected);
    EXPECT_EQ(view.Get<Forms::CheckBox>("chkFirstRow").Value(), c.hasNamesThen) << c.expected;
    machine.RunJobs();
    view.Click("cmdOK");
    EXPECT_THAT(Tag("001"), testing::EndsWith(std::string("|") + c.expected + "|"));
  }
}

TEST_F(ExcelConnectionTest, CellsThatAreNotThereCannotBeDrawn) {
  Load({"2|Offer|prices.xlsx|Offer|-1|B3:D9|"});
  OpenExisting("001");
  const std::vector<Forms::Places> wrong = {{},           {0, 0, 0},    {0, 0, 2, 0},  {0, 0, 0, 2},
                                            {1, 0, 0, 0}, {0, 1, 0, 0}, {-2, 0, 0, 0}, {0, -1, 0, 0}};
  for (const Forms::Places& drawn : wrong) {
    EXPECT_EQ(view.Select("grdPreview", drawn), "'grdPreview' does not show these cells.");
  }
  EXPECT_EQ(view.Text("txtRange"), "B3:D9");
  view.Set("txtRange", "Prices");  // a defined name, which says not where its cells stand
  machine.RunJobs();
  ASSERT_FALSE(view.Cells("grdPreview").empty());
  EXPECT_EQ(view.Select("grdPreview", {0, 0, 0, 1}), "'grdPreview' does not show these cells.");
}

TEST_F(ExcelConnectionTest, SheetsThatCannotBeReadAreSaid) {
  Load({});
  OpenNew(ConnectionKind::Excel);
  EXPECT_EQ(view.Text("txtRange"), "A1:I10");
  excel.failingOpens = 1;
  view.Set("txtFile", "prices.xlsx");
  machine.RunJobs();
  const std::string why = "Error while reading sheets from excel file prices.xlsx. \r\nthe file is in use";
  EXPECT_EQ(view.Property("cmbSheet", "ListProblem"), why);
  EXPECT_EQ(view.Text("lblFound"), why);
  EXPECT_EQ(view.Text("txtRange"), "A1:I10");
  modGlobalFunctions::Reset();
  excel.installed = false;
  view.Set("txtFile", "prices.xlsx ");
  machine.RunJobs();
  EXPECT_THAT(view.Text("lblFound"), HasSubstr("nothing on this computer that reads workbooks"));
}

}  // namespace
}  // namespace LF2000::test
