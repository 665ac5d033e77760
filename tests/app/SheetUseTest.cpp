// What a worksheet holds beside what a connection reads of it.

#include "app/inspect/SheetUse.h"

#include <gmock/gmock.h>

#include "app/ShowTest.h"
#include "basic/CellReference.h"
#include "basic/Strings.h"
#include "connections/SheetTable.h"
#include "support/BookBuilder.h"
#include "support/TemporaryFolder.h"
#include "workbook/sheet/Factory.h"

namespace app::test {
namespace {

using testing::ElementsAre;

struct SheetUseTest : ShowTest {
  support::TemporaryFolder folder;
  workbook::Factory excel{loop, [](std::string_view path) { return std::string(path); }};
  LF2000::clsConnection connection;

  SheetUseTest() { machine.UseExcel(&excel); }

  /// A sheet of these texts: cells parted by "|", rows by "/"; "~" is a cell that is formatted and blank.
  void read(const std::string& texts, const std::string& range, bool header = true) {
    support::BookBuilder book;
    int row = 0;
    for (const std::string& line : basic::Split(texts, '/')) {
      book.rows += "<row r=\"" + std::to_string(++row) + "\">";
      std::uint32_t column = 0;
      for (const std::string& text : basic::Split(line, '|')) {
        const std::string place = basic::ColumnLetters(++column) + std::to_string(row);
        if (text == "~") book.rows += "<c r=\"" + place + "\" t=\"str\"><v></v></c>";
        if (text.empty() || text == "~") continue;
        book.rows += "<c r=\"" + place + "\" t=\"inlineStr\"><is><t>" + text + "</t></is></c>";
      }
      book.rows += "</row>";
    }
    machine.files.Write(folder.write("book.xlsx", book.bytes()), "");
    connection.ActivePresentationName((folder.path() / "board.pptx").string());
    connection.TagString("2\tPrices\tbook.xlsx\t\t" + std::string(header ? "-1" : "0") + "\t" + range + "\t");
    connection.OpenConnection();
    connection.OpenRecordset();
  }

  std::string wholeRange(const std::string& texts, bool header = true) {
    read(texts, "A1", header);
    const auto table = LF2000::FindSheetTable(connection);
    if (!table) return "empty";
    return LF2000::GrowingRange(table->Cells(header)) + (table->HasTitles(header) ? " below titles" : "") +
           (table->HasNames ? " with names" : "");
  }
  std::string leftOut(const std::string& texts, const std::string& range) {
    read(texts, range);
    std::string all;
    for (const std::string& remark : remarksOn(connection)) all += remark;
    return all;
  }
};

TEST_F(SheetUseTest, ARangeTakesInAllThatShowsAndRowsToCome) {
  EXPECT_EQ(wholeRange("Item|Price/Rye|4.80/Tart|3.20"), "A:B with names");
  EXPECT_EQ(wholeRange("Item|Price|~/Rye|4.80|~/~|~"), "A:B with names");
  EXPECT_EQ(wholeRange("/|Item|Price/|Rye|4.80/|Tart|3.20||note"), "B2:E1048576 with names");
  EXPECT_EQ(wholeRange("Prices of May//Item|Size|Price/Rye|1|4.80/Tart|2|3.20"),
            "A3:C1048576 below titles with names");
  EXPECT_EQ(wholeRange("Prices of May//Item|Size|Price/Rye|1|4.80/Tart|2|3.20", false), "A:C with names");
  EXPECT_EQ(wholeRange("~|~"), "empty");
}

TEST_F(SheetUseTest, DataBesideTheRangeAreTold) {
  const std::string sheet = "Item|Size|Price|~/Rye|1|4.80/Tart|2|3.20/||/Bun||0.90/||||end";
  EXPECT_EQ(leftOut(sheet, "A:E"), "");
  EXPECT_EQ(leftOut(sheet, "A:C"), "The range A:C leaves out data: column E. --range A:E takes them in.");
  EXPECT_EQ(leftOut(sheet, "A1:C5"), "");
  EXPECT_EQ(leftOut(sheet, "A1:C3"), "The range A1:C3 leaves out data: row 5. --range A:E takes them in.");
  EXPECT_EQ(leftOut(sheet, "B1:B2"),
            "The range B1:B2 leaves out data: row 3, column A, column C. --range A:E takes them in.");
  EXPECT_EQ(
      leftOut(sheet, "$B$2:$B$6"),
      "The range $B$2:$B$6 leaves out data: column A, columns C to E. --range A2:E1048576 takes them in.");
}

TEST_F(SheetUseTest, ColumnsWithoutNameAndDataAreNotOffered) {
  read("Item||Price|Z|~/Rye|x|4.80||/Tart||3.20", "A1:I10");
  EXPECT_THAT(offeredColumns(connection), ElementsAre("Item", "B", "Price", "Z"));
  read("1|2", "A1:I10", false);
  EXPECT_THAT(offeredColumns(connection), ElementsAre("A", "B"));
}

}  // namespace
}  // namespace app::test
