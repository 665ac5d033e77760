#include "render/chart/ChartData.h"

#include <algorithm>
#include <cmath>

#include "basic/Strings.h"
#include "presentationml/ChartSource.h"
#include "render/geometry/XmlValues.h"

// The values that a chart part keeps, as far as they can be drawn.

namespace render {

namespace {

/// Missing points at the end that a chart keeps room for.
constexpr std::size_t MostMissing = 65536;
/// Larger numbers overflow once they are added up.
constexpr double Largest = 1e200;

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
  const auto number = presentationml::pointNumber(text);
  return number && std::abs(*number) <= Largest ? number : std::nullopt;
}

bool ChartData::isThere(std::size_t place) {
  if (place < room_) return true;
  ++misfits_;
  return false;
}

std::size_t ChartData::countOf(pugi::xml_node points, std::size_t found) {
  return std::max(found, std::min(MostMissing, presentationml::statedCount(points)));
}

ChartNumbers ChartData::numbers(pugi::xml_node source) {
  ChartNumbers numbers;
  const auto cache = presentationml::cacheIn(source);
  numbers.format = shortened(cache.child_value("c:formatCode"));
  presentationml::forEachPoint(cache, [&](std::size_t place, std::string_view text) {
    if (!isThere(place)) return;
    const auto value = chartNumber(text);
    // Errors of the worksheet are gaps as empty cells are.
    if (!value && !text.empty() && text.front() != '#') ++misfits_;
    if (numbers.values.size() <= place) numbers.values.resize(place + 1, NoValue);
    numbers.values[place] = value.value_or(NoValue);
  });
  numbers.values.resize(std::min(room_, countOf(cache, numbers.values.size())), NoValue);
  room_ -= numbers.values.size();
  return numbers;
}

std::vector<std::string> ChartData::texts(pugi::xml_node points) {
  std::vector<std::string> texts;
  presentationml::forEachPoint(points, [&](std::size_t place, const char* text) {
    if (!isThere(place)) return;
    if (texts.size() <= place) texts.resize(place + 1);
    texts[place] = text;
  });
  texts.resize(std::min(room_, countOf(points, texts.size())));
  room_ -= texts.size();
  return texts;
}

ChartCategories ChartData::categories(pugi::xml_node source) {
  ChartCategories categories;
  const auto cache = presentationml::cacheIn(source);
  if (presentationml::isNumeric(cache)) {
    auto numbers = this->numbers(source);
    categories.numbers = std::move(numbers.values);
    categories.format = std::move(numbers.format);
  } else if (cache.child("c:lvl")) {
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
  presentationml::forEachPoint(presentationml::cacheIn(tx), [&](std::size_t, const char* piece) {
    if (!text.empty()) text += ' ';
    text += piece;
  });
  return text;
}

}  // namespace render
