#include "app/commands/ClockFormat.h"

#include "app/wiring/Failure.h"
#include "model/modClockFormat.h"

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
  if (LF2000::modClockFormat::ShowsTime(format)) return;
  throw UsageError("link: the clock format '" + format +
                   "' holds no sign of a date or a time. Signs are:" + Signs);
}

}  // namespace app
