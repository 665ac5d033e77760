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

namespace {

/// Whether the picture tells two moments apart.
bool TellsApart(std::string_view format, basic::Date one, basic::Date other) {
  return basic::Format(one, format) != basic::Format(other, format);
}

}  // namespace

std::optional<PowerPoint::DateTimeFormat> FieldFor(std::string_view format) {
  using PowerPoint::DateTimeFormat;
  if (!ShowsTime(format)) return std::nullopt;
  // A single figure, and an afternoon with two of each.
  const basic::Date early = basic::DateFrom(2001, 2, 3, 4, 5, 6);
  const basic::Date late = basic::DateFrom(2023, 12, 30, 23, 58, 59);
  for (std::size_t i = 0; i < PowerPoint::DateTimePictures.size(); ++i) {
    const std::string_view picture = PowerPoint::DateTimePictures[i];
    if (basic::Format(early, format) == basic::Format(early, picture) &&
        basic::Format(late, format) == basic::Format(late, picture)) {
      return static_cast<DateTimeFormat>(i + 1);
    }
  }
  const bool hasDay = TellsApart(format, early, basic::DateFrom(2001, 2, 4, 4, 5, 6));
  const bool hasHour = TellsApart(format, early, basic::DateFrom(2001, 2, 3, 5, 5, 6));
  const bool hasSecond = TellsApart(format, early, basic::DateFrom(2001, 2, 3, 4, 5, 7));
  if (hasDay && hasHour) return hasSecond ? DateTimeFormat::MMddyyhmmAMPM : DateTimeFormat::MMddyyHmm;
  if (hasDay) return DateTimeFormat::Mdyy;
  if (hasSecond) return DateTimeFormat::Hmmss;
  return hasHour ? DateTimeFormat::Hmm : DateTimeFormat::MMMMyy;
}

}  // namespace LF2000::modClockFormat
