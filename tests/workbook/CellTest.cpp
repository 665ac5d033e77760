// What a cell shows, by what the file says of it.

#include <gtest/gtest.h>

#include "workbook/Reading.h"

namespace workbook::test {
namespace {

struct Case {
  const char* cells;  // of row 1
  const char* texts;
};

/// A book whose styles and shared strings the cells below use.
BookBuilder styled() {
  BookBuilder book;
  book.formats =
      R"(<numFmt numFmtId="164" formatCode="0.00&quot; kg&quot;"/><numFmt numFmtId="165" formatCode="&quot;never closed"/>)"
      R"(<numFmt numFmtId="166" formatCode=";;;"/><numFmt numFmtId="167" formatCode="0;-0;0;&quot;[&quot;@&quot;]&quot;"/>)"
      R"(<numFmt numFmtId="168" formatCode="yyyy\-mm\-dd\ hh:mm:ss"/>)";
  book.styles =
      R"(<xf numFmtId="0"/><xf numFmtId="164"/><xf numFmtId="165"/><xf numFmtId="166"/><xf numFmtId="167"/>)"
      R"(<xf numFmtId="168"/><xf numFmtId="99"/><xf numFmtId="10"/>)";
  book.strings =
      R"(<si><t>plain</t></si><si><r><t xml:space="preserve">rich </t></r><r><rPr><b/></rPr><t>text</t></r></si>)"
      R"(<si><t>東京</t><rPh sb="0" eb="2"><t>トウキョウ</t></rPh><phoneticPr fontId="1"/></si>)"
      R"(<si><t> trimmed </t></si><si><t xml:space="preserve"> kept </t></si><si><t xml:space="preserve"> </t></si>)"
      R"(<si/><si><t>a_x000D_b_x005F_x000D_c_xZZZZ__xD83D__xDE00__xD83D_</t></si>)"
      R"(<si><t>p<!-- </si> -->q<![CDATA[<r>&amp;</si>]]></t></si>)";
  return book;
}

void expectShown(const std::vector<Case>& cases) {
  BookBuilder book = styled();
  for (const Case& c : cases) {
    book.rows = "<row r=\"1\">" + std::string(c.cells) + "</row>";
    EXPECT_EQ(textsOf(book, "A1:C1"), c.texts);
  }
}

TEST(CellText, IsOfTheSharedStrings) {
  expectShown({
      {R"(<c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c><c r="C1" t="s"><v>2</v></c>)",
       "plain|rich text|東京"},
      {R"(<c r="A1" t="s"><v>3</v></c><c r="B1" t="s"><v>4</v></c><c r="C1" t="s"><v>5</v></c>)",
       "trimmed| kept | "},
      {R"(<c r="A1" t="s"><v>6</v></c><c r="B1" t="s"><v>7</v></c><c r="C1" t="s"><v>8</v></c>)",
       "|a\rb_x000D_c_xZZZZ_\U0001F600\uFFFD|pq<r>&amp;</si>"},
      // Beyond the texts there are, or no number: a display goes on.
      {R"(<c r="A1" t="s"><v>9</v></c><c r="B1" t="s"><v>-1</v></c><c r="C1" t="s"><v>0</v></c>)", "||plain"},
  });
}

TEST(CellText, IsThatOfItsValue) {
  expectShown({
      {R"(<c r="A1"><v>1.5</v></c><c r="B1" t="n"><v>-2E-3</v></c><c r="C1" t="b"><v>1</v></c>)",
       "1.5|-0.002|TRUE"},
      {R"(<c r="A1" t="e"><v>#N/A</v></c><c r="B1" t="str"><v> s_x000D_&amp; </v></c><c r="C1" t="inlineStr"><is><r><t>in</t></r><r><t>line</t></r></is></c>)",
       "#N/A| s\r& |inline"},
      // Formulas: the last result counts; never calculated, they show nothing.
      {R"(<c r="A1"><f>1+1</f><v>2</v></c><c r="B1"><f>NOW()</f></c><c r="C1"><f>NOW()</f><v></v></c>)",
       "2||"},
      {R"(<c r="A1"><v>word</v></c><c r="B1"><v>inf</v></c><c r="C1"><v>1e999</v></c>)", "word|inf|1e999"},
      // Places: none given, in any order, twice.
      {R"(<c><v>1</v></c><c r="C1"><v>3</v></c><c r="B1"><v>2</v></c><c><v>4</v></c>)", "1|2|4"},
  });
}

TEST(CellText, FollowsItsFormat) {
  expectShown({
      {R"(<c r="A1" s="1"><v>2.5</v></c><c r="B1" s="2"><v>7</v></c><c r="C1" s="3"><v>7</v></c>)",
       "2.50 kg|never closed|"},
      {R"(<c r="A1" s="4" t="str"><v>x</v></c><c r="B1" s="6"><v>7</v></c><c r="C1" s="999"><v>7</v></c>)",
       "[x]|7|7"},
      {R"(<c r="A1" s="5" t="d"><v>2026-02-03T20:30:45.250Z</v></c><c r="B1" s="5" t="d"><v>1900-01-02</v></c><c r="C1" t="d"><v>12:00</v></c>)",
       "2026-02-03 20:30:45|1900-01-02 00:00:00|0.5"},
      {R"(<c r="A1" s="5"><v>1e9</v></c><c r="B1" s="5" t="d"><v>2026-02-30</v></c><c r="C1" s="7"><v>0.5</v></c>)",
       "#####|2026-02-30|50.00%"},
  });
}

TEST(CellText, CountsDaysFrom1904) {
  BookBuilder book;
  book.from1904 = true;
  book.styles = R"(<xf numFmtId="0"/><xf numFmtId="21"/><xf numFmtId="15"/>)";
  book.rows =
      R"(<row><c s="2"><v>0</v></c><c s="2" t="d"><v>2026-02-03</v></c><c t="d"><v>1904-01-02</v></c><c s="1"><v>0.5</v></c></row>)";
  EXPECT_EQ(textsOf(book, "A1:D1"), "1-Jan-04|3-Feb-26|1|12:00:00");
}

TEST(CellText, CanBeAsLongAsCellsHold) {
  const auto repeated = [](std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += "ü";
    return text;
  };
  BookBuilder book;
  book.strings = "<si><t>" + repeated(32767) + "</t></si><si><t>" + repeated(40000) + "</t></si>";
  book.rows = R"(<row><c t="s"><v>0</v></c></row><row><c t="s"><v>1</v></c></row>)";
  EXPECT_EQ(textsOf(book, "A1"), repeated(32767));
  EXPECT_EQ(textsOf(book, "A2"), repeated(32767));
}

TEST(CellText, IsFoundUnderAnyPrefixOfNames) {
  BookBuilder book;
  book.parts = {
      {"xl/workbook.xml",
       R"(<x:workbook xmlns:x="http://purl.oclc.org/ooxml/spreadsheetml/main"><x:sheets><x:sheet name="Sheet1" sheetId="1" d:id="rId1"/></x:sheets></x:workbook>)"},
      {"xl/worksheets/sheet1.xml",
       "\xEF\xBB\xBF<?xml version=\"1.0\"?><!-- <x:sheetData> --><x:worksheet a='>'>\r\n<x:sheetData>\r\n"
       "<x:row r=\"1\">\r\n<x:c t=\"s\">\r\n<x:v>1</x:v>\r\n</x:c>"
       "<x:c t=\"inlineStr\"><x:is><x:t>here</x:t></x:is></x:c></x:row>\r\n</x:sheetData></x:worksheet>"},
      {"xl/sharedStrings.xml", "<x:sst><x:si><x:t>0</x:t></x:si><x:si><x:t>one</x:t></x:si></x:sst>"}};
  EXPECT_EQ(textsOf(book, "A1:B1"), "one|here");
}

TEST(CellNumberFormat, IsTheCodeOfTheStyle) {
  BookBuilder book;
  book.formats = R"(<numFmt numFmtId="164" formatCode="0.0"/>)";
  book.styles = R"(<xf numFmtId="0"/><xf numFmtId="164"/><xf numFmtId="3"/>)";
  book.rows = R"(<row><c><v>1</v></c><c s="1"><v>1</v></c><c s="2"/></row>)";
  const TemporaryFolder folder;
  std::string codes;
  Desk desk;
  const auto opened = desk.open(folder.write("book.xlsx", book.bytes()));
  opened->Sheets()->Item(1)->Range("A1:D1")->ForEach([&](const Excel::Cell& cell) {
    codes += cell.NumberFormat() + "|";
    return true;
  });
  EXPECT_EQ(codes, "General|0.0|#,##0|General|");
}

}  // namespace
}  // namespace workbook::test
