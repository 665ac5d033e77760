#include "render/geometry/XmlValues.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace render {

namespace {

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\n' || text.front() == '\t'))
    text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\n' || text.back() == '\t'))
    text.remove_suffix(1);
  return text;
}

/// Larger values than these are no shape's; they would only overflow later.
constexpr double Largest = 1e12;

}  // namespace

std::optional<double> parseNumber(std::string_view text) {
  text = trimmed(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size() || !std::isfinite(value)) return {};
  if (std::abs(value) > Largest) return {};
  return value;
}

std::optional<double> numberOf(pugi::xml_attribute attribute) { return parseNumber(attribute.value()); }

int wholeOf(pugi::xml_attribute attribute, int otherwise, int least, int most) {
  const auto value = numberOf(attribute);
  return value ? static_cast<int>(std::clamp<double>(*value, least, most)) : otherwise;
}

std::optional<double> emuOf(pugi::xml_attribute attribute) {
  const auto text = trimmed(attribute.value());
  if (text.size() > 2) {
    static constexpr struct {
      std::string_view unit;
      double emu;
    } units[] = {{"mm", 36000}, {"cm", 360000}, {"in", 914400},
                 {"pt", 12700}, {"pc", 152400}, {"pi", 152400}};
    for (const auto& [unit, emu] : units) {
      if (!text.ends_with(unit)) continue;
      const auto value = parseNumber(text.substr(0, text.size() - 2));
      return value ? std::optional(*value * emu) : std::nullopt;
    }
  }
  return parseNumber(text);
}

std::optional<double> shareOf(pugi::xml_attribute attribute) {
  const auto text = trimmed(attribute.value());
  if (text.ends_with('%')) {
    const auto value = parseNumber(text.substr(0, text.size() - 1));
    return value ? std::optional(*value / 100) : std::nullopt;
  }
  const auto value = parseNumber(text);
  return value ? std::optional(*value / 100000) : std::nullopt;
}

std::optional<double> degreesOf(pugi::xml_attribute attribute) {
  const auto value = numberOf(attribute);
  return value ? std::optional(std::fmod(*value / 60000, 360.0)) : std::nullopt;
}

std::optional<bool> boolOf(pugi::xml_attribute attribute) {
  const std::string_view text = attribute.value();
  if (text == "1" || text == "true" || text == "on") return true;
  if (text == "0" || text == "false" || text == "off") return false;
  return {};
}

}  // namespace render
