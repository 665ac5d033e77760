// Which cells a reference visits, and how far the sheet is read for them.

#include <gtest/gtest.h>

#include "basic/CellReference.h"
#include "workbook/Reading.h"
#include "workbook/sheet/Describe.h"

namespace workbook::test {
namespace {

TEST(References, AreParsed) {
  const struct {
    const char* text;
    std::optional<std::string> sheet;
    const char* area;
  } cases[] = {
      {"A1:I10", {}, "A1:I10"},
      {" $a$1 : $c$5 ", {}, "A1:C5"},
      {"XFD1048576", {}, "XFD1048576"},
      {"C5:A1", {}, "A1:C5"},
      {"A5:C1", {}, "A1:C5"},
      {"C:$A", {}, "A1:C1048576"},
      {"5:$2", {}, "A2:XFD5"},
      {"Sheet2!A1:B2", "Sheet2", "A1:B2"},
      {"'It''s! mine'!AA3", "It's! mine", "AA3"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const auto reference = basic::ParseReference(c.text);
    ASSERT_TRUE(reference);
    EXPECT_EQ(basic::AreaText(reference->area), c.area);
    EXPECT_EQ(reference->sheet, c.sheet);
    const auto again = basic::ParseReference(basic::ReferenceText(*reference));
    ASSERT_TRUE(again);
    EXPECT_EQ(again->area, reference->area);
    EXPECT_EQ(again->sheet, reference->sheet);
  }
  for (const char* text :
       {"", "A", "5", "A0", "XFE1", "A1048577", "A99999999999999999999", "A1:B", "A:5", "A1:B2:C3", "A1,B2",
        "R1C1", "A$", "$A:$", "$$A1", "!A1", "'open!A1", "''!A1", "Sheet1!"}) {
    EXPECT_FALSE(basic::ParseReference(text)) << text;
  }
}

/// A number in B2, D2 and C4; rows 3 and 9 hold nothing but styles.
BookBuilder scattered() {
  BookBuilder book;
  book.rows =
      R"(<row r="2"><c r="B2"><v>22</v></c><c r="D2"><v>42</v></c></row><row r="3"><c r="A3" s="0"/></row>)"
      R"(<row r="4"><c r="C4"><v>34</v></c></row><row r="9" ht="20"><c r="F9" s="0"/></row>)";
  book.names =
      R"(<definedName name="Corner">Sheet1!$D$2:$B$2</definedName><definedName name="XYZ2020">Sheet1!$C$4</definedName>)"
      R"(<definedName name="XYZ2020" localSheetId="0">Sheet1!$B$2</definedName><definedName name="Gone">#REF!</definedName>)"
      R"(<definedName name="_xlnm._FilterDatabase" localSheetId="0" hidden="1">Sheet1!$A$1</definedName>)";
  return book;
}

TEST(RangeOfASheet, VisitsItsCellsEmptyOnesToo) {
  const std::pair<const char*, const char*> cases[] = {
      {"B2:C4", "22|/|/|34"},
      {"A1:B2", "|/|22"},
      {"D4:E6", "|/|/|"},
      {"Z90:AA90", "|"},
      {"C4", "34"},
      {"Sheet1!C4", "34"},
      {"corner", "22||42"},
      {"XYZ2020", "22"},
      // Whole columns end with the data of the sheet, and have their first cells.
      {"B:C", "|/22|/|/|34"},
      {"G:H", "|/|/|/|"},
      {"C2:D1048576", "|42/|/34|"},
      {"F9:F1048576", ""},
      // Whole rows end with the widest of them.
      {"2:3", "|22||42/|||"},
      {"3:4", "||/||34"},
      {"7:7", ""},
      {"A:XFD", "|||/|22||42/|||/||34|"}};
  for (const auto& [range, texts] : cases) EXPECT_EQ(textsOf(scattered(), range), texts) << range;
}

TEST(RangeOfASheet, RefusesWhatIsNone) {
  const TemporaryFolder folder;
  const std::string path = folder.write("book.xlsx", scattered().bytes());
  Desk desk;
  const auto sheet = desk.open(path)->Sheets()->Item(1);
  const auto error = [&](const char* range) {
    return errorOf([&] { static_cast<void>(sheet->Range(range)); });
  };
  EXPECT_EQ(error("A1:"),
            "invalid range specification 'A1:' for workbook '" + path +
                "'. Enter A1:B2 for cells A1, A2, B1 and B2, or a defined name (there are: 'Corner', "
                "'XYZ2020', 'XYZ2020', 'Gone')");
  EXPECT_EQ(error("Gone"),
            "the name 'Gone' of workbook '" + path +
                "' does not stand for one range of cells, but for '#REF!'. Enter A1:B2 for cells A1, "
                "A2, B1 and B2");
  EXPECT_EQ(error("Other!A1"),
            "workbook '" + path + "' has no sheet named 'Other'. Its worksheets: 'Sheet1'");
}

TEST(RangeOfASheet, IsDescribedWhereTheSheetDeclaresNoneAndStopsWhenTheVisitorSaysSo) {
  const TemporaryFolder folder;
  const std::string path = folder.write("book.xlsx", scattered().bytes());
  Desk desk;
  const Description description = describe(path, desk.loop);
  ASSERT_EQ(description.sheets.size(), 1U);
  EXPECT_EQ(description.sheets[0].dimension, "A1:D4");
  EXPECT_EQ(description.names.size(), 4U) << "hidden names are left out";
  int visited = 0;
  const auto range = desk.open(path)->Sheets()->Item(1)->Range("A1:C9");
  range->ForEach([&](const Excel::Cell&) { return ++visited < 5; });
  EXPECT_EQ(visited, 5);
}

/// Rows of one number and one shared text each; what follows them is broken.
BookBuilder brokenBehind(int rows) {
  BookBuilder book;
  for (int i = 0; i < rows; ++i) {
    book.rows +=
        "<row><c><v>" + std::to_string(i) + "</v></c><c t=\"s\"><v>" + std::to_string(i) + "</v></c></row>";
    book.strings += "<si><t>text " + std::to_string(i) + "</t></si>";
  }
  book.rows += "\n<row><c></row>";
  book.strings += "\n<si><t></si>";
  return book;
}

TEST(RangeOfASheet, ReadsNoFurtherThanItGoes) {
  constexpr int Rows = 20000;
  const TemporaryFolder folder;
  const std::string path = folder.write("book.xlsx", brokenBehind(Rows).bytes());
  Desk desk;
  EXPECT_EQ(desk.texts(path, "Sheet1", "A2:B3"), "1|text 1/2|text 2");
  EXPECT_EQ(errorOf([&] { desk.texts(path, "Sheet1", "A20001"); }),
            "workbook '" + path +
                "', part 'xl/worksheets/sheet1.xml' is no proper XML in line 2, column 11: Start-end tags "
                "mismatch");
}

TEST(RangeOfASheet, JoinsBlocksWithoutLoss) {
  // Rows of many sizes, among them ones that are larger than what is read at once.
  BookBuilder book;
  std::string expected;
  for (int i = 1; i <= 3000; ++i) {
    const std::string text(i % 1000 == 0 ? 30000U : static_cast<unsigned>(i * 7 % 331), 'x');
    book.rows += "<row r=\"" + std::to_string(i) + "\">" + (i % 2 == 0 ? "<!-- <row r=\"1\"> -->" : "");
    for (int column = 0; column < (i % 1000 == 0 ? 9 : 1); ++column) {
      book.rows += "<c t=\"inlineStr\"><is><t>" + text + "</t></is></c>";
    }
    book.rows += "</row>";
    expected += (i == 1 ? "" : "/") + text;
  }
  EXPECT_TRUE(textsOf(book, "A:A") == expected);
}

TEST(RangeOfASheet, LetsTheLoopRunInLongReads) {
  const TemporaryFolder folder;
  Desk desk;
  const auto range =
      desk.open(folder.write("book.xlsx", scattered().bytes()))->Sheets()->Item(1)->Range("A1:A3");
  range->ForEach([](const Excel::Cell&) {
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    return true;
  });
  EXPECT_GE(desk.loop.events, 3);
}

}  // namespace
}  // namespace workbook::test
