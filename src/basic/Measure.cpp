#include "basic/Measure.h"

#include <charconv>
#include <cmath>

namespace basic {

namespace {

/// Larger values than these are no shape's; they would only overflow later.
constexpr double Largest = 1e12;

}  // namespace

std::string_view withoutXmlBlanks(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\n' || text.front() == '\t'))
    text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\n' || text.back() == '\t'))
    text.remove_suffix(1);
  return text;
}

std::optional<double> parseNumber(std::string_view text) {
  text = withoutXmlBlanks(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size() || !std::isfinite(value)) return {};
  if (std::abs(value) > Largest) return {};
  return value;
}

std::optional<double> parseEmu(std::string_view text) {
  text = withoutXmlBlanks(text);
  if (text.size() > 2) {
    static constexpr struct {
      std::string_view unit;
      double emu;
    } units[] = {{"mm", 36000},       {"cm", 360000}, {"in", 914400},
                 {"pt", EmuPerPoint}, {"pc", 152400}, {"pi", 152400}};
    for (const auto& [unit, emu] : units) {
      if (!text.ends_with(unit)) continue;
      const auto value = parseNumber(text.substr(0, text.size() - 2));
      return value ? std::optional(*value * emu) : std::nullopt;
    }
  }
  return parseNumber(text);
}

}  // namespace basic
