#include <gtest/gtest.h>

#include "Locales.h"
#include "basic/numberformat/NumberFormat.h"

namespace basic {
namespace {

using test::american;

struct Case {
  const char* code;
  double serial;
  const char* text;
};

template <std::size_t Count>
void expectShown(const Case (&cases)[Count], DateSystem system = DateSystem::From1900) {
  for (const Case& c : cases)
    EXPECT_EQ(FormatNumber(NumberFormat(c.code), c.serial, american(), system), c.text) << "code " << c.code;
}

TEST(NumberFormatDateTest, WritesEverySymbol) {
  expectShown({
      {"yy yyyy y yyy", 45000.0, "23 2023 23 2023"},
      {"m mm mmm mmmm mmmmm mmmmmm", 45000.0, "3 03 Mar March M March"},
      {"d dd ddd dddd", 44989.0, "4 04 Sat Saturday"},
      {"aaa aaaa", 45000.0, "Wed Wednesday"},
      {"b bb bbbb", 45000.0, "66 66 2566"},
      {"e", 45000.0, "2023"},
      {"gge", 45000.0, "2023"},
      {"B2yyyy-mm-dd", 36526.0, "1420-09-24"},
      {"[$-F800]dddd, mmmm dd, yyyy", 45000.0, "Wednesday, March 15, 2023"},
      {"yyyy\"年\"m\"月\"d\"日\"", 45000.0, "2023年3月15日"},
      {"dd.mm.yyyy", 45000.0, "15.03.2023"},
      {"YYYY-MM-DD HH:MM:SS", 45000.25, "2023-03-15 06:00:00"},
      {"hh:mm:ss am/p", 0.5, "12:00:00 a1/p"},
  });
}

TEST(NumberFormatDateTest, TellsMinutesFromMonths) {
  expectShown({
      {"h:mm", 45000.51, "12:14"},
      {"mm:ss", 45000.51, "14:24"},
      {"h \"h\" m", 45000.51, "12 h 14"},
      {"h AM/PM mm", 45000.51, "12 PM 14"},
      {"[h]m", 1.51, "3614"},
      {"m[ss]", 0.01, "14864"},
      {"h d m", 45000.51, "12 15 3"},
      {"h:mmm", 45000.51, "12:Mar"},
      {"mm", 45000.51, "03"},
  });
}

TEST(NumberFormatDateTest, CountsHours) {
  expectShown({
      {"h:mm AM/PM", 0.0, "12:00 AM"},
      {"hh a/p", 0.5, "12 p"},
      {"h A/P", 0.3, "7 A"},
      {"上午/下午h", 0.7, "下午4"},
      {"[h]:mm:ss", 1.5, "36:00:00"},
      {"[hh]:mm", 0.1, "02:24"},
      {"[mm]:ss", 0.123, "177:07"},
      {"[ss].00", 0.000123, "10.63"},
      {"[h]", 2958465.0, "71003160"},
  });
}

TEST(NumberFormatDateTest, RoundsToTheLastPartOfASecond) {
  expectShown({
      {"h:mm:ss", 0.99999, "23:59:59"},
      {"yyyy-mm-dd h:mm:ss", 44999.999999, "2023-03-15 0:00:00"},
      {"[h]:mm:ss", 2.9999999999999996, "72:00:00"},
      {"h:mm", 12.3456789, "8:17"},
      {"yyyy-mm-dd", 44999.9999, "2023-03-14"},
      {"yyyy-mm-dd", 44999.99999999999, "2023-03-15"},
      {"ss.00", 0.00001234, "01.07"},
      {"hh:mm:ss.000", 0.7, "16:48:00.000"},
      {"s.0 s.000", 0.0000123456, "1.0 1.067"},
      {"s.0000000000", 0.000011574074074, "1.0000000000"},
      // Half a second, though the serial lies just below it.
      {"s", 45000.0000173611, "2"},
  });
}

TEST(NumberFormatDateTest, HasTheDaysThatNeverWere) {
  expectShown({
      {"yyyy-mm-dd ddd", 0.0, "1900-01-00 Sat"},
      {"yyyy-mm-dd ddd", 1.0, "1900-01-01 Sun"},
      {"yyyy-mm-dd", 59.0, "1900-02-28"},
      {"yyyy-mm-dd", 60.0, "1900-02-29"},
      {"yyyy-mm-dd ddd", 61.0, "1900-03-01 Thu"},
      {"yyyy-mm-dd", 73110.0, "2100-03-01"},
      {"yyyy-mm-dd", 2958465.0, "9999-12-31"},
      {"yyyy", 2958466.0, "#####"},
      {"yyyy h:mm:ss", 2958465.999999, "#####"},
      {"yyyy", -0.1, "#####"},
      {"[h]", 1e300, "#####"},
      {"0;yyyy", -1.0, "#####"},
  });
}

TEST(NumberFormatDateTest, CountsFrom1904) {
  expectShown(
      {
          {"yyyy-mm-dd ddd", 0.0, "1904-01-01 Fri"},
          {"yyyy-mm-dd", 59.0, "1904-02-29"},
          {"yyyy-mm-dd", 2957003.0, "9999-12-31"},
          {"yyyy", 2957004.0, "#####"},
          {"[h]:mm", -1.25, "-30:00"},
          {"[h]:mm", 1.25, "30:00"},
      },
      DateSystem::From1904);
}

TEST(NumberFormatDateTest, KnowsDatesFromNumbers) {
  for (const char* code : {"yyyy", "h", "[ss]", "mm", "General\"x\";yyyy", "[$-409]d;@"})
    EXPECT_EQ(NumberFormat(code).isDateTime(), code[0] != 'G') << code;
  for (const char* code : {"", "0", "General", "@", "\"day\"0", "\\d0", "0.0E+0", "[Red]0", "[$DM]0"})
    EXPECT_FALSE(NumberFormat(code).isDateTime()) << code;
}

}  // namespace
}  // namespace basic
