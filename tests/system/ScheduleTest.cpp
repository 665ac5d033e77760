// When a distributed presentation is on: days, hours, start and stop.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "basic/Conversion.h"
#include "model/modSchedule.h"

namespace LF2000::modSchedule {
namespace {

/// A Sunday is 2026-11-22.
basic::Date At(const char* text) { return basic::CDate(text); }

Schedule Weekly(std::string days, std::string hours) { return {{}, {}, std::move(days), std::move(hours)}; }

TEST(ScheduleTest, IsOnByDaysAndHours) {
  const struct {
    const char* days;
    const char* hours;
    const char* now;
    bool isOpen;
  } cases[] = {
      {"", "", "2026-11-22 00:00", true},
      {"mon-fri", "", "2026-11-22 23:59:59", false},
      {"mon-fri", "", "2026-11-23 00:00", true},
      {"mon-fri", "", "2026-11-27 23:59:59", true},
      {"mon-fri", "", "2026-11-28 00:00", false},
      {"sat,sun", "", "2026-11-22 12:00", true},
      {"Mon-Wed, FRI", "", "2026-11-26 12:00", false},
      {"Mon-Wed, FRI", "", "2026-11-27 12:00", true},
      {"fri-mon", "", "2026-11-22 12:00", true},
      {"fri-mon", "", "2026-11-24 12:00", false},
      {"", "06:00-22:00", "2026-11-22 05:59:59", false},
      {"", "06:00-22:00", "2026-11-22 06:00", true},
      {"", "6:00 - 22:00", "2026-11-22 21:59:59", true},
      {"", "06:00-22:00", "2026-11-22 22:00", false},
      {"", "06:00-09:00,17:00-24:00", "2026-11-22 12:00", false},
      {"", "06:00-09:00,17:00-24:00", "2026-11-22 23:59:59", true},
      {"", "06:00-09:00,17:00-24:00", "2026-11-23 00:00", false},
      // A night belongs to the day on which it begins.
      {"fri", "22:00-06:00", "2026-11-27 05:00", false},
      {"fri", "22:00-06:00", "2026-11-27 22:00", true},
      {"fri", "22:00-06:00", "2026-11-28 05:59:59", true},
      {"fri", "22:00-06:00", "2026-11-28 06:00", false},
      {"fri", "22:00-06:00", "2026-11-28 23:00", false},
      {"sat", "22:00-06:00", "2026-11-22 05:00", true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(IsOpen(Weekly(c.days, c.hours), At(c.now)), c.isOpen)
        << c.days << ' ' << c.hours << ' ' << c.now;
  }
}

TEST(ScheduleTest, StartAndStopCutOffWhatLiesOutside) {
  const Schedule schedule{At("2026-11-23 12:00"), At("2026-11-24 23:00"), "mon-fri", "22:00-06:00"};
  EXPECT_FALSE(IsOpen(schedule, At("2026-11-23 05:00")));
  EXPECT_TRUE(IsOpen(schedule, At("2026-11-23 22:00")));
  EXPECT_TRUE(IsOpen(schedule, At("2026-11-24 22:59:59")));
  EXPECT_FALSE(IsOpen(schedule, At("2026-11-24 23:00")));
  EXPECT_FALSE(IsOver(schedule, At("2026-11-24 22:59:59")));
  EXPECT_TRUE(IsOver(schedule, At("2026-11-24 23:00")));
  EXPECT_FALSE(IsOver({}, At("2026-11-24 23:00")));
  // The clock was set back.
  EXPECT_TRUE(IsOpen(schedule, At("2026-11-24 01:00")));
}

TEST(ScheduleTest, ComplainsAboutWhatCannotBeMeant) {
  for (const char* days : {"monday", "mon-", "-", "mon,,tue", "mon;tue", "mon-tue-wed", "1-5"}) {
    EXPECT_FALSE(ScheduleComplaint(Weekly(days, "")).days.empty()) << days;
    EXPECT_FALSE(IsOpen(Weekly(days, ""), At("2026-11-23 12:00"))) << days;
    EXPECT_FALSE(NextChange(Weekly(days, ""), At("2026-11-23 12:00"))) << days;
  }
  for (const char* hours : {"6-22", "06:00", "06:60-07:00", "06:00-24:01", "24:00-06:00", "06:00-06:00",
                            "06:00-22:00,", "06:0-22:00", "006:00-22:00", "-06:00", "99:99-99:99"}) {
    EXPECT_FALSE(ScheduleComplaint(Weekly("", hours)).hours.empty()) << hours;
    EXPECT_FALSE(IsOpen(Weekly("", hours), At("2026-11-23 12:00"))) << hours;
  }
  EXPECT_FALSE(ScheduleComplaint(Weekly("", std::string(1'000'000, ','))).IsEmpty());
  const Schedule backwards{At("2026-11-23"), At("2026-11-22"), "", ""};
  EXPECT_EQ(ScheduleComplaint(backwards).Text(), "The stop must be later than the start.");
  EXPECT_FALSE(IsOpen(backwards, At("2026-11-22 12:00")));
  EXPECT_TRUE(ScheduleComplaint({At("2026-11-23"), {}, "", ""}).IsEmpty());
  EXPECT_TRUE(ScheduleComplaint(Weekly("mon-wed,fri", "22:00-6:00, 12:00-13:00")).IsEmpty());
}

TEST(ScheduleTest, TellsWhenTheNextChangeIs) {
  const auto next = [](const Schedule& schedule, const char* after) {
    const auto change = NextChange(schedule, At(after));
    return change ? basic::StoredDate(*change) : std::string("never");
  };
  EXPECT_EQ(next({}, "2026-11-22 12:00"), "never");
  EXPECT_EQ(next(Weekly("mon-fri", ""), "2026-11-23 12:00"), "2026-11-28 00:00:00");
  EXPECT_EQ(next(Weekly("mon", "06:00-07:00"), "2026-11-23 07:00"), "2026-11-30 06:00:00");
  // Hours that go on without a gap are no change.
  EXPECT_EQ(next(Weekly("", "00:00-12:00,12:00-24:00"), "2026-11-23 07:00"), "never");
  EXPECT_EQ(next(Weekly("fri", "22:00-06:00"), "2026-11-28 00:00"), "2026-11-28 06:00:00");
  EXPECT_EQ(next({At("2030-01-01 08:30"), {}, "", ""}, "2026-11-23"), "2030-01-01 08:30:00");
  EXPECT_EQ(next({At("2030-01-01 08:30"), {}, "sat", ""}, "2026-11-23"), "2030-01-05 00:00:00");
  EXPECT_EQ(next({{}, At("2030-01-01 08:30"), "", ""}, "2026-11-23"), "2030-01-01 08:30:00");
  EXPECT_EQ(next({{}, At("2026-11-23"), "", ""}, "2026-11-23"), "never");
  EXPECT_EQ(next({At("2026-11-24"), At("2026-11-25"), "sun", ""}, "2026-11-23"), "never");
  EXPECT_EQ(next({{}, {}, "sun", "23:00-01:00"}, "9999-12-31 12:00"), "never");
}

// The chain of changes and the looks at single moments agree for a year, with a leap day and every month's
// end.
TEST(ScheduleTest, ChangesOfAYearAgreeWithEveryQuarterOfAnHour) {
  const Schedule schedule{At("2028-01-03 10:00"), At("2028-12-20 23:30"), "mon-wed,fri,sat",
                          "06:15-09:00,13:30-14:45,21:00-02:30"};
  basic::Date now = At("2028-01-01");
  std::optional<basic::Date> next = NextChange(schedule, now);
  bool isOpen = IsOpen(schedule, now);
  int changes = 0;
  for (int quarter = 0; quarter < 366 * 96;
       ++quarter, now = basic::AddSeconds(At("2028-01-01"), quarter * 900.0)) {
    if (next && now >= *next) {
      EXPECT_EQ(now, *next);
      isOpen = !isOpen;
      ++changes;
      next = NextChange(schedule, *next);
    }
    ASSERT_EQ(IsOpen(schedule, now), isOpen) << basic::StoredDate(now);
  }
  EXPECT_FALSE(next);
  EXPECT_GT(changes, 1400);
}

}  // namespace
}  // namespace LF2000::modSchedule
