// Cells drawn as a picture: which ones, and what their styles make of them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "basic/Error.h"
#include "support/BookBuilder.h"
#include "workbook/Reading.h"
#include "workbook/drawing/RangeDrawing.h"

namespace workbook::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class Drawing : public ::testing::Test {
 protected:
  std::string draw(const BookBuilder& book, std::string_view item) {
    return drawRange(folder_.write("book.xlsx", book.bytes()), item, loop_);
  }

 private:
  TemporaryFolder folder_;
  IdleLoop loop_;
};

BookBuilder numbered() {
  BookBuilder book;
  book.rows =
      R"(<row r="1"><c r="A1"><v>11</v></c><c r="B1"><v>12</v></c></row><row r="2"><c r="A2"><v>21</v></c></row>)"
      R"(<row r="4"><c r="C4"><v>43</v></c></row>)";
  book.names = R"(<definedName name="Corner">Sheet1!$A$2</definedName>)";
  return book;
}

TEST_F(Drawing, ItemsAreFoundAsLinksNameThem) {
  const struct {
    const char* item;
    const char* size;
    const char* text;
  } cases[] = {{"", R"(width="192" height="80")", ">43<"},
               {"Sheet1", R"(width="192" height="80")", ">43<"},
               {"Sheet1!R1C1:R2C2", R"(width="128" height="40")", ">12<"},
               {"'sheet1'!R2C1", R"(width="64" height="20")", ">21<"},
               {"Sheet1!r2c2:r1c1", R"(width="128" height="40")", ">12<"},
               {"Sheet1!B1", R"(width="64" height="20")", ">12<"},
               {"Sheet1!A:B", R"(width="128" height="80")", ">21<"},
               {"Corner", R"(width="64" height="20")", ">21<"},
               {"Sheet1!Corner", R"(width="64" height="20")", ">21<"}};
  for (const auto& each : cases) {
    EXPECT_THAT(draw(numbered(), each.item), AllOf(HasSubstr(each.size), HasSubstr(each.text))) << each.item;
  }
  for (const char* item : {"Sheet2!R1C1", "Sheet1!R0C1", "Sheet1!R1C1:", "Nothing", "Sheet1!R1C99999"}) {
    EXPECT_THROW(draw(numbered(), item), basic::Error) << item;
  }
}

TEST_F(Drawing, StylesAndMeasuresAreThoseOfTheSheet) {
  BookBuilder book;
  book.formats = R"(<numFmt numFmtId="170" formatCode="0.0;[Red]-0.0"/>)";
  book.parts.push_back(
      {"xl/styles.xml",
       R"(<styleSheet><numFmts><numFmt numFmtId="170" formatCode="0.0;[Red]-0.0"/></numFmts>)"
       R"(<fonts><font><name val="Times &lt;&quot;'"/><sz val="9"/></font><font><b/><i val="0"/><sz val="1e9"/><color theme="4" tint="-0.5"/></font></fonts>)"
       R"(<fills><fill/><fill><patternFill patternType="solid"><fgColor rgb="FF00FF7F"/></patternFill></fill></fills>)"
       R"(<borders><border/><border><bottom style="double"><color indexed="10"/></bottom></border></borders>)"
       R"(<cellXfs><xf fontId="0"/><xf numFmtId="170" fontId="1" fillId="1" borderId="1"/><xf fontId="77" fillId="77" borderId="77"><alignment wrapText="1"/></xf></cellXfs></styleSheet>)"});
  book.parts.push_back(
      {"xl/worksheets/sheet1.xml",
       R"(<worksheet><sheetViews><sheetView showGridLines="0"/></sheetViews><cols><col min="2" max="2" width="20"/><col min="3" max="3" hidden="1"/></cols>)"
       R"(<sheetData><row r="1" ht="30"><c r="A1" t="inlineStr"><is><t>&lt;merged&gt; &amp;</t></is></c></row><row r="2"><c r="A2" s="1"><v>-1.25</v></c>)"
       R"(<c r="B2" s="2" t="inlineStr"><is><t>broken into lines</t></is></c><c r="C2"><v>333</v></c><c r="D2" s="1"><v>123456789012</v></c></row></sheetData>)"
       R"(<mergeCells><mergeCell ref="A1:B1"/><mergeCell ref="nonsense"/></mergeCells></worksheet>)"});
  const std::string svg = draw(book, "Sheet1!R1C1:R2C4");
  for (const char* part : {R"(<svg xmlns="http://www.w3.org/2000/svg" width="268" height="60")",
                           R"(<svg x="0" y="0" width="204" height="40">)",  // merged over A1:B1
                           "&lt;merged&gt; &amp;", R"(font-size:12px;font-family:'Times &lt;&quot;',Carlito)",
                           R"(fill="#00ff7f")", R"(stroke="#ff0000")",
                           R"(fill="#ff0000" style="font-weight:bold)", ">-1.3<",  // the format's red
                           "<foreignObject x=\"64\"", ">####"}) {  // a number wider than its column
    EXPECT_THAT(svg, HasSubstr(part));
  }
  EXPECT_THAT(svg, AllOf(Not(HasSubstr(">333<")), Not(HasSubstr("#d4d4d4")))) << "a hidden column, a grid";
}

}  // namespace
}  // namespace workbook::test
