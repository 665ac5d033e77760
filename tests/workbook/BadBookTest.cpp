// Files that are no workbooks, or broken ones, are refused with the reason.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>

#include "workbook/Reading.h"
#include "workbook/sheet/Describe.h"

namespace workbook::test {
namespace {

using support::compoundFile;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* Book = "xl/workbook.xml";
constexpr const char* Sheet = "xl/worksheets/sheet1.xml";

std::string bookWith(const std::string& part, const std::string& content) {
  BookBuilder book;
  book.rows = R"(<row><c t="s"><v>0</v></c></row>)";
  book.strings = "<si><t>fine</t></si>";
  book.parts = {{part, content}};
  return book.bytes();
}

std::string sheetWith(const std::string& rows) {
  return bookWith(Sheet, "<worksheet><sheetData>" + rows + "</sheetData></worksheet>");
}

std::string presentation() {
  return support::zipOf(
      {{"_rels/.rels", R"(<R><R Id="1" Type="x/officeDocument" Target="ppt/presentation.xml"/></R>)"},
       {"ppt/presentation.xml", "<p:presentation/>"}});
}

TEST(BadBook, IsRefusedWithTheReason) {
  const std::string blanks(std::size_t{70} << 20U, ' ');
  std::string deep;
  for (int i = 0; i < 2'000'000; ++i) deep += "<a>";
  const std::pair<std::string, const char*> cases[] = {
      {"", "cannot be opened: it is empty"},
      {"Name;Price\n", "cannot be opened: it is no workbook of the formats xlsx, xlsm"},
      {compoundFile("EncryptedPackage"), "it is encrypted. Remove its password and save it again."},
      {compoundFile("Workbook"), "it is in the binary format of Excel 97 to 2003"},
      {compoundFile("WordDocument"), "it is no workbook"},
      {support::zipOf({{"readme.txt", "hello"}}), "it is a ZIP archive, but no workbook"},
      {presentation(), "it is a presentation, no workbook"},
      {support::zipOf({{"mimetype", "x", false}}), "it is an OpenDocument file"},
      {bookWith("a", std::string(5000, 'a')).substr(0, 700), "its ZIP archive is damaged or not complete"},

      {bookWith(Book, "<workbook>\n<sheets></workbook>"),
       "part 'xl/workbook.xml' is no proper XML in line 2"},
      {bookWith(Book, "<!DOCTYPE a [<!ENTITY b 'c'>]><workbook/>"),
       "part 'xl/workbook.xml' is no proper XML in line 1, column 1: a workbook may have no document type"},
      {bookWith(Sheet, "<!DOCTYPE a><worksheet><sheetData/></worksheet>"),
       "a workbook may have no document type declaration"},
      {bookWith(Book, R"(<workbook><sheets><sheet name="Ä1"/></sheets></workbook>)"),
       "has no sheet named 'Sheet1'. Its worksheets: 'Ä1'"},
      {bookWith(Book,
                R"(<workbook><sheets><sheet name="sheet1"/><sheet name="SHEET1"/></sheets></workbook>)"),
       "has several sheets named 'Sheet1'"},
      {bookWith(Book, R"(<workbook><sheets><sheet name="Sheet1"/></sheets></workbook>)"),
       "does not say where its sheet 'Sheet1' is"},
      {bookWith("xl/_rels/workbook.xml.rels",
                R"(<R><R Id="rId1" Type="/worksheet" Target="../no.xml"/></R>)"),
       "part 'no.xml' is missing"},
      {bookWith(Sheet, "<worksheet>\n</worksheet>"), "line 2, column 13: there is no element sheetData"},
      {bookWith(Sheet, "<worksheet><sheetData>\n<row><c/></row>\n<row><c>"),
       "part 'xl/worksheets/sheet1.xml' is no proper XML in line 3, column 9: the part ends in the middle"},
      {sheetWith("<row><c></row></c>"), "no proper XML in line 1"},
      {sheetWith("<row><c t='str'><v>\xE4</v></c></row>"), "is not all UTF-8"},
      {sheetWith(std::string("<row>\0</row>", 12)), "column 28: a NUL character"},
      {sheetWith("<row><c t='str'><v>&amp;&#x1F600;&#xD800;</v></c></row>"),
       "column 56: a reference to no character"},
      {bookWith("xl/styles.xml", "<styleSheet a='\xE4'/>"), "is not all UTF-8"},
      {bookWith(Sheet, "\xFF\xFE<\0"), "it is in UTF-16, not in UTF-8"},
      {sheetWith(R"(<row r="1"/><row r="1"/>)"), "has a row '1' after row 1"},
      {sheetWith(R"(<row r="1048577"/>)"), "has a row '1048577' after row 0"},
      {sheetWith(R"(<row><c r="XFE1"/></row>)"), "has a cell 'XFE1' in row 1"},
      {bookWith("xl/sharedStrings.xml", "<sst>\n<si><t></si></sst>"),
       "part 'xl/sharedStrings.xml' is no proper XML in line 2"},
      {bookWith("xl/styles.xml", "<styleSheet>"), "part 'xl/styles.xml' is no proper XML"},
      // Made to be huge, or nested so deep that recursion over them would not end well.
      {bookWith(Book, "<workbook>" + blanks), "has more than 64 MB"},
      {bookWith(Sheet, "<worksheet>" + blanks), "has more than 4 MB before its data"},
      {sheetWith("<row>" + blanks), "has an element of more than 64 MB"},
      {sheetWith("<row>" + deep), "no proper XML"}};
  const TemporaryFolder folder;
  for (const auto& [bytes, error] : cases) {
    const std::string path = folder.write("book.xlsx", bytes);
    EXPECT_THAT(errorOf([&] { Desk().texts(path, "Sheet1", "A1:B2"); }),
                AllOf(StartsWith("workbook '" + path + "'"), HasSubstr(error)));
  }
}

TEST(BadBook, OrNoneAtAll) {
  const TemporaryFolder folder;
  const std::string path = folder.path().string();
  EXPECT_EQ(errorOf([&] { Desk().open(path + "/none.xlsx"); }),
            "workbook '" + path + "/none.xlsx' cannot be opened: there is no such file");
  EXPECT_EQ(errorOf([&] { Desk().open(path); }), "workbook '" + path + "' cannot be opened: it is a folder");
  IdleLoop loop;
  EXPECT_THAT(errorOf([&] { describe(path + "/none.xlsx", loop); }), HasSubstr("there is no such file"));
}

TEST(BookThatIsBeingSaved, IsReadWhenItIsThere) {
  const std::string bytes = oneNumber().bytes();
  for (const std::size_t half : {std::size_t{0}, bytes.size() / 2}) {
    const TemporaryFolder folder;
    const std::string path = folder.write("book.xlsx", bytes.substr(0, half));
    Desk desk;
    desk.loop.onEvents = [&] {
      if (desk.loop.events == 3) static_cast<void>(folder.write("book.xlsx", bytes));
    };
    EXPECT_EQ(desk.texts(path, "Sheet1", "A1"), "1");
    EXPECT_GE(desk.loop.events, 3);

    // Where it was opened it stays readable: saved in place, just begun.
    const auto opened = desk.open(path);
    static_cast<void>(folder.write("book.xlsx", "PK"));
    EXPECT_EQ(Desk::textsOf(*opened->Sheets()->Item(1)->Range("A1")), "1");
  }
}

TEST(BookThatIsOpenElsewhere, OpensAllTheSame) {
  const TemporaryFolder folder;
  const std::string path = folder.write("book.xlsx", oneNumber().bytes());
  const int other = ::open(path.c_str(), O_RDWR);
  ASSERT_EQ(::flock(other, LOCK_EX), 0);
  struct flock all {};
  all.l_type = F_WRLCK;
  ASSERT_EQ(::fcntl(other, F_OFD_SETLK, &all), 0);
  EXPECT_EQ(Desk().texts(path, "Sheet1", "A1"), "1");
  ::close(other);
}

}  // namespace
}  // namespace workbook::test
