// Tables whose cells take other texts: what is written, what stays, what comes back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/RecordedChanges.h"
#include "support/TableShape.h"
#include "support/TemporaryFolder.h"

namespace deck::test {
namespace {

using support::errorOf;
using support::tableShape;
using testing::HasSubstr;

/// A header merged over two columns, cells merged downwards and without a text, a total.
constexpr const char* Rows =
    "<a:tr h=\"370840\"><a:tc><a:txBody><a:bodyPr/><a:p><a:r><a:t>Time</a:t></a:r></a:p></a:txBody></a:tc>"
    "<a:tc gridSpan=\"2\"><a:txBody><a:bodyPr/><a:p><a:r><a:t>To</a:t></a:r></a:p></a:txBody></a:tc>"
    "<a:tc hMerge=\"1\"><a:txBody><a:bodyPr/><a:p/></a:txBody></a:tc></a:tr>"
    "<a:tr h=\"370840\"><a:tc rowSpan=\"2\"><a:txBody><a:bodyPr/><a:lstStyle/><a:p><a:pPr algn=\"r\"/>"
    "<a:r><a:rPr b=\"1\"/><a:t>12</a:t></a:r><a:r><a:rPr i=\"1\"/><a:t>:30</a:t></a:r>"
    "<a:endParaRPr sz=\"900\"/></a:p> <!-- kept --> <a:p><a:r><a:t>late</a:t></a:r></a:p></a:txBody>"
    "<a:tcPr marL=\"0\"/></a:tc><a:tc><a:tcPr/></a:tc>"
    "<a:tc><a:txBody><a:bodyPr/><a:p><a:endParaRPr sz=\"800\"/></a:p></a:txBody></a:tc></a:tr>"
    "<a:tr h=\"370840\"><a:tc vMerge=\"1\"><a:txBody><a:bodyPr/><a:p/></a:txBody></a:tc>"
    "<a:tc><a:txBody><a:bodyPr/><a:p><a:r><a:t>Rome</a:t></a:r></a:p></a:txBody></a:tc></a:tr>";

struct TableTest : testing::Test {
  TableTest() {
    deck->noteChange(deck->slidePart(1));  // written as changed parts are
    deck->addListener(changes);
    table = deck->Slides()->Item(1)->Shapes()->Item("Table")->Table();
  }
  ~TableTest() override { deck->removeListener(changes); }
  static support::DeckBuilder builder() {
    return support::DeckBuilder::of(support::textShape(2, "Title", "Trains") +
                                    tableShape(3, "Table", 3, Rows));
  }
  std::string xml() const { return std::string(deck->slidePart(1).bytes()); }

  std::shared_ptr<Presentation> deck = builder().presentation();
  support::RecordedChanges changes;
  std::shared_ptr<PowerPoint::Table> table;
};

TEST_F(TableTest, CellsAreReadByTheirPlaces) {
  EXPECT_EQ(table->RowCount(), 3);
  EXPECT_EQ(table->ColumnCount(), 3);
  EXPECT_TRUE(table->FirstRow());
  EXPECT_FALSE(table->LastRow());
  std::string read;
  for (std::int32_t row = 1; row <= 3; ++row) {
    for (std::int32_t column = 1; column <= 3; ++column) {
      read += (table->IsCovered(row, column) ? "^" : table->Text(row, column)) + "|";
    }
  }
  EXPECT_EQ(read, "Time|To|^|12:30\rlate|||^|Rome|^|") << "a cell that a row lacks is none";
  EXPECT_THAT(errorOf([&] { static_cast<void>(table->Text(4, 1)); }), HasSubstr("row 4, column 1"));
  const auto title = deck->Slides()->Item(1)->Shapes()->Item("Title");
  EXPECT_FALSE(title->HasTable());
  EXPECT_THAT(errorOf([&] { static_cast<void>(title->Table()); }), HasSubstr("is no table"));
}

TEST_F(TableTest, ATextTakesTheFormattingOfItsCell) {
  table->Text(2, 1, "8 < 9");
  EXPECT_THAT(xml(), HasSubstr("<a:p><a:pPr algn=\"r\"/><a:r><a:rPr b=\"1\"/><a:t>8 &lt; 9</a:t></a:r>"
                               "<a:endParaRPr sz=\"900\"/></a:p></a:txBody><a:tcPr marL=\"0\"/></a:tc>"));
  table->Text(2, 2, "new");
  EXPECT_THAT(xml(), HasSubstr("<a:tc><a:txBody><a:bodyPr/><a:lstStyle/><a:p><a:r><a:t>new</a:t></a:r></a:p>"
                               "</a:txBody><a:tcPr/></a:tc>"));
  table->Text(2, 3, "4");
  EXPECT_THAT(xml(), HasSubstr("<a:r><a:rPr sz=\"800\"/><a:t>4</a:t></a:r>"));
  EXPECT_EQ(changes.shapes.size(), 3U);
  table->Text(2, 3, "4");
  table->Text(3, 2, "Rome");
  table->Text(3, 1, "covered");
  table->Text(3, 3, "not there");
  EXPECT_EQ(changes.shapes.size(), 3U) << "what changes nothing is told to nobody";
}

TEST_F(TableTest, TheAuthorsCellsComeBackByteForByte) {
  const support::TemporaryFolder folder;
  const auto saved = [&] {
    deck->SaveCopyAs((folder.path() / "copy.pptx").string());
    return folder.read("copy.pptx");
  };
  const std::string original = saved();
  const std::string before = xml();
  table->Restore();
  EXPECT_TRUE(changes.shapes.empty());
  for (const char* text : {" ", "1\r2\v3", "x"}) {
    for (std::int32_t row = 1; row <= 3; ++row) {
      for (std::int32_t column = 1; column <= 3; ++column) table->Text(row, column, text);
    }
  }
  EXPECT_NE(xml(), before);
  EXPECT_NE(saved(), original);
  // Whoever asks for the table anew restores the same.
  deck->Slides()->Item(1)->Shapes()->Item("Table")->Table()->Restore();
  EXPECT_EQ(xml(), before);
  table->Text(2, 1, "again");
  table->Restore();
  EXPECT_EQ(xml(), before);
  EXPECT_EQ(saved(), original);
}

}  // namespace
}  // namespace deck::test
