#pragma once

#include <cstddef>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "basic/CellReference.h"
#include "deck/charts/ChartData.h"

// A source of data of a series (ECMA-376 part 1, 21.2: c:tx, c:cat, c:val, c:xVal, c:yVal,
// c:bubbleSize): cells of the chart's workbook with a cache of what they hold, or data that stand in the
// chart alone. presentationml/ChartSource.h finds them; this is what a chart that is refilled needs besides.
// Functions take null nodes and find nothing in them.

namespace deck {

/// The sources of a series, also of one with X and Y values.
pugi::xml_node categoriesOf(pugi::xml_node series);
pugi::xml_node valuesOf(pugi::xml_node series);

/// Whether categories are nested.
bool hasLevels(pugi::xml_node source);
/// The cells that it names, without the name of a workbook; nothing when it names none.
std::optional<basic::Reference> placeOf(pugi::xml_node source);
/// The first `count` points. What has no value or none that can be read is a gap.
std::vector<Category> categoriesIn(pugi::xml_node source, std::size_t count);
std::vector<double> valuesIn(pugi::xml_node source, std::size_t count);

/// Put other data into a source, with the format of its numbers. They come from `place`; without one they
/// stand in the chart alone.
void fillValues(pugi::xml_node source, const std::vector<double>& values, const basic::Reference* place);
void fillCategories(pugi::xml_node source, const ChartData& data, const basic::Reference* place);
void fillName(pugi::xml_node source, const std::string& name, const basic::Reference* place);

}  // namespace deck
