#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace PowerPoint {

/// PpDateTimeFormat: how a date or time field shows the present.
// NOLINTBEGIN(readability-identifier-naming): the object model's own names, by the case of their letters.
enum class DateTimeFormat : std::int32_t {
  Mdyy = 1,
  ddddMMMMddyyyy = 2,
  dMMMMyyyy = 3,
  MMMMdyyyy = 4,
  dMMMyy = 5,
  MMMMyy = 6,
  MMyy = 7,
  MMddyyHmm = 8,
  MMddyyhmmAMPM = 9,
  Hmm = 10,
  Hmmss = 11,
  hmmAMPM = 12,
  hmmssAMPM = 13,
};
// NOLINTEND(readability-identifier-naming)

/// The same as format pictures (ECMA-376 part 1, 21.1.2.2.4), in the order of the numbers. They hold for
/// English texts; in another language a field has that one's order and signs.
inline constexpr std::array<std::string_view, 13> DateTimePictures = {"m/d/yyyy",
                                                                      "dddd, mmmm d, yyyy",
                                                                      "d mmmm yyyy",
                                                                      "mmmm d, yyyy",
                                                                      "d-mmm-yy",
                                                                      "mmmm yy",
                                                                      "mmm-yy",
                                                                      "m/d/yyyy h:nn AM/PM",
                                                                      "m/d/yyyy h:nn:ss AM/PM",
                                                                      "hh:nn",
                                                                      "hh:nn:ss",
                                                                      "h:nn AM/PM",
                                                                      "h:nn:ss AM/PM"};

[[nodiscard]] inline constexpr std::string_view PictureOf(DateTimeFormat format) {
  return DateTimePictures[static_cast<std::size_t>(format) - 1];
}

}  // namespace PowerPoint
