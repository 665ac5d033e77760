#include "basic/Format.h"

#include <gtest/gtest.h>

#include "Locales.h"
#include "basic/Conversion.h"
#include "support/ErrorOf.h"

namespace basic {
namespace {

using support::errorNumber;
using test::american;
using test::british;
using test::german;
using test::korean;

const Date Evening = DateFrom(2026, 3, 5, 17, 4, 9);  // a Thursday
const Date Midnight = DateFrom(2026, 3, 5);
const Date Noon = DateFrom(1899, 12, 30, 12, 0, 0);

TEST(FormatTest, KnowsTheNamedFormats) {
  const struct {
    const char* name;
    const char* american;
    const char* german;
  } cases[] = {
      {"", "3/5/2026 5:04:09 PM", "05.03.2026 17:04:09"},
      {"General Date", "3/5/2026 5:04:09 PM", "05.03.2026 17:04:09"},
      {"LONG date", "Thursday, March 5, 2026", "Donnerstag, 5. März 2026"},
      {"Medium Date", "05-Mar-26", "05-Mrz-26"},
      {"Short Date", "3/5/2026", "05.03.2026"},
      {"Long Time", "5:04:09 PM", "17:04:09"},
      {"Medium Time", "05:04 PM", "05:04 PM"},
      {"short time", "17:04", "17:04"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Format(Evening, c.name, american()), c.american) << c.name;
    EXPECT_EQ(Format(Evening, c.name, german()), c.german) << c.name;
  }
}

TEST(FormatTest, WritesEverySymbol) {
  const std::pair<const char*, const char*> cases[] = {
      {"d dd ddd dddd", "5 05 Do Donnerstag"},
      {"ddddd|dddddd|ttttt", "05.03.2026|Donnerstag, 5. März 2026|17:04:09"},
      {"m mm mmm mmmm", "3 03 Mrz März"},
      {"q y yy yyyy", "1 64 26 2026"},
      {"yyy yyyyy", "2664 202664"},
      {"w ww", "5 10"},
      {"h hh n nn s ss", "17 17 4 04 9 09"},
      {"hhh", "1717"},
      {"DD.MM.YYYY HH:NN:SS", "05.03.2026 17:04:09"},
      {"d/m h:n", "5.3 17:4"},
      {"c", "05.03.2026 17:04:09"},
      {"tttt", "tttt"},
      {"AM/PM am/pm A/P a/p [AMPM]", "PM pm P p []"},
      {"h AM/PM", "5 PM"},
      {"a am aaaAM/PM", "a a3 aaaPM"},
      {"\"day d\" d", "day d 5"},
      {"\"open d", "open d"},
      {"\\d\\\\d\\", "d\\5\\"},
      {"\"\"d\"\"", "5"},
      {"Uhr: hh", "U17r: 17"},
      {"日d 😀", "日5 😀"},
      {"\\äd", "ä5"},
      {"0.00;#", "0.00;#"},
  };
  for (const auto& [picture, text] : cases) EXPECT_EQ(Format(Evening, picture, german()), text) << picture;
}

TEST(FormatTest, TakesMAfterAnHourForMinutes) {
  const std::pair<const char*, const char*> cases[] = {
      {"hh:mm:ss", "17:04:09"},
      {"h:m", "17:4"},
      {"hm", "174"},
      {"h\"h \"mm\\m", "17h 04m"},
      {"hh-mm", "17-04"},
      {"hh:mm mm/yy", "17:04 03/26"},
      {"mm:ss", "03:09"},
      {"h:mmm", "17:Mar"},
      {"h:ss:mm", "17:09:03"},
      {"dd/mm/yyyy hh:mm", "05/03/2026 17:04"},
      {"h AM/PM mm", "5 PM 03"},
  };
  for (const auto& [picture, text] : cases) EXPECT_EQ(Format(Evening, picture, american()), text) << picture;
}

TEST(FormatTest, CountsTwelveHours) {
  const char* const expected[] = {"12 AM", "1 AM", "2 AM",  "3 AM",  "4 AM",  "5 AM", "6 AM",  "7 AM",
                                  "8 AM",  "9 AM", "10 AM", "11 AM", "12 PM", "1 PM", "2 PM",  "3 PM",
                                  "4 PM",  "5 PM", "6 PM",  "7 PM",  "8 PM",  "9 PM", "10 PM", "11 PM"};
  for (int hour = 0; hour < 24; ++hour) {
    EXPECT_EQ(Format(DateFrom(2026, 1, 1, hour), "h AM/PM", german()), expected[hour]);
  }
  EXPECT_EQ(Format(Evening, "AMPM h", korean()), "오후 5");
  EXPECT_EQ(Format(Evening, "h \"AM/PM\"", american()), "17 AM/PM");
  EXPECT_EQ(Format(Evening, "h ttttt", american()), "17 5:04:09 PM");
}

TEST(FormatTest, NumbersWeeksFromTheOneWithNewYear) {
  const struct {
    int year, month, day;
    const char* text;
  } cases[] = {
      {2026, 1, 1, "5 1"},    {2026, 1, 3, "7 1"},    {2026, 1, 4, "1 2"}, {2026, 12, 31, "5 53"},
      {2023, 1, 1, "1 1"},    {2023, 1, 7, "7 1"},    {2023, 1, 8, "1 2"}, {2000, 12, 31, "1 54"},
      {2028, 12, 31, "1 54"}, {1899, 12, 30, "7 52"}, {100, 1, 1, "6 1"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Format(DateFrom(c.year, c.month, c.day), "w ww", american()), c.text)
        << c.year << c.month << c.day;
  }
}

TEST(FormatTest, LeavesAZeroPartOfAGeneralDateOut) {
  EXPECT_EQ(CStr(Midnight, british()), "05/03/2026");
  EXPECT_EQ(CStr(Noon, british()), "12:00:00");
  EXPECT_EQ(CStr(Date{}, british()), "00:00:00");
  EXPECT_EQ(CStr(Date{}, american()), "12:00:00 AM");
  EXPECT_EQ(CStr(Date{-1.5}, british()), "29/12/1899 12:00:00");
  EXPECT_EQ(CStr(Date{46085.9999999}, british()), "05/03/2026");
}

TEST(FormatTest, SurvivesALocaleThatRefersToItselfAndDatesThatAreNone) {
  Locale locale;
  locale.shortDate = "c ddddd d";
  locale.longTime = "ttttt h";
  locale.shortTime = "ttttt";
  EXPECT_EQ(Format(Evening, "c", locale), "  5  17");
  EXPECT_EQ(Format(Evening, "Short Time", locale), " 17");
  EXPECT_EQ(errorNumber([] { Format({1e9}, "yyyy"); }), 5) << "outside the calendar";
}

TEST(StoredDateTest, HasOneFormWhateverTheLocale) {
  SetUserLocale(german());
  EXPECT_EQ(StoredDate(Evening), "2026-03-05 17:04:09");
  EXPECT_EQ(Format(Evening, "c"), "05.03.2026 17:04:09");
  EXPECT_EQ(CDbl("1,5"), 1.5);
  SetUserLocale({});
  EXPECT_EQ(StoredDate(DateFrom(100, 1, 1)), "0100-01-01 00:00:00");
}

}  // namespace
}  // namespace basic
