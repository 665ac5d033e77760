// Reads the days and hours of a distribution, and judges moments by them.

#include "model/modSchedule.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "basic/Strings.h"

namespace LF2000::modSchedule {
namespace {

constexpr int MinutesPerDay = 24 * 60;
constexpr std::size_t DaysPerWeek = 7;
/// Days and hours of a longer text are none: a deck is somebody else's file.
constexpr std::size_t LongestText = 1000;

using Days = std::bitset<DaysPerWeek>;  // from Sunday

/// Minutes from midnight; the end may lie on the next day.
struct Hours {
  int from = 0;
  int to = MinutesPerDay;
};

struct Week {
  Days days = Days().set();
  std::vector<Hours> hours = {Hours{}};
};

std::string WithoutBlanks(std::string_view text) {
  std::string plain(text);
  std::erase(plain, ' ');
  return plain;
}

std::optional<std::size_t> DayNamed(std::string_view name) {
  constexpr std::array<std::string_view, DaysPerWeek> Names = {"sun", "mon", "tue", "wed",
                                                               "thu", "fri", "sat"};
  const auto* const found = std::find_if(
      Names.begin(), Names.end(), [&](std::string_view each) { return basic::EqualsIgnoreCase(each, name); });
  if (found == Names.end()) return std::nullopt;
  return static_cast<std::size_t>(found - Names.begin());
}

/// "from-to", or one that is both.
struct Range {
  std::string_view from;
  std::string_view to;
};
Range RangeOf(std::string_view text) {
  const std::size_t dash = text.find('-');
  if (dash == std::string_view::npos) return {text, text};
  return {text.substr(0, dash), text.substr(dash + 1)};
}

std::optional<Days> ReadDays(std::string_view text) {
  const std::string plain = WithoutBlanks(text);
  if (plain.empty()) return Days().set();
  if (plain.size() > LongestText) return std::nullopt;
  Days days;
  for (const std::string& piece : basic::Split(plain, ',')) {
    const Range range = RangeOf(piece);
    const auto from = DayNamed(range.from);
    const auto to = DayNamed(range.to);
    if (!from || !to) return std::nullopt;
    for (std::size_t day = *from;; day = (day + 1) % DaysPerWeek) {
      days.set(day);
      if (day == *to) break;
    }
  }
  return days;
}

/// "6:00", "06:00".
std::optional<int> MinutesOf(std::string_view text) {
  const auto digits = [](std::string_view part) {
    return !part.empty() && part.size() <= 2 &&
           part.find_first_not_of("0123456789") == std::string_view::npos;
  };
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view hour = text.substr(0, colon);
  const std::string_view minute = text.substr(colon + 1);
  if (!digits(hour) || !digits(minute) || minute.size() != 2) return std::nullopt;
  const int minutes = std::stoi(std::string(minute));
  const int all = std::stoi(std::string(hour)) * 60 + minutes;
  if (minutes > 59 || all > MinutesPerDay) return std::nullopt;
  return all;
}

std::optional<std::vector<Hours>> ReadHours(std::string_view text) {
  const std::string plain = WithoutBlanks(text);
  if (plain.empty()) return std::vector{Hours{}};
  if (plain.size() > LongestText) return std::nullopt;
  std::vector<Hours> all;
  for (const std::string& piece : basic::Split(plain, ',')) {
    const Range range = RangeOf(piece);
    const auto from = MinutesOf(range.from);
    const auto to = MinutesOf(range.to);
    if (!from || !to || *from == *to || *from == MinutesPerDay) return std::nullopt;
    all.push_back({*from, *to < *from ? *to + MinutesPerDay : *to});
  }
  return all;
}

std::optional<Week> ReadWeek(const Schedule& schedule) {
  const auto days = ReadDays(schedule.days);
  auto hours = ReadHours(schedule.hours);
  if (!days || !hours) return std::nullopt;
  return Week{*days, std::move(*hours)};
}

bool IsSet(basic::Date date) { return date.serial != 0.0; }

bool IsInOrder(const Schedule& schedule) {
  return !IsSet(schedule.start) || !IsSet(schedule.stop) || schedule.start < schedule.stop;
}

/// Whole milliseconds, so that what was added up from minutes equals what was written as a date.
struct Moment {
  std::int64_t day = 0;
  std::int64_t milliseconds = 0;
};
Moment MomentOf(basic::Date date) {
  constexpr double PerDay = 86'400'000.0;
  const double day = std::trunc(date.serial);
  Moment moment{static_cast<std::int64_t>(day),
                static_cast<std::int64_t>(std::llround(std::abs(date.serial - day) * PerDay))};
  if (moment.milliseconds == static_cast<std::int64_t>(PerDay)) moment = {moment.day + 1, 0};
  return moment;
}

/// Day 0 is a Saturday.
bool Begins(const Days& days, std::int64_t day) {
  constexpr std::int64_t Week = DaysPerWeek;
  const std::int64_t weekday = ((day + 6) % Week + Week) % Week;
  return days.test(static_cast<std::size_t>(weekday));
}

bool IsWithin(const Week& week, basic::Date now) {
  constexpr std::int64_t PerMinute = 60'000;
  const Moment moment = MomentOf(now);
  for (const std::int64_t begun : {moment.day, moment.day - 1}) {
    if (!Begins(week.days, begun)) continue;
    const std::int64_t passed = moment.milliseconds + (moment.day - begun) * MinutesPerDay * PerMinute;
    const bool isIn = std::any_of(week.hours.begin(), week.hours.end(), [&](const Hours& hours) {
      return passed >= hours.from * PerMinute && passed < hours.to * PerMinute;
    });
    if (isIn) return true;
  }
  return false;
}

bool IsOpen(const Schedule& schedule, const Week& week, basic::Date now) {
  if (IsSet(schedule.start) && now < schedule.start) return false;
  return !IsOver(schedule, now) && IsWithin(week, now);
}

/// Every moment, from the day before to a week behind, at which something may change.
std::vector<basic::Date> Turns(const Schedule& schedule, const Week& week, basic::Date from) {
  std::vector<basic::Date> turns = {schedule.start, schedule.stop};
  const std::int64_t today = MomentOf(from).day;
  for (std::int64_t day = today - 1; day <= today + static_cast<std::int64_t>(DaysPerWeek) + 1; ++day) {
    if (!Begins(week.days, day)) continue;
    const basic::Date midnight{static_cast<double>(day)};
    if (!basic::IsInRange(midnight) || !basic::IsInRange({midnight.serial + 2.0})) continue;
    for (const Hours& hours : week.hours) {
      turns.push_back(basic::AddSeconds(midnight, hours.from * 60.0));
      turns.push_back(basic::AddSeconds(midnight, hours.to * 60.0));
    }
  }
  std::sort(turns.begin(), turns.end());
  return turns;
}

}  // namespace

std::string Complaint::Text() const {
  std::string text = times;
  for (const std::string& each : {days, hours}) {
    if (!text.empty() && !each.empty()) text += ' ';
    text += each;
  }
  return text;
}

Complaint ScheduleComplaint(const Schedule& schedule) {
  Complaint complaint;
  if (!IsInOrder(schedule)) complaint.times = "The stop must be later than the start.";
  if (!ReadDays(schedule.days)) {
    complaint.days = "Days are written as \"mon-fri\", \"sat,sun\" or \"mon-wed,fri\".";
  }
  if (!ReadHours(schedule.hours)) {
    complaint.hours =
        "Hours are written as \"06:00-22:00\", several with commas between them; past midnight as "
        "\"22:00-06:00\".";
  }
  return complaint;
}

bool IsOpen(const Schedule& schedule, basic::Date now) {
  const auto week = ReadWeek(schedule);
  return week && IsInOrder(schedule) && IsOpen(schedule, *week, now);
}

std::optional<basic::Date> NextChange(const Schedule& schedule, basic::Date after) {
  const auto week = ReadWeek(schedule);
  if (!week || !IsInOrder(schedule)) return std::nullopt;
  const bool isOpen = IsOpen(schedule, *week, after);
  for (const basic::Date turn : Turns(schedule, *week, std::max(after, schedule.start))) {
    if (turn > after && IsOpen(schedule, *week, turn) != isOpen) return turn;
  }
  return std::nullopt;
}

bool IsOver(const Schedule& schedule, basic::Date now) {
  return IsSet(schedule.stop) && now >= schedule.stop;
}

}  // namespace LF2000::modSchedule
