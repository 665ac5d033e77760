#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/ErrorOf.h"
#include "textfile/ReadTextFile.h"

using namespace std::string_literals;

namespace LF2000 {
namespace {

struct Case {
  const char* name;
  std::string text;
  std::string table;  // as Written has it
};

std::string Read(std::string_view text, bool names = false) {
  return Written(ReadTextFile(BytesOf(text), names, [](std::string_view) {}));
}

/// Each text is read, with its first line for the names of the columns unless `names` says otherwise.
void ExpectRead(const std::vector<Case>& cases, bool names = true) {
  for (const Case& each : cases) EXPECT_EQ(Read(each.text, names), each.table) << each.name;
}

TEST(TextFileLines, ReadAs) {
  ExpectRead({{"line feed", "A\tB\n1\t2\n3\t4\n", "A|B/1|2/3|4"},
              {"carriage return", "A\tB\r1\t2\r3\t4\r", "A|B/1|2/3|4"},
              {"both", "A\tB\r\n1\t2\r\n3\t4\r\n", "A|B/1|2/3|4"},
              {"mixed", "A\tB\r1\t2\n3\t4\r\n5\t6", "A|B/1|2/3|4/5|6"},
              {"no end at the end", "A\tB\n1\t2", "A|B/1|2"},
              {"empty lines are no records", "\n\r\nA\tB\n\n\n1\t2\r\r\n\n", "A|B/1|2"},
              {"names only", "A\tB\n", "A|B"},
              {"empty fields", "A\tB\tC\n\t\t\n\t2\t\n", "A|B|C/||/|2|"},
              {"short line", "A\tB\tC\n1\n1\t2\n", "A|B|C/1|~|~/1|2|~"},
              {"long line", "A\tB\n1\t2\t3\t4\n5\t6\n", "A|B/1|2/5|6"},
              {"blanks and controls are kept", "A\tB\n 1 \t\0\x01\x7F\n"s, "A|B/ 1 |\0\x01\x7F"s}});
}

TEST(TextFileColumns, ReadAs) {
  ExpectRead({{"are numbered from one", "x,y,z\n", "Column1|Column2|Column3/x|y|z"},
              {"have no titles above", "Departures\nTime;To\n8:00;Calder\n",
               "Column1/Departures/Time;To/8:00;Calder"},
              {"of an empty file", "", "Column1"},
              {"of empty lines", "\r\n\n", "Column1"},
              {"of a mark alone", "\xEF\xBB\xBF", "Column1"}},
             false);
}

TEST(TextFileDelimiter, ReadAs) {
  ExpectRead(
      {{"semicolon", "A;B\n1,5;2,5\n", "A|B/1,5|2,5"},
       {"comma", "A,B\n1,2\n", "A|B/1|2"},
       {"bar", "A|B\n1|2\n", "A|B/1|2"},
       {"tab before comma", "A,B\tC\n1,2\t3\n", "A,B|C/1,2|3"},
       {"comma when semicolons are uneven", "A,B\n1;2,3\n4,5;\n", "A|B/1;2|3/4|5;"},
       {"one column", "Name\nPort Calder\nOulu\n", "Name/Port Calder/Oulu"},
       {"commas of prose", "Notice\nGate closed, sorry\nDelayed\n", "Notice/Gate closed, sorry/Delayed"},
       {"quoted delimiters do not count", "A,B\n\"x,y\",1\n\"x;y\",\"2,3\"\n", "A|B/x,y|1/x;y|2,3"},
       {"short line keeps it", "A;B;C\n1\n1;2\n4;5;6\n", "A|B|C/1|~|~/1|2|~/4|5|6"}});
}

TEST(TextFileExports, ReadAs) {
  ExpectRead({{"delimiter behind the names", "A;B;C;\n1,5;2;3;\n4,5;5;6;\n", "A|B|C/1,5|2|3/4,5|5|6"},
              {"delimiter behind the names alone", "A;B;;\n1,5;2\n4,5;5\n", "A|B/1,5|2/4,5|5"},
              {"delimiter behind the rows alone", "A;B,C\n1,5;2;\n4,5;;\n", "A|B,C/1,5|2/4,5|"},
              {"quoted nothing behind the names", "\"A\";\"B\";\"\"\n\"1\";\"2\";\"\"\n", "A|B/1|2"},
              {"declared delimiter", "sep=;\nA,a;B\n1,5;2\n", "A,a|B/1,5|2"},
              {"declared quoted in capitals", "\xEF\xBB\xBF\"SEP=^\"\r\nA^B\r\n1^2\r\n", "A|B/1|2"},
              {"declared alone is a column", "sep=\nx\n", "sep=/x"},
              {"declared with titles", "sep=,\nPrices\nA,B\n1;2,3\n", "A|B/1;2|3"},
              {"marks in the midst",
               "\xEF\xBB\xBF\xEF\xBB\xBF"
               "A;B\n1;2\n\xEF\xBB\xBF\"3\";4\n5;\xEF\xBB\xBF",
               "A|B/1|2/3|4/5|"},
              {"mark before Windows-1252", "A\n\xEF\xBB\xBF\xE4\n", "A/ä"},
              {"marks of UTF-16",
               "\xFF\xFE"
               "A\0\n\0\xFF\xFE"
               "b\0"s,
               "A/b"},
              {"blank lines", "  \nA;B\n \t \n1;2\n\t\n;\n3;4\n   ", "A|B/1|2/|/3|4"},
              {"blank lines of one column", "A\n  \nx\n", "A/  /x"},
              {"tabs are no blanks where they split", "A\tB\n\t\n1\t2\n", "A|B/|/1|2"}});
}

TEST(TextFileTitles, ReadAs) {
  ExpectRead(
      {{"are passed over",
        "Departures, today\nAs of: 04:15\n\nTime;Train;To\n08:00;IC 1;Calder\n9:00;IC 2;Oulu\n",
        "Time|Train|To/08:00|IC 1|Calder/9:00|IC 2|Oulu"},
       {"filled up with delimiters", "Prices;;\nAs of:;May;\nItem;Size;Price\nRye;1;4,80\nTart;;3,20\n",
        "Item|Size|Price/Rye|1|4,80/Tart||3,20"},
       {"without rows", "Departures, today\nTime;Train;To\n", "Time|Train|To"},
       {"with one row", "Departures\nTime\tTo\n8:00\tCalder\n", "Time|To/8:00|Calder"},
       {"with decimal commas", "Prices, May\nItem;Price\nRye;4,80\nTart;3,20\n",
        "Item|Price/Rye|4,80/Tart|3,20"},
       {"over uneven rows", "Departures\nTime;Train;To\n8;IC\n9;IC;Oulu\n9;IC;Calder;late\n9;IC;Oulu\n",
        "Time|Train|To/8|IC|~/9|IC|Oulu/9|IC|Calder/9|IC|Oulu"},
       {"are not a row of numbers", "Name\n1;2\n3;4\n", "Name/1;2/3;4"},
       {"are not what is half as wide", "A;B;C\nx;y;z;u\nv;w;x;y\n", "A|B|C/x|y|z/v|w|x"},
       {"are not a header of doubled names", "Name\nx;x\ny;z\n", "Name/x;x/y;z"},
       {"are not found in prose", "Notice\nClosed, sorry\nLate, too\n", "Notice/Closed, sorry/Late, too"},
       {"are not found above two words", "Notice\nred;white\n", "Notice/red;white"}});
}

TEST(TextFileDialect, IsThatOfTheFirstTwentyRecords) {
  std::string text = "A,B\n";
  for (int i = 0; i < 19; ++i) text += "1,2\n";
  EXPECT_EQ(Read(text + "3;4;5\n", true).substr(0, 8), "A|B/1|2/");
}

TEST(TextFileQuotes, ReadAs) {
  ExpectRead({{"plain", "A,B\n\"1\",\"2\"\n", "A|B/1|2"},
              {"doubled", "A,B\n\"a\"\"b\"\"\",\"\"\"\"\n", "A|B/a\"b\"|\""},
              {"empty", "A,B\n\"\",\"\"\n", "A|B/|"},
              {"alone on a line", "A\n\"\"\nx\n", "A//x"},
              {"hold delimiters and line ends", "A,B\n\"1,2\",\"3\r\n\n4\"\n5,6\n", "A|B/1,2|3\r\n\n4/5|6"},
              {"in an unquoted field", "A,B\n5\" pipe,a\"\"b\n", "A|B/5\" pipe|a\"\"b"},
              {"text behind is appended", "A,B\n\"a\"\"b\"cd,\"x\" \"y\"\n", "A|B/a\"bcd|x \"y\""},
              {"never closed", "A,B\n\"1,2\n3,4\n", "A|B/\"1|2/3|4"},
              {"never closed at the end", "A,B\n1,\"", "A|B/1|\""},
              {"never closed doubled", "A,B\n\"\"\"1,2\n\"\",\"\"\"\"\n", "A|B/\"\"\"1|2/|\""},
              {"closed at the end", "A,B\n1,\"2\"", "A|B/1|2"},
              {"in names", "\"First, name\",\"Size \"\"mm\"\"\"\n1,2\n", "First, name|Size \"mm\"/1|2"}});
}

TEST(TextFileEncoding, ReadAs) {
  ExpectRead({{"UTF-8", "Größe\n€ 😀\n", "Größe/€ 😀"},
              {"UTF-8, marked",
               "\xEF\xBB\xBF"
               "A\n\xC3\xA4\n",
               "A/ä"},
              {"UTF-8, marked then malformed",
               "\xEF\xBB\xBF"
               "A\n\xC3\xA4\xE4\xE2\x82\n\xFF\n",
               "A/ä���/�"},
              {"Windows-1252",
               "Gr\xF6\xDF"
               "e\n\x80\x92\xFF\n",
               "Größe/€’ÿ"},
              {"Windows-1252, undefined", "A\n\x81\x8D\x8F\x90\x9D\n", "A/\u0081\u008D\u008F\u0090\u009D"},
              {"overlong is Windows-1252", "A\n\xC0\x80\n", "A/À€"},
              {"UTF-16, little endian",
               "\xFF\xFE"
               "A\0\n\0\xAC\x20\x3D\xD8\x00\xDE"s,
               "A/€😀"},
              {"UTF-16, big endian", "\xFE\xFF\0A\0\n\x20\xAC\xD8\x3D\xDE\x00\0\x22"s, "A/€😀\""},
              {"UTF-16, lone surrogates", "\xFE\xFF\0A\0\n\xDE\x00\xD8\x3D\0x\xD8\x3D"s, "A/��x�"},
              {"UTF-16, half a unit",
               "\xFF\xFE"
               "A\0\n\0b\0c"s,
               "A/b�"}});
}

std::string ErrorOf(std::string_view text) {
  return support::errorOf([&] { (void)Read(text, true); });
}

TEST(TextFileNames, ThatDoNotNameAColumnAreErrors) {
  EXPECT_EQ(ErrorOf("Gate\tTime\tGATE\n1\t2\t3\n"),
            "Duplicated column name 'GATE' detected: columns 1 and 3 of the first line.");
  EXPECT_EQ(ErrorOf("Gate;;Time\n1;2;3\n"),
            "The first line holds the column names, but the name of column 2 is empty.");
  EXPECT_EQ(ErrorOf("\r\n"), "The file is empty: it has no first line with the column names.");
  const std::string tooMany(40000, ',');
  EXPECT_THROW((void)Read(tooMany), basic::Error);
}

TEST(TextFileValues, AreCutToFourThousandCharacters) {
  const std::string ascii(4000, 'x');
  // The long field crosses the limit of short offsets in each place of the row.
  const std::string longer(70000, 'x');
  EXPECT_EQ(Read("A,B,C\n" + longer + ",2,3\n1,2,3\n1," + longer + ",3\n1,2," + longer + "\n1,2,3\n", true),
            "A|B|C/" + ascii + "|2|3/1|2|3/1|" + ascii + "|3/1|2|" + ascii + "/1|2|3");
  std::string umlauts;
  for (int i = 0; i < 4000; ++i) umlauts += "ä";
  EXPECT_EQ(Read("A,B\n" + ascii + "y,z\n1,2\n", true), "A|B/" + ascii + "|z/1|2");
  EXPECT_EQ(Read("A,B\n1," + umlauts + "ö\n", true), "A|B/1|" + umlauts);
  EXPECT_EQ(Read("A,B\n\"" + umlauts + "\",\"" + ascii + "\"\"\"\n", true), "A|B/" + umlauts + "|" + ascii);
}

std::string Reported(std::string_view text) {
  std::string reports;
  (void)ReadTextFile(BytesOf(text), true, [&](std::string_view report) { reports += report; });
  return reports;
}

TEST(TextFileReports, TellWhereTheNamesAreAndWhatIsUnlikely) {
  EXPECT_EQ(Reported("Departures\r\n\r\nTime;To\r\n8:00;Calder\r\n"),
            "The column names are on line 3; what stands above them is passed over as titles.");
  EXPECT_EQ(Reported("Time,Train,To\n8:00;IC;Oulu\n9:00;IC;Calder\n9:30;IC;Oulu\n"),
            "The first line has one column, but the lines below have 3, separated by ';': the first line is "
            "separated by something else, or is no header.");
  EXPECT_EQ(Reported("Notice\nClosed, sorry\nLate, too\n"), "");
  EXPECT_EQ(Reported("A;B;\n1;2;\n3;4;\"\"\n"), "");
}

TEST(TextFileDroppedFields, AreReportedOnce) {
  const auto reported = Reported;
  EXPECT_EQ(reported("A,B\n1,2\n3\n"), "");
  EXPECT_EQ(reported("A,B\n\n\"1\r\n\r\n\",2\r\n3,4,5\n6,7\n8,9,10,11\n"),
            "3 fields beyond the 2 columns were dropped, the first of them on line 6.");
  const std::string lines(5000, '\n');
  EXPECT_EQ(reported("A,B\n\"" + lines + "\",2\n\"" + lines + "\",4,5\n"),
            "1 field beyond the 2 columns was dropped, on line 5003.");
}

TEST(TextFileReader, RefusesWhatIsPlainlySomethingElse) {
  using namespace std::string_view_literals;
  const std::pair<std::string_view, const char*> files[] = {
      {"<!DOCTYPE html><html>"sv, "web page"},
      {"\xEF\xBB\xBF\r\n <Html lang='en'>\n502;Bad Gateway\n"sv, "web page"},
      {"<?xml version=\"1.0\"?><Error/>"sv, "XML"},
      {"PK\x03\x04\x14\0\0\0"sv, "ZIP"},
      {"\x89PNG\r\n\x1A\n\0\0\0\rIHDR"sv, "PNG"},
      {"\xFF\xD8\xFF\xE0\0\x10JFIF"sv, "JPEG"},
      {"%PDF-1.7\n"sv, "PDF"},
  };
  for (const auto& [bytes, name] : files) {
    EXPECT_NE(ErrorOf(bytes).find(name), std::string::npos) << name << ": " << ErrorOf(bytes);
  }
  for (const char* text : {"<b>Gate;Time\n1;2\n", "PK;Name\n1;2\n", "html;xml\n<html>;<?xml\n"}) {
    EXPECT_EQ(ReadTextFile(BytesOf(text), true, {}).rowCount(), 1U) << text;
  }

  // As is a second line of names.
  EXPECT_EQ(ErrorOf("Gate;Time\n\"Gate\";Time\n1;2\n"),
            "The line of the column names stands twice, one below the other.");
  for (const char* text : {"Gate\nGate\n", "Gate;Time\nGate;time\n", "Gate;Time\nGate\n"}) {
    EXPECT_EQ(ReadTextFile(BytesOf(text), true, {}).rowCount(), 1U) << text;
  }
  EXPECT_EQ(ReadTextFile(BytesOf("a;b\na;b\n"), false, {}).rowCount(), 2U);
}

TEST(TextFileReader, FindsEveryFieldOfManyBlocks) {
  std::string text = "A\tB\tC\n";
  for (int row = 0; row < 200000; ++row) {
    text += std::to_string(row);
    if (row % 3 != 0) text += '\t' + std::to_string(row * 7);
    text += row % 5 == 0 ? "\r\n" : "\n";
  }
  const host::TextTable table = ReadTextFile(BytesOf(text), true, [](std::string_view) {});
  ASSERT_EQ(table.rowCount(), 200000U);
  for (std::size_t row = 0; row < table.rowCount(); ++row) {
    ASSERT_EQ(table.field(row, 0), std::to_string(row));
    ASSERT_EQ(table.field(row, 1).value_or("~"), row % 3 == 0 ? "~" : std::to_string(row * 7));
    ASSERT_FALSE(table.field(row, 2).has_value());
  }
}

TEST(TextFileReader, EndsInTimeOnFilesOfQuotes) {
  // Each of these would take minutes if a search for a closing quote were repeated.
  const std::string quotes(3'000'001, '"');
  EXPECT_EQ(ReadTextFile(BytesOf(quotes), false, {}).rowCount(), 1U);
  std::string lines = "\"\n";
  for (int i = 0; i < 1'000'000; ++i) lines += "\"\",x\"\n";
  EXPECT_GT(ReadTextFile(BytesOf(lines), false, [](std::string_view) {}).rowCount(), 0U);
  std::string pairs = "\"\n";
  for (int i = 0; i < 1'000'000; ++i) pairs += "\"\"\"\"\n";
  EXPECT_EQ(ReadTextFile(BytesOf(pairs), false, {}).rowCount(), 1'000'001U);
}

}  // namespace
}  // namespace LF2000
