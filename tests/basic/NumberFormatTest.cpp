#include "basic/numberformat/NumberFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Locales.h"

namespace basic {
namespace {

using test::american;
using test::german;

struct Case {
  const char* code;
  CellValue value;
  const char* text;
};

template <std::size_t Count>
void expectShown(const Case (&cases)[Count], const Locale& locale = american(),
                 DateSystem system = DateSystem::From1900) {
  for (const Case& c : cases) {
    const std::string shown = FormatNumber(NumberFormat(c.code), c.value, locale, system);
    EXPECT_EQ(shown, c.text) << "code " << c.code;
  }
}

TEST(NumberFormatTest, FitsGeneralIntoElevenCharacters) {
  const struct {
    double value;
    const char* text;
  } cases[] = {
      {0.0, "0"},
      {-0.0, "0"},
      {-1234567.891, "-1234567.891"},
      {0.1 + 0.2, "0.3"},
      {123456789.12345, "123456789.1"},
      {1234567891.5, "1234567892"},
      {12345678912.3, "12345678912"},
      {99999999999.4, "99999999999"},
      {99999999999.5, "1E+11"},
      {123456789123.0, "1.23457E+11"},
      {0.99999999999, "1"},
      {0.000123456789, "0.000123457"},
      {0.0000123456789, "1.23457E-05"},
      {0.000012345, "0.000012345"},
      {0.000000001, "0.000000001"},
      {0.0000000001, "1E-10"},
      {1.23456789e100, "1.2346E+100"},
      {9.99999999e99, "1E+100"},
      {-std::numeric_limits<double>::max(), "-1.7977E+308"},
      {std::numeric_limits<double>::min(), "2.2251E-308"},
  };
  for (const auto& c : cases) EXPECT_EQ(FormatNumber(NumberFormat(), c.value, american()), c.text);
  EXPECT_EQ(FormatNumber(NumberFormat("general"), 1.5, german()), "1,5");
}

TEST(NumberFormatTest, PutsDigitsOnPlaceholders) {
  expectShown({
      {"0", 12345.6789, "12346"},
      {"000", 5.0, "005"},
      {"#.##", 0.0, "."},
      {"#.##", -1.0, "-1."},
      {"0.0#", 12.0, "12.0"},
      {"?0.0?", 1.5, " 1.5 "},
      {".00", 3.14159, "3.14"},
      {"#,##0", 999.0, "999"},
      {"#,##0.00", -1234567.891, "-1,234,567.89"},
      {"00,000", 12.0, "00,012"},
      {"?,???", 12.0, "   12"},
      {"0.0,", 12345.0, "12.3"},
      {"#,##0.0,,\"M\"", 1234567890.0, "1,234.6M"},
      {"0.00,", 12345.0, "12.35"},
      {"#.0000,,", 0.99, ".0000"},
      {"0%", 0.125, "13%"},
      {"0.0%%", 0.5, "5000.0%%"},
      {"0\\%", 3.0, "3%"},
      {"00000-0000", 941051630.0, "94105-1630"},
      {"(###) ###-####", 2018675309.0, "(201) 867-5309"},
      {"#0#0#", 7.0, "007"},
      {"0.00\"m\"0", 1.2345, "1.23m5"},
      {"0.0.0", 1.25, "1.2.5"},
      {"0", 1e20, "100000000000000000000"},
      {"0.00", 1e-300, "0.00"},
  });
}

TEST(NumberFormatTest, RoundsHalfAwayFromZeroAtFifteenDigits) {
  expectShown({
      {"0.00", 1.005, "1.01"},
      {"0.00", 2.675, "2.68"},
      {"0.0", -0.25, "-0.3"},
      {"0", 0.5, "1"},
      {"0", 0.49999999999999994, "1"},
      {"0", -0.4, "-0"},
      {"0.00", 99.995, "100.00"},
      {"0", 123456789012345678.0, "123456789012346000"},
      {"0.000000000000000000", 0.1, "0.100000000000000000"},
      {"0.00000000000000", 1.000000000000005, "1.00000000000001"},
  });
}

TEST(NumberFormatTest, ShowsExponents) {
  expectShown({
      {"0.00E+00", 0.0, "0.00E+00"},
      {"0.00E+00", -12345.6789, "-1.23E+04"},
      {"0.00E-00", 12345.6789, "1.23E04"},
      {"0.0e-0", 0.00099999, "1.0E-3"},
      {"##0.0E+0", 12345.6789, "12.3E+3"},
      {"##0.0E+0", 999.96, "1.0E+3"},
      {"##0.0E+0", 0.000123, "123.0E-6"},
      {"###0.0E+0", 1.23457e-13, "1234.6E-16"},
      {"00.0E+0", 123456.0, "12.3E+4"},
      {".00E+00", 123.0, ".12E+03"},
      {"0E+0", std::numeric_limits<double>::max(), "2E+308"},
  });
}

TEST(NumberFormatTest, ShowsFractions) {
  expectShown({
      {"# ?/?", 1.0, "1    "},
      {"# ?/?", 0.0, "0    "},
      {"# ?/?", 0.3, " 2/7"},
      {"# ?/?", -2.5, "-2 1/2"},
      {"# ?/?", 0.999, "1    "},
      {"# ?\?/??", 12.3, "12  3/10"},
      {"# ?\?/??", 1234567.89, "1234567  8/9 "},
      {"#,##0 ?/?", 1234.5, "1,234 1/2"},
      {"0 ?/?", 0.5, "0 1/2"},
      {"?\?/??", 12.3456789, "1000/81"},
      {"0/0", 1.5, "3/2"},
      {"# ?/8", 12.3, "12 2/8"},
      {"# ?\?/16", 0.99, "1      "},
      {"# ?\?/100", 0.5, " 50/100"},
      {"?/8", 1.5, "12/8"},
      {"# ?? / ?????????", 0.123251512342345, "  480894 / 3901729"},
      {"# ?/?%", 0.005, " 1/2%"},
      {"?/9", 1.7e308, "1.7E+308"},
  });
}

TEST(NumberFormatTest, ChoosesTheSection) {
  expectShown({
      {"0.0;(0.0)", -1.25, "(1.3)"},
      {"0.0;(0.0)", 0.0, "0.0"},
      {"0;-0;\"zero\"", 0.0, "zero"},
      {"0;-0;\"zero\"", -0.2, "-0"},
      {"0;", -1.0, ""},
      {";;;", 5.0, ""},
      {"0;@", -3.0, "-3"},
      {"\"a\";\"b\";@", 0.0, "a"},
      {"\"a\";\"b\";\"c\";\"d\";\"e\"", 1.0, "a"},
      {"[<100]0.0;0", 100.0, "100"},
      {"[<100]0.0;0", -5.0, "-5.0"},
      {"[>=100]\"big\";-0;\"rest\"", -5.0, "-5"},
      {"[>=100]\"big\";-0;\"rest\"", 5.0, "rest"},
      {"[=1]\"one\";[<>2]0.0;\"two\"", 2.0, "two"},
      {"[<=-25]General;[>=25]General;General", -1.0, "-1"},
      {"[<0]\"minus \"0;0", -5.0, "minus 5"},
      {"[>100]0.00", 5.0, "5"},
      {"[Red]General;[Blue]General\\ ", -1.0, "1 "},
      {"\"n: \"0", -5.0, "-n: 5"},
      {"\"only text\"", -5.0, "only text"},
      {"0\";\"0", 12.0, "1;2"},
  });
}

TEST(NumberFormatTest, KeepsLiteralsAndLeavesOutFill) {
  expectShown({
      {"_($* #,##0_);_($* (#,##0);_($* \"-\"_);_(@_)", 1234.0, " $1,234 "},
      {"_($* #,##0_);_($* (#,##0);_($* \"-\"_);_(@_)", 0.0, " $- "},
      {"_($* #,##0_);_($* (#,##0);_($* \"-\"_);_(@_)", "x", " x "},
      {"[$-409]0", 1.0, "1"},
      {"#,##0.00 [$€-407]", 1234.5, "1,234.50 €"},
      {"[$₹-4009]\\ 0.0", -1.0, "-₹ 1.0"},
      {"_€0*€", 1.0, " 1"},
      {"[DBNum1][foo]0", 12.0, "12"},
      {"0\"open", 1.0, "1open"},
      {"0[open", 1.0, "1[open"},
      {"0\\", 1.0, "1"},
      {"Rs. 0.0 items", 1.0, "Rs. 1.0 items"},
  });
}

TEST(NumberFormatTest, ShowsWhatIsNoNumber) {
  expectShown({
      {"0.00", "text", "text"},
      {"yyyy", "text", "text"},
      {"0;0;0;\"<\"@\">\"@", "a", "<a>a"},
      {"\"<\"@\">\"", 5.0, "5"},
      {"0;0;0;", "hidden", ""},
      {"0;0;0;General'", "a", "a'"},
      {"0.00", true, "TRUE"},
      {"@\"x\"", false, "FALSE"},
      {"0;0;0;\"never\"", CellError{"#DIV/0!"}, "#DIV/0!"},
      {"0.00", std::nan(""), "#NUM!"},
      {"yyyy", -std::numeric_limits<double>::infinity(), "#NUM!"},
  });
}

TEST(NumberFormatTest, ReportsTheColour) {
  const NumberFormat format("[Red][<0]0;[Color12]0;0;[cyan]@");
  EXPECT_EQ(format.color(-1.0), 3);
  EXPECT_EQ(format.color("text"), 8);
  EXPECT_EQ(format.color(true), 0);
  EXPECT_EQ(NumberFormat("0;[Color 56]0").color(-1.0), 56);
  for (const char* code : {"0", "[Color57]0", "[Color0]0", "[Colorx]0", "[Pink]0", "[>5][Red]0"})
    EXPECT_EQ(NumberFormat(code).color(1.0), 0) << code;
}

TEST(NumberFormatTest, NamesBuiltInFormats) {
  EXPECT_EQ(BuiltInNumberFormat(4), "#,##0.00");
  EXPECT_EQ(BuiltInNumberFormat(49), "@");
  EXPECT_EQ(BuiltInNumberFormat(14, american()), "m/d/yyyy");
  EXPECT_EQ(BuiltInNumberFormat(22, german()), "dd.mm.yyyy h:mm");
  for (const int none : {-1, 59, 164}) EXPECT_EQ(BuiltInNumberFormat(none), std::nullopt);
  const struct {
    int number;
    double value;
    const char* text;
  } cases[] = {
      {5, -1234.5, "($1,235)"},
      {8, 1.0, "$1.00 "},
      {13, 0.3, "  3/10"},
      {38, -12.0, "(12)"},
      {41, 1234.0, " 1,234 "},
      {44, -1.5, " $(1.50)"},
      {47, 0.000012, "0001.0"},
      {48, 123456.0, "123.5E+3"},
      {18, 0.75, "6:00 PM"},
      {14, 45000.0, "3/15/2023"},
      {22, 45000.5, "3/15/2023 12:00"},
      {34, 0.5, "12:00:00"},
  };
  for (const auto& c : cases) {
    const NumberFormat format(BuiltInNumberFormat(c.number, american()).value());
    EXPECT_EQ(FormatNumber(format, c.value, american()), c.text) << c.number;
  }
}

TEST(NumberFormatTest, WritesTheLocalesSeparators) {
  expectShown(
      {
          {"#,##0.00", 1234567.891, "1.234.567,89"},
          {"0.0E+0", 12345.0, "1,2E+4"},
          {"m/d/yyyy", 45000.0, "3.15.2023"},
          {"dddd, d. mmmm", 45000.0, "Mittwoch, 15. März"},
          {"mm:ss.0", 0.0001, "00:08,6"},
          {"h AM/PM", 0.75, "6 PM"},
      },
      german());
  EXPECT_EQ(FormatNumber(NumberFormat("h AM/PM"), 0.75, test::korean()), "6 오후");
}

}  // namespace
}  // namespace basic
