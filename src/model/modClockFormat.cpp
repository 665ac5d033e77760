#include "model/modClockFormat.h"

#include "basic/Date.h"
#include "basic/Format.h"

namespace LF2000::modClockFormat {

bool ShowsTime(std::string_view format) {
  // Two moments that have nothing in common, whatever sign tells of them.
  static const basic::Date one = basic::DateFrom(2001, 1, 1, 1, 1, 1);
  static const basic::Date other = basic::DateFrom(2023, 12, 30, 23, 58, 59);
  return basic::Format(one, format) != basic::Format(other, format);
}

}  // namespace LF2000::modClockFormat
