#pragma once

#include <optional>
#include <string>

#include "basic/Date.h"

/// When a distributed presentation is on: what the tags of its distribution say, and what follows for a
/// moment.
///
/// Every moment is the time that the clock on the wall shows, without a zone; whoever asks reads the clock
/// again each time. So where clocks go forward, hours that fall into the gap are left out (02:30-04:00 begins
/// when the clock jumps to 03:00, 02:15-02:45 not at all on that day), and where they go back, what lies in
/// the doubled hour comes twice, the end of a distribution as well. A clock that was set back brings back
/// what belongs to the time that it shows.
namespace LF2000::modSchedule {

struct Schedule {
  /// The first moment, and the first moment no longer. The zero date is no limit.
  basic::Date start;
  basic::Date stop;
  /// "mon-fri", "sat,sun", "mon-wed,fri", "fri-mon"; case and blanks do not count. Empty: every day.
  std::string days;
  /// "06:00-22:00", several with commas; the end is the first moment no longer, "24:00" may be one. Past
  /// midnight ("22:00-06:00") they belong to the day on which they begin, also where that is the last
  /// of its days. Empty: the whole day.
  std::string hours;

  friend bool operator==(const Schedule&, const Schedule&) = default;
};

/// What is wrong with it, as sentences for who wrote it; nothing where all is well.
struct Complaint {
  /// Of the start and the stop together.
  std::string times;
  std::string days;
  std::string hours;

  [[nodiscard]] bool IsEmpty() const { return times.empty() && days.empty() && hours.empty(); }
  /// All of them.
  [[nodiscard]] std::string Text() const;
};
[[nodiscard]] Complaint ScheduleComplaint(const Schedule& schedule);

/// Whether it is on at that moment. One with a complaint never is.
[[nodiscard]] bool IsOpen(const Schedule& schedule, basic::Date now);

/// The first moment later than `after` from which on IsOpen gives another answer than for `after`; nothing
/// when it stays as it is.
[[nodiscard]] std::optional<basic::Date> NextChange(const Schedule& schedule, basic::Date after);

/// Whether it is over at that moment, and for good.
[[nodiscard]] bool IsOver(const Schedule& schedule, basic::Date now);

}  // namespace LF2000::modSchedule
