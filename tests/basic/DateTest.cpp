#include "basic/Date.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "basic/Conversion.h"
#include "support/ErrorOf.h"

namespace basic {
namespace {

using support::errorNumber;

constexpr int FirstDay = -657434;
constexpr int LastDay = 2958465;

TEST(DateTest, CountsEveryDayOfTheCalendar) {
  DateParts before = Split({FirstDay});
  EXPECT_EQ(before.year * 10000 + before.month * 100 + before.day, 100'01'01);
  for (int serial = FirstDay + 1; serial <= LastDay; ++serial) {
    const DateParts parts = Split({static_cast<double>(serial)});
    ASSERT_EQ(parts.weekday, before.weekday % 7 + 1) << serial;
    if (parts.day == before.day + 1) {
      ASSERT_EQ(parts.month, before.month) << serial;
      ASSERT_EQ(parts.dayOfYear, before.dayOfYear + 1) << serial;
    } else {
      ASSERT_EQ(parts.day, 1) << serial;
      ASSERT_EQ(parts.month, before.month % 12 + 1) << serial;
      ASSERT_FALSE(IsValidDay(before.year, before.month, before.day + 1)) << serial;
      ASSERT_EQ(parts.dayOfYear, parts.month == 1 ? 1 : before.dayOfYear + 1) << serial;
    }
    ASSERT_TRUE(IsValidDay(parts.year, parts.month, parts.day)) << serial;
    ASSERT_EQ(DateFrom(parts.year, parts.month, parts.day).serial, serial);
    before = parts;
  }
  EXPECT_EQ(before.year * 10000 + before.month * 100 + before.day, 9999'12'31);
}

TEST(DateTest, KnowsLandmarks) {
  const struct {
    double serial;
    const char* date;
    int weekday;
  } cases[] = {
      {0.0, "1899-12-30 00:00:00", 7},           {2.0, "1900-01-01 00:00:00", 2},
      {25569.0, "1970-01-01 00:00:00", 5},       {36585.75, "2000-02-29 18:00:00", 3},
      {10.45 / 86400, "1899-12-30 00:00:10", 7}, {10.55 / 86400, "1899-12-30 00:00:11", 7},
      {-1.25, "1899-12-29 06:00:00", 6},         {-0.25, "1899-12-30 06:00:00", 7},
      {0.999999, "1899-12-31 00:00:00", 1},      {-1.999999, "1899-12-30 00:00:00", 7},
      {0.99999, "1899-12-30 23:59:59", 7},       {LastDay + 0.999999, "9999-12-31 23:59:59", 6},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(StoredDate({c.serial}), c.date);
    EXPECT_EQ(Split({c.serial}).weekday, c.weekday) << c.serial;
  }
}

TEST(DateTest, CarriesPartsOver) {
  EXPECT_EQ(DateFrom(2025, 13, 1), DateFrom(2026, 1, 1));
  EXPECT_EQ(DateFrom(2025, 0, 1), DateFrom(2024, 12, 1));
  EXPECT_EQ(DateFrom(2025, -11, 1), DateFrom(2024, 1, 1));
  EXPECT_EQ(DateFrom(2024, 3, 0), DateFrom(2024, 2, 29));
  EXPECT_EQ(DateFrom(2026, 1, 1, -1, 0, 0), DateFrom(2025, 12, 31, 23, 0, 0));
  EXPECT_EQ(DateFrom(2026, 1, 1, 0, 0, 86400), DateFrom(2026, 1, 2));
  EXPECT_EQ(DateFrom(1899, 12, 29, 6, 0, 0).serial, -1.25);
  EXPECT_EQ(DateFrom(29, 1, 1), DateFrom(2029, 1, 1));
  EXPECT_EQ(DateFrom(30, 1, 1), DateFrom(1930, 1, 1));
  // 1,000,000 Gregorian years are 2500 times 146097 days.
  EXPECT_EQ(DateFrom(1'002'000, 1, 1 - 2500 * 146097), DateFrom(2000, 1, 1));
}

TEST(DateTest, RefusesWhatIsOutsideTheCalendar) {
  constexpr int Max = std::numeric_limits<int>::max();
  constexpr int Min = std::numeric_limits<int>::min();
  const double outside[] = {FirstDay - 1.0, LastDay + 1.0, 1e300,
                            -1e300,         std::nan(""),  std::numeric_limits<double>::infinity()};
  for (const double serial : outside) {
    EXPECT_FALSE(IsInRange({serial})) << serial;
    EXPECT_EQ(errorNumber([&] { Split({serial}); }), 5) << serial;
    EXPECT_EQ(errorNumber([&] { AddSeconds({serial}, 1); }), 5) << serial;
  }
  for (const int year : {Max, Min, 10000, -1}) {
    EXPECT_EQ(errorNumber([&] { DateFrom(year, 1, 1); }), 5) << year;
  }
  EXPECT_EQ(errorNumber([&] { DateFrom(Max, Max, Max, Max, Max, Max); }), 5);
  EXPECT_EQ(errorNumber([&] { DateFrom(Min, Min, Min, Min, Min, Min); }), 5);
  EXPECT_EQ(errorNumber([&] { AddSeconds({LastDay + 0.5}, 43200); }), 5);
  EXPECT_EQ(errorNumber([&] { AddSeconds({0}, std::nan("")); }), 5);
  for (const int day : {0, 30, Max, Min}) EXPECT_FALSE(IsValidDay(2024, 2, day)) << day;
  EXPECT_FALSE(IsValidDay(1900, 2, 29));
}

TEST(DateTest, AddingSecondsDoesNotDrift) {
  Date date = DateFrom(1899, 12, 28, 12, 0, 0);
  for (int i = 0; i < 4 * 86400; ++i) date = AddSeconds(date, 1);
  EXPECT_EQ(date, DateFrom(1900, 1, 1, 12, 0, 0));
  EXPECT_EQ(AddSeconds(date, -3 * 86400.0 - 1), DateFrom(1899, 12, 29, 11, 59, 59));
  EXPECT_EQ(AddSeconds(AddSeconds(date, 0.25), 0.75), AddSeconds(date, 1));
}

}  // namespace
}  // namespace basic
