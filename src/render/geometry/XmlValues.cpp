#include "render/geometry/XmlValues.h"

#include <algorithm>
#include <cmath>

#include "basic/Measure.h"

namespace render {

std::optional<double> parseNumber(std::string_view text) { return basic::parseNumber(text); }

std::optional<double> numberOf(pugi::xml_attribute attribute) { return parseNumber(attribute.value()); }

int wholeOf(pugi::xml_attribute attribute, int otherwise, int least, int most) {
  const auto value = numberOf(attribute);
  return value ? static_cast<int>(std::clamp<double>(*value, least, most)) : otherwise;
}

std::optional<double> emuOf(pugi::xml_attribute attribute) { return basic::parseEmu(attribute.value()); }

std::optional<double> shareOf(pugi::xml_attribute attribute) {
  const auto text = basic::withoutXmlBlanks(attribute.value());
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
