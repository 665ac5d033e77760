#include "basic/numberformat/NumberFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Locales.h"

// What depends on a locale, and what a table cannot say; tests/basic/formats has the cases of format codes.

namespace basic {
namespace {

using test::american;
using test::german;

struct Shown {
  const char* code;
  CellValue value;
  const char* text;
};

template <std::size_t Count>
void expectShown(const Shown (&cases)[Count], const Locale& locale = american(),
                 DateSystem system = DateSystem::From1900) {
  for (const Shown& c : cases) {
    const std::string shown = FormatNumber(NumberFormat(c.code), c.value, locale, system);
    EXPECT_EQ(shown, c.text) << "code " << c.code;
  }
}

TEST(NumberFormatTest, ShowsWhatIsNoNumber) {
  expectShown({
      {"0;0;0;\"never\"", CellError{"#DIV/0!"}, "#DIV/0!"},
      {"0.00", std::nan(""), "#NUM!"},
      {"yyyy", -std::numeric_limits<double>::infinity(), "#NUM!"},
  });
}

TEST(NumberFormatTest, CountsFrom1904) {
  expectShown(
      {
          {"yyyy-mm-dd ddd", 0.0, "1904-01-01 Fri"},
          {"yyyy-mm-dd", 59.0, "1904-02-29"},
          {"yyyy-mm-dd", 2957003.0, "9999-12-31"},
          {"yyyy", 2957004.0, "#####"},
          {"[h]:mm", -1.25, "-30:00"},
          {"[h]:mm", 1.25, "30:00"},
      },
      american(), DateSystem::From1904);
}

TEST(NumberFormatTest, KnowsDatesFromNumbers) {
  for (const char* code : {"yyyy", "h", "[ss]", "mm", "General\"x\";yyyy", "[$-409]d;@"})
    EXPECT_EQ(NumberFormat(code).isDateTime(), code[0] != 'G') << code;
  for (const char* code : {"", "0", "General", "@", "\"day\"0", "\\d0", "0.0E+0", "[Red]0", "[$DM]0"})
    EXPECT_FALSE(NumberFormat(code).isDateTime()) << code;
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
