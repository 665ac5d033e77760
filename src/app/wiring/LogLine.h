#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "basic/Date.h"

namespace app {

/// An entry of the errors log or the debug log, taken apart: "11/22/2026 4:03:11 PM.500 Error …
/// (-2147221489-LF2000)".
struct LogLine {
  /// As it stands there, in the words of the country of who wrote it; empty when the line goes on with the
  /// one before.
  std::string_view time;
  /// Without number and source of the error, which are for programmers.
  std::string_view text;

  explicit LogLine(std::string_view line);
  /// Nothing when the time cannot be read in this country.
  [[nodiscard]] std::optional<basic::Date> date() const;
};

/// The text without number and source of an error behind it.
std::string_view withoutErrorNumber(std::string_view text);

}  // namespace app
