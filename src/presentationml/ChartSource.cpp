#include "presentationml/ChartSource.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "presentationml/ShapeNode.h"

namespace presentationml {

pugi::xml_node referenceIn(pugi::xml_node source) {
  return source.find_child([](pugi::xml_node child) { return localName(child).ends_with("Ref"); });
}

pugi::xml_node cacheIn(pugi::xml_node source) {
  const pugi::xml_node reference = referenceIn(source);
  return (reference ? reference : source).find_child([](pugi::xml_node child) {
    return localName(child).ends_with("Cache") || localName(child).ends_with("Lit");
  });
}

pugi::xml_node pointsIn(pugi::xml_node source) {
  const pugi::xml_node cache = cacheIn(source);
  const pugi::xml_node level = cache.child("c:lvl");
  return level ? level : cache;
}

bool isNumeric(pugi::xml_node points) { return localName(points).starts_with("num"); }

std::size_t statedCount(pugi::xml_node points) {
  const pugi::xml_node count = points.child("c:ptCount");
  const pugi::xml_node stated = count ? count : points.parent().child("c:ptCount");
  return std::min<std::size_t>(stated.attribute("val").as_ullong(), MostPoints);
}

std::optional<double> pointNumber(std::string_view text) {
  const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::size_t placeOfPoint(pugi::xml_node point) {
  const std::string_view text = point.attribute("idx").value();
  std::size_t place = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), place);
  return error == std::errc() && end == text.data() + text.size() && place < MostPoints ? place : NoPlace;
}

}  // namespace presentationml
