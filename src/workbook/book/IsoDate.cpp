#include "workbook/book/IsoDate.h"

#include <charconv>

#include "basic/Date.h"

namespace workbook {
namespace {

/// Takes a number, of `digits` digits at least, off the front; and the separator
/// before it, if that is given.
std::optional<double> take(std::string_view& text, std::size_t digits, char separator = 0) {
  std::string_view rest = text;
  if (separator != 0) {
    if (!rest.starts_with(separator)) return std::nullopt;
    rest.remove_prefix(1);
  }
  int value = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
  const auto size = static_cast<std::size_t>(end - rest.data());
  if (error != std::errc() || value < 0 || size != digits) return std::nullopt;
  text = rest.substr(size);
  return value;
}

/// A fraction of a second, with its point.
double takeFraction(std::string_view& text) {
  if (!text.starts_with('.')) return 0.0;
  double value = 0.0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  if (error != std::errc()) return 0.0;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return value;
}

/// Days since the beginning of a date system.
double daysSince(basic::DateSystem system, double serial) {
  if (system == basic::DateSystem::From1904) return serial - 1462.0;
  return serial < 61.0 ? serial - 1.0 : serial;  // 29 February 1900, which never was
}

}  // namespace

std::optional<double> parseIsoDate(std::string_view text, basic::DateSystem system) {
  constexpr double SecondsOfDay = 86400.0;
  double serial = 0.0;
  const bool hasDate = text.size() > 4 && text[4] == '-';
  if (hasDate) {
    const auto year = take(text, 4);
    const auto month = take(text, 2, '-');
    const auto day = take(text, 2, '-');
    if (!year || !month || !day) return std::nullopt;
    const auto whole = [](double number) { return static_cast<int>(number); };
    if (!basic::IsValidDay(whole(*year), whole(*month), whole(*day))) return std::nullopt;
    serial = daysSince(system, basic::DateFrom(whole(*year), whole(*month), whole(*day)).serial);
    if (text.empty()) return serial;
  }
  if (text.starts_with('T')) text.remove_prefix(1);
  const auto hour = take(text, 2);
  const auto minute = take(text, 2, ':');
  if (!hour || !minute) return std::nullopt;
  const double second = take(text, 2, ':').value_or(0.0) + takeFraction(text);
  if (text == "Z") text = {};
  if (!text.empty() || *hour > 24 || *minute > 59 || second >= 61.0) return std::nullopt;
  return serial + (*hour * 3600.0 + *minute * 60.0 + second) / SecondsOfDay;
}

}  // namespace workbook
