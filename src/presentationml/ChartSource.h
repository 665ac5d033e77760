#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <pugixml.hpp>
#include <string_view>

// What a chart part keeps of the data of a series (ECMA-376 part 1, 21.2: c:tx, c:cat, c:val, c:xVal, c:yVal,
// c:bubbleSize): a cache of the cells that it refers to, or data that stand in the chart alone. Functions
// take null nodes and find nothing in them.

namespace presentationml {

/// Rows of a worksheet; no source has more points.
inline constexpr std::size_t MostPoints = 1048576;

/// c:strRef, c:numRef or c:multiLvlStrRef of a source; null when its data stand in the chart alone.
pugi::xml_node referenceIn(pugi::xml_node source);
/// c:numCache, c:strCache or c:multiLvlStrCache, or c:numLit or c:strLit.
pugi::xml_node cacheIn(pugi::xml_node source);
/// What holds the points of a source: its cache, or the innermost level of one with several.
pugi::xml_node pointsIn(pugi::xml_node source);
/// Whether such points are numbers.
bool isNumeric(pugi::xml_node points);
/// How many points there are, those without a value included, as it is stated (c:ptCount); MostPoints at
/// most.
std::size_t statedCount(pugi::xml_node points);

/// The number in a point's text; nothing for text, for an error of the worksheet, and beyond what is finite.
std::optional<double> pointNumber(std::string_view text);

/// Where no point can be.
inline constexpr std::size_t NoPlace = std::numeric_limits<std::size_t>::max();
/// The place of a c:pt; NoPlace when it is none or not below MostPoints.
std::size_t placeOfPoint(pugi::xml_node point);

/// Calls visit(place, text) for the points in the order of the file.
template <typename Visit>
void forEachPoint(pugi::xml_node points, const Visit& visit) {
  for (const pugi::xml_node point : points.children("c:pt"))
    visit(placeOfPoint(point), point.child_value("c:v"));
}

}  // namespace presentationml
