#include "app/wiring/LogLine.h"

#include <algorithm>
#include <cctype>

#include "basic/Conversion.h"
#include "basic/Error.h"

namespace app {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Where ".ddd " stands behind date and time; npos in a line that has none.
std::size_t endOfTime(std::string_view line) {
  constexpr std::size_t LongestTime = 40;
  if (line.empty() || !isDigit(line.front())) return std::string_view::npos;
  for (std::size_t i = 0; i + 4 < std::min(line.size(), LongestTime); ++i) {
    if (line[i] != '.' || !isDigit(line[i + 1]) || !isDigit(line[i + 2]) || !isDigit(line[i + 3])) continue;
    if (line[i + 4] == ' ') return i;
  }
  return std::string_view::npos;
}

}  // namespace

LogLine::LogLine(std::string_view line) {
  constexpr std::size_t Milliseconds = std::string_view(".500 ").size();
  while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
  if (const std::size_t end = endOfTime(line); end != std::string_view::npos) {
    time = line.substr(0, end);
    line.remove_prefix(end + Milliseconds);
  }
  text = withoutErrorNumber(line);
}

std::optional<basic::Date> LogLine::date() const try {
  return basic::CDate(time);
} catch (const basic::Error&) {
  return std::nullopt;
}

std::string_view withoutErrorNumber(std::string_view text) {
  const std::size_t open = text.rfind(" (");
  if (open == std::string_view::npos || !text.ends_with(')')) return text;
  std::string_view number = text.substr(open + 2);
  if (number.starts_with('-')) number.remove_prefix(1);
  const std::size_t digits = number.find_first_not_of("0123456789");
  const bool isNumber = digits > 0 && digits != std::string_view::npos && number[digits] == '-';
  return isNumber && number.find(' ') == std::string_view::npos ? text.substr(0, open) : text;
}

}  // namespace app
