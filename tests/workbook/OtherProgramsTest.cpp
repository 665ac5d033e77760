// Workbooks that other programs wrote show what those programs show.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/Reading.h"
#include "workbook/sheet/Describe.h"

namespace workbook::test {
namespace {

std::string data(const std::string& name) { return std::string(TEST_DATA) + "/" + name; }

struct Case {
  const char* file;
  const char* sheet;
  const char* range;
  const char* texts;
};

constexpr const char* Prices =
    "Name||Price|||/Old town tour ||1,234.50|2026-02-03 20:30:45|8:30 PM|TRUE/"
    "two\nlines||25.6%|2469|ab|#DIV/0!/||00042|7 pcs|007|/merged|||Ünïcödé \U0001F600 <&>||";

TEST(OtherPrograms, ShowWhatTheyShow) {
  const Case cases[] = {
      {"xlsxwriter.xlsx", "Prices", "A1:F5", Prices},
      {"xlsxwriter-1904.xlsx", "Prices", "A1:F5", Prices},
      {"xlsxwriter.xlsx", "prices", "A:F", Prices},
      {"xlsxwriter.xlsx", "PRICES", "block", "Name||Price/Old town tour ||1,234.50/two\nlines||25.6%"},
      {"xlsxwriter.xlsx", "STRAßE", "Local", "inside"},
      {"xlsxwriter.xlsx", "Prices", "straße!$B$2", "inside"},
      {"openpyxl.xlsx", "Data", "A:E",
       "Gate|Flight|Time|Delay|Open/7|LX 12|2026-02-03 20:30:45|30:05|TRUE/"
       "12.5||2026-02-03|(0.13)|FALSE/||||/|  kept  |||"},
      {"openpyxl.xlsx", "Data", "Head", "Gate|Flight|Time|Delay|Open"},
      {"openpyxl.xlsx", "very hidden", "3:3", "||1"},
      {"libreoffice.xlsx", "Cities", "Whole",
       "City|Share|Since/Zürich West|45.7%|03.02.2026/||/||/2|TRUE|08:05"}};
  for (const auto& c : cases) {
    EXPECT_EQ(Desk().texts(data(c.file), c.sheet, c.range), c.texts) << c.file << ' ' << c.range;
  }
}

TEST(OtherProgramsValues, AreOfTheirKinds) {
  for (const char* file : {"xlsxwriter.xlsx", "xlsxwriter-1904.xlsx"}) {
    Desk desk;
    std::vector<basic::Variant> values;
    desk.open(data(file))->Sheets()->Item(1)->Range("A2:F3")->ForEach([&](const Excel::Cell& cell) {
      values.push_back(cell.Value());
      return true;
    });
    using Text = std::string;
    const std::vector<basic::Variant> expected{
        Text("Old town tour "), basic::Empty(), 1234.5, 46056.8546875, 46056.8546875, true,
        Text("two\nlines"),     basic::Empty(), 0.256,  2469.0,        Text("ab"),    Text("#DIV/0!")};
    EXPECT_EQ(values, expected) << file;
  }
}

TEST(OtherProgramsSheets, AreCountedWithoutCharts) {
  Desk desk;
  const auto book = desk.open(data("xlsxwriter.xlsx"));
  EXPECT_EQ(book->Sheets()->Count(), 2);
  EXPECT_EQ(book->Sheets()->Item(2)->Name(), "Straße");
  const std::string name = "'" + data("xlsxwriter.xlsx") + "'";
  EXPECT_EQ(errorOf([&] { static_cast<void>(book->Sheets()->Item("chart")); }),
            "sheet 'chart' of workbook " + name +
                " has no cells: it is a chart or a dialog. Its worksheets: 'Prices', 'Straße'");
  EXPECT_EQ(errorOf([&] { static_cast<void>(book->Sheets()->Item(3)); }),
            "workbook " + name + " has no worksheet 3, it has 2");
  book->Close();
  EXPECT_EQ(errorOf([&] { static_cast<void>(book->Sheets()); }), "the workbook is closed");
}

TEST(OtherProgramsSheets, AreDescribed) {
  IdleLoop loop;
  const Description description = describe(data("xlsxwriter.xlsx"), loop);
  using ::testing::ElementsAre;
  using ::testing::FieldsAre;
  EXPECT_THAT(description.sheets,
              ElementsAre(FieldsAre("Prices", true, "A1:F5"), FieldsAre("Straße", false, "A1:B2")));
  EXPECT_THAT(description.names,
              ElementsAre(FieldsAre("Block", "Prices!$A$1:$C$3", ""), FieldsAre("Half", "0.5", ""),
                          FieldsAre("Local", "Straße!$B$2", "Straße")));
}

}  // namespace
}  // namespace workbook::test
