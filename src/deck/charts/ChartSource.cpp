// The caches of a chart's sources: what stands in c:strCache, c:numCache and their likes.

#include "deck/charts/ChartSource.h"

#include <cmath>

#include "deck/charts/NumberDigits.h"
#include "presentationml/ChartSource.h"

namespace deck {

using presentationml::forEachPoint;
using presentationml::isNumeric;
using presentationml::pointNumber;
using presentationml::pointsIn;
using presentationml::referenceIn;

namespace {

pugi::xml_node append(pugi::xml_node parent, const char* name) { return parent.append_child(name); }

void appendValue(pugi::xml_node parent, const char* name, std::size_t value) {
  append(parent, name).append_attribute("val") = static_cast<unsigned long long>(value);
}

void appendPoint(pugi::xml_node points, std::size_t index, const char* text) {
  pugi::xml_node point = append(points, "c:pt");
  point.append_attribute("idx") = static_cast<unsigned long long>(index);
  append(point, "c:v").append_child(pugi::node_pcdata).set_value(text);
}

/// Empties a source of data and gives what is to hold its points.
pugi::xml_node beginPoints(pugi::xml_node source, bool isNumber, const basic::Reference* place,
                           std::string_view formatCode) {
  source.remove_children();
  pugi::xml_node points;
  if (place != nullptr) {
    pugi::xml_node reference = append(source, isNumber ? "c:numRef" : "c:strRef");
    append(reference, "c:f").text() = basic::ReferenceText(*place).c_str();
    points = append(reference, isNumber ? "c:numCache" : "c:strCache");
  } else {
    points = append(source, isNumber ? "c:numLit" : "c:strLit");
  }
  if (isNumber) append(points, "c:formatCode").text() = std::string(formatCode).c_str();
  return points;
}

std::string formatCodeOf(pugi::xml_node source) {
  const std::string code = pointsIn(source).child_value("c:formatCode");
  return code.empty() ? "General" : code;
}

}  // namespace

pugi::xml_node categoriesOf(pugi::xml_node series) {
  const pugi::xml_node categories = series.child("c:cat");
  return categories ? categories : series.child("c:xVal");
}

pugi::xml_node valuesOf(pugi::xml_node series) {
  const pugi::xml_node values = series.child("c:val");
  return values ? values : series.child("c:yVal");
}

bool hasLevels(pugi::xml_node source) {
  const pugi::xml_node points = pointsIn(source);
  return points.next_sibling("c:lvl") || points.previous_sibling("c:lvl");
}

std::optional<basic::Reference> placeOf(pugi::xml_node source) {
  auto place = basic::ParseReference(referenceIn(source).child_value("c:f"));
  if (place && place->sheet && place->sheet->starts_with('[')) {
    // The workbook's name; the only one that a chart's own formula can mean is its own.
    place->sheet->erase(0, place->sheet->find(']') + 1);
  }
  return place;
}

std::vector<Category> categoriesIn(pugi::xml_node source, std::size_t count) {
  std::vector<Category> categories(count);
  const pugi::xml_node points = pointsIn(source);
  forEachPoint(points, [&](std::size_t index, const char* text) {
    if (index >= count) return;
    if (!isNumeric(points)) {
      categories[index] = std::string(text);
    } else if (const auto number = pointNumber(text)) {
      categories[index] = *number;
    }
  });
  return categories;
}

std::vector<double> valuesIn(pugi::xml_node source, std::size_t count) {
  std::vector<double> values(count, std::nan(""));
  forEachPoint(pointsIn(source), [&](std::size_t index, const char* text) {
    if (index < count) values[index] = pointNumber(text).value_or(std::nan(""));
  });
  return values;
}

void fillValues(pugi::xml_node source, const std::vector<double>& values, const basic::Reference* place) {
  const std::string formatCode = formatCodeOf(source);
  const pugi::xml_node points = beginPoints(source, true, place, formatCode);
  appendValue(points, "c:ptCount", values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!std::isnan(values[i])) appendPoint(points, i, NumberDigits(values[i]).text());
  }
}

void fillCategories(pugi::xml_node source, const ChartData& data, const basic::Reference* place) {
  const std::string formatCode = isNumeric(pointsIn(source)) ? formatCodeOf(source) : "General";
  const bool isNumber = data.hasNumericCategories();
  const pugi::xml_node points = beginPoints(source, isNumber, place, formatCode);
  appendValue(points, "c:ptCount", data.rows());
  for (std::size_t i = 0; i < data.rows(); ++i) {
    if (const auto* text = std::get_if<std::string>(&data.categories[i]))
      appendPoint(points, i, text->c_str());
    if (const auto* number = std::get_if<double>(&data.categories[i])) {
      appendPoint(points, i, NumberDigits(*number).text());
    }
  }
}

void fillName(pugi::xml_node source, const std::string& name, const basic::Reference* place) {
  if (place == nullptr) {
    source.remove_children();
    append(source, "c:v").text() = name.c_str();
    return;
  }
  const pugi::xml_node points = beginPoints(source, false, place, {});
  appendValue(points, "c:ptCount", 1);
  appendPoint(points, 0, name.c_str());
}

}  // namespace deck
