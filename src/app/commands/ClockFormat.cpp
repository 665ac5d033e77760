#include "app/commands/ClockFormat.h"

#include "app/wiring/Failure.h"
#include "basic/Date.h"
#include "basic/Format.h"

namespace app {

namespace {

constexpr const char* Signs =
    "\n  h hh   hour       d dd       day        yy yyyy        year"
    "\n  n nn   minute     ddd dddd   weekday    AM/PM          half of the day"
    "\n  s ss   second     m mm       month      ddddd dddddd   the country's short and long date"
    "\n                    mmm mmmm   its name   ttttt          the country's time"
    "\nExamples: \"hh:nn\", \"hh:nn:ss\", \"h:nn AM/PM\", \"dddd, d mmmm yyyy\", \"Long Date\"."
    "\nWords in quotes stand for themselves: '\"Today is\" dddd'.";

}  // namespace

void requireClockFormat(const std::string& format) {
  // Two moments that have nothing in common, whatever sign tells of them.
  static const basic::Date one = basic::DateFrom(2001, 1, 1, 1, 1, 1);
  static const basic::Date other = basic::DateFrom(2023, 12, 30, 23, 58, 59);
  if (basic::Format(one, format) != basic::Format(other, format)) return;
  throw UsageError("link: the clock format '" + format +
                   "' holds no sign of a date or a time. Signs are:" + Signs);
}

}  // namespace app
