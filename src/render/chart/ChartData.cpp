#include "render/chart/ChartData.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "basic/Strings.h"
#include "render/geometry/XmlValues.h"

namespace render {

namespace {

/// Rows of a worksheet.
constexpr std::size_t MostPoints = 1048576;
/// Missing points at the end that a chart keeps room for.
constexpr std::size_t MostMissing = 65536;
/// Larger numbers overflow once they are added up.
constexpr double Largest = 1e200;

pugi::xml_node firstOf(pugi::xml_node parent, std::initializer_list<const char*> names) {
  for (const char* name : names) {
    if (const auto child = parent.child(name)) return child;
  }
  return {};
}

pugi::xml_node cacheIn(pugi::xml_node source) {
  if (const auto literal = firstOf(source, {"c:numLit", "c:strLit"})) return literal;
  const auto reference = firstOf(source, {"c:numRef", "c:strRef", "c:multiLvlStrRef"});
  return firstOf(reference, {"c:numCache", "c:strCache", "c:multiLvlStrCache"});
}

}  // namespace

std::string shortened(std::string_view text) { return std::string(basic::Left(text, 255)); }

std::string_view valueOf(pugi::xml_node parent, const char* child) {
  return parent.child(child).attribute("val").value();
}

bool flagOf(pugi::xml_node parent, const char* child, bool otherwise) {
  const auto node = parent.child(child);
  return node ? boolOf(node.attribute("val")).value_or(true) : otherwise;
}

std::optional<double> chartNumber(std::string_view text) {
  while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ') text.remove_prefix(1);
  while (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ') text.remove_suffix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return {};
  if (!(std::abs(value) <= Largest)) return {};
  return value;
}

std::optional<std::size_t> ChartData::indexOf(pugi::xml_node pt) {
  const auto index = numberOf(pt.attribute("idx"));
  if (index && *index >= 0 && *index < static_cast<double>(MostPoints)) {
    const auto place = static_cast<std::size_t>(*index);
    if (place < room_) return place;
  }
  ++misfits_;
  return {};
}

std::size_t ChartData::countOf(pugi::xml_node cache, std::size_t found) {
  const auto stated = numberOf(cache.child("c:ptCount").attribute("val")).value_or(0);
  if (stated <= static_cast<double>(found)) return found;
  return std::max(found, std::min(MostMissing, static_cast<std::size_t>(stated)));
}

ChartNumbers ChartData::numbers(pugi::xml_node source) {
  ChartNumbers numbers;
  const auto cache = cacheIn(source);
  numbers.format = shortened(cache.child_value("c:formatCode"));
  for (const auto pt : cache.children("c:pt")) {
    const auto index = indexOf(pt);
    if (!index) continue;
    const std::string_view text = pt.child_value("c:v");
    const auto value = chartNumber(text);
    // Errors of the worksheet are gaps as empty cells are.
    if (!value && !text.empty() && text.front() != '#') ++misfits_;
    if (numbers.values.size() <= *index) numbers.values.resize(*index + 1, NoValue);
    numbers.values[*index] = value.value_or(NoValue);
  }
  numbers.values.resize(std::min(room_, countOf(cache, numbers.values.size())), NoValue);
  room_ -= numbers.values.size();
  return numbers;
}

std::vector<std::string> ChartData::texts(pugi::xml_node cache) {
  std::vector<std::string> texts;
  for (const auto pt : cache.children("c:pt")) {
    const auto index = indexOf(pt);
    if (!index) continue;
    if (texts.size() <= *index) texts.resize(*index + 1);
    texts[*index] = pt.child_value("c:v");
  }
  texts.resize(std::min(room_, countOf(cache, texts.size())));
  room_ -= texts.size();
  return texts;
}

ChartCategories ChartData::categories(pugi::xml_node source) {
  ChartCategories categories;
  const auto cache = cacheIn(source);
  const std::string_view name = cache.name();
  if (name == "c:numCache" || name == "c:numLit") {
    auto numbers = this->numbers(source);
    categories.numbers = std::move(numbers.values);
    categories.format = std::move(numbers.format);
  } else if (name == "c:multiLvlStrCache") {
    bool isInner = true;
    for (const auto level : cache.children("c:lvl")) {
      auto texts = this->texts(level);
      if (isInner) {
        categories.texts = std::move(texts);
        isInner = false;
        continue;
      }
      // An outer name stands below the first of its group.
      for (std::size_t i = 0; i < std::min(texts.size(), categories.texts.size()); ++i) {
        if (!texts[i].empty()) categories.texts[i] += "\n" + texts[i];
      }
    }
  } else {
    categories.texts = texts(cache);
  }
  return categories;
}

std::string ChartData::text(pugi::xml_node tx) {
  if (const auto v = tx.child("c:v")) return v.child_value();
  std::string text;
  for (const auto pt : cacheIn(tx).children("c:pt")) {
    if (!text.empty()) text += ' ';
    text += pt.child_value("c:v");
  }
  return text;
}

}  // namespace render
