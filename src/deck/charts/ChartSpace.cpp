// How data of any size become the series of a chart that its author made: which series there are, in which
// order, and what goes when they do.

#include "deck/charts/ChartSpace.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

#include "basic/numberformat/NumberFormat.h"
#include "deck/Failure.h"
#include "deck/charts/ChartSource.h"
#include "opc/Xml.h"
#include "presentationml/ChartSource.h"
#include "presentationml/ShapeNode.h"

namespace deck {

using presentationml::isNumeric;
using presentationml::localName;
using presentationml::pointsIn;
using presentationml::referenceIn;
using presentationml::statedCount;

namespace {

template <typename Visit>
void forEachGroup(pugi::xml_node plotArea, const Visit& visit) {
  for (pugi::xml_node child = plotArea.first_child(); child;) {
    const pugi::xml_node group = child;
    child = child.next_sibling();
    if (localName(group).ends_with("Chart")) visit(group);
  }
}

/// A series' values, put where the schema wants them when they are missing.
pugi::xml_node valuesFor(pugi::xml_node series, const char* name) {
  static constexpr std::array<const char*, 5> Behind{"c:bubbleSize", "c:bubble3D", "c:smooth", "c:shape",
                                                     "c:extLst"};
  if (const pugi::xml_node values = valuesOf(series)) return values;
  const pugi::xml_node behind = series.find_child([](pugi::xml_node child) {
    return std::any_of(Behind.begin(), Behind.end(),
                       [&](const char* n) { return opc::xml::isNamed(child, n); });
  });
  return behind ? series.insert_child_before(name, behind) : series.append_child(name);
}

/// Formatting of points that are no more.
void dropPointsFrom(pugi::xml_node parent, const char* name, std::size_t count) {
  for (pugi::xml_node point = parent.child(name); point;) {
    const pugi::xml_node next = point.next_sibling(name);
    if (point.child("c:idx").attribute("val").as_ullong() >= count) parent.remove_child(point);
    point = next;
  }
}

/// What a further series has in common with the one before it: all that is not
/// formatting of its own. Whether markers or the line are there belongs to the
/// kind of chart.
bool isOfKind(pugi::xml_node child) {
  static constexpr std::array<const char*, 13> Kept{
      "c:idx",        "c:order",  "c:tx",    "c:invertIfNegative", "c:cat",   "c:val", "c:xVal", "c:yVal",
      "c:bubbleSize", "c:smooth", "c:shape", "c:bubble3D",         "c:marker"};
  if (opc::xml::isNamed(child, "c:marker")) {
    return std::string_view(child.child("c:symbol").attribute("val").value()) == "none";
  }
  return std::any_of(Kept.begin(), Kept.end(),
                     [&](const char* name) { return opc::xml::isNamed(child, name); });
}

void setValue(pugi::xml_node parent, const char* name, unsigned value) {
  pugi::xml_node child = parent.child(name);
  if (!child.attribute("val")) child.append_attribute("val");
  child.attribute("val") = value;
}

unsigned valueOf(pugi::xml_node parent, const char* name) {
  return parent.child(name).attribute("val").as_uint();
}

basic::Area united(const basic::Area& a, const basic::Area& b) {
  return {std::min(a.firstRow, b.firstRow), std::max(a.lastRow, b.lastRow),
          std::min(a.firstColumn, b.firstColumn), std::max(a.lastColumn, b.lastColumn)};
}

}  // namespace

basic::Area ChartBlock::area(const ChartData& data) const {
  return {firstRow, firstRow + static_cast<std::uint32_t>(data.rows()), firstColumn,
          firstColumn + static_cast<std::uint32_t>(data.columns.size())};
}

ChartSpace::ChartSpace(pugi::xml_node root) {
  plotArea_ = root.child("c:chart").child("c:plotArea");
  if (!opc::xml::isNamed(root, "c:chartSpace") || !plotArea_) fail("its part holds no chart");
  bool isLevelled = false;
  forEachGroup(plotArea_, [&](pugi::xml_node group) {
    isBubble_ = isBubble_ || opc::xml::isNamed(group, "c:bubbleChart");
    isStock_ = isStock_ || opc::xml::isNamed(group, "c:stockChart");
    for (pugi::xml_node series : group.children("c:ser")) {
      series_.push_back(series);
      isLevelled = isLevelled || hasLevels(categoriesOf(series));
    }
  });
  if (series_.empty()) fail("it has no series whose place and kind the data could take");
  if (isLevelled) fail("its categories have several levels; give it one column of categories in PowerPoint");
  isLiteral_ = !referenceIn(valuesOf(series_.front()));
  sortByColumns();
}

void ChartSpace::sortByColumns() {
  std::map<std::uint32_t, pugi::xml_node> byColumn;
  std::optional<std::string> sheet;
  for (const pugi::xml_node series : series_) {
    const auto place = placeOf(valuesOf(series));
    if (!place || place->area.firstColumn != place->area.lastColumn) break;
    if (byColumn.empty()) sheet = place->sheet;
    if (place->sheet == sheet) byColumn.emplace(place->area.firstColumn, series);
  }
  if (byColumn.size() == series_.size()) {
    std::transform(byColumn.begin(), byColumn.end(), series_.begin(), [](const auto& e) { return e.second; });
    return;
  }
  std::stable_sort(series_.begin(), series_.end(), [](pugi::xml_node a, pugi::xml_node b) {
    return valueOf(a, "c:order") < valueOf(b, "c:order");
  });
}

CategoryKind ChartSpace::categories() const {
  const pugi::xml_node series = series_.front();
  const pugi::xml_node points = pointsIn(categoriesOf(series));
  if (!points) return series.child("c:yVal") ? CategoryKind::XValues : CategoryKind::Text;
  if (!isNumeric(points)) return CategoryKind::Text;
  if (series.child("c:xVal")) return CategoryKind::XValues;
  const bool isDate = basic::NumberFormat(points.child_value("c:formatCode")).isDateTime();
  return isDate ? CategoryKind::Date : CategoryKind::Number;
}

ChartBlock ChartSpace::block() const {
  ChartBlock block;
  bool isPlaced = false;
  const auto take = [&](pugi::xml_node source) {
    const auto place = placeOf(source);
    if (!place || (isPlaced && place->sheet != block.sheet)) return false;
    block.used = isPlaced ? united(block.used, place->area) : place->area;
    block.sheet = place->sheet;
    isPlaced = true;
    return true;
  };
  bool hasNames = false;
  bool hasCategories = false;
  for (const pugi::xml_node series : series_) {
    take(valuesOf(series));
    hasNames = take(series.child("c:tx")) || hasNames;
    hasCategories = take(categoriesOf(series)) || hasCategories;
    take(series.child("c:bubbleSize"));
  }
  block.firstRow = block.used.firstRow;
  block.firstColumn = block.used.firstColumn;
  // Header and categories stand before the values, where there is room.
  if (isPlaced && !hasNames && block.firstRow > 1) --block.firstRow;
  if (isPlaced && !hasCategories && block.firstColumn > 1) --block.firstColumn;
  return block;
}

ChartData ChartSpace::data() const {
  std::size_t rows = 0;
  pugi::xml_node categories;
  for (const pugi::xml_node series : series_) {
    rows = std::max(
        {rows, statedCount(pointsIn(categoriesOf(series))), statedCount(pointsIn(valuesOf(series)))});
    if (!categories) categories = categoriesOf(series);
  }
  ChartData data;
  data.categories = categoriesIn(categories, rows);
  for (const pugi::xml_node series : series_) {
    const pugi::xml_node name = series.child("c:tx");
    const pugi::xml_node points = pointsIn(name);
    data.columns.push_back({points ? points.child("c:pt").child_value("c:v") : name.child_value("c:v"),
                            valuesIn(valuesOf(series), rows)});
    if (const pugi::xml_node sizes = series.child("c:bubbleSize")) {
      data.columns.push_back({{}, valuesIn(sizes, rows)});
    }
  }
  return data;
}

std::size_t ChartSpace::seriesFor(const ChartData& data) const {
  const std::size_t count = isBubble_ ? (data.columns.size() + 1) / 2 : data.columns.size();
  if (isStock_ && count != series_.size()) {
    fail("it is a stock chart of " + std::to_string(series_.size()) +
         " series and needs as many columns of values; the data have " + std::to_string(count));
  }
  return count;
}

void ChartSpace::fill(const ChartData& data, const ChartBlock& block) {
  resize(seriesFor(data));
  for (std::size_t i = 0; i < series_.size(); ++i) fillSeries(i, data, block);
}

void ChartSpace::resize(std::size_t count) {
  while (series_.size() < count) addSeries();
  if (series_.size() == count) return;
  for (std::size_t i = count; i < series_.size(); ++i) series_[i].parent().remove_child(series_[i]);
  series_.resize(count);
  removeEmptyGroups();
}

void ChartSpace::addSeries() {
  const pugi::xml_node last = series_.back();
  unsigned index = 0;
  unsigned order = 0;
  for (const pugi::xml_node series : series_) {
    index = std::max(index, valueOf(series, "c:idx") + 1);
    order = std::max(order, valueOf(series, "c:order") + 1);
  }
  pugi::xml_node added = last.parent().insert_copy_after(last, last);
  const bool hidesLine = opc::xml::isNamed(last.parent(), "c:scatterChart") &&
                         last.child("c:spPr").child("a:ln").child("a:noFill");
  for (pugi::xml_node child = added.first_child(); child;) {
    const pugi::xml_node next = child.next_sibling();
    if (!isOfKind(child)) added.remove_child(child);
    child = next;
  }
  setValue(added, "c:idx", index);
  setValue(added, "c:order", order);
  if (hidesLine) {
    added.insert_child_after("c:spPr", added.child(added.child("c:tx") ? "c:tx" : "c:order"))
        .append_child("a:ln")
        .append_child("a:noFill");
  }
  series_.push_back(added);
}

void ChartSpace::removeEmptyGroups() {
  std::set<std::string> axes;
  forEachGroup(plotArea_, [&](pugi::xml_node group) {
    if (!group.child("c:ser")) return;
    for (pugi::xml_node axis : group.children("c:axId")) axes.insert(axis.attribute("val").value());
  });
  forEachGroup(plotArea_, [&](pugi::xml_node group) {
    if (!group.child("c:ser")) plotArea_.remove_child(group);
  });
  for (pugi::xml_node child = plotArea_.first_child(); child;) {
    const pugi::xml_node axis = child;
    child = child.next_sibling();
    if (localName(axis).ends_with("Ax") && !axes.contains(axis.child("c:axId").attribute("val").value())) {
      plotArea_.remove_child(axis);
    }
  }
}

void ChartSpace::fillSeries(std::size_t index, const ChartData& data, const ChartBlock& block) {
  pugi::xml_node series = series_[index];
  const bool isXY = series.child("c:yVal") || series.child("c:xVal") || isBubble_;
  const std::size_t column = isBubble_ ? 2 * index : index;
  const auto at = [&](std::size_t blockColumn, bool isHeader) {
    const basic::Area area = block.area(data);
    const auto place = area.firstColumn + static_cast<std::uint32_t>(blockColumn);
    return basic::Reference{
        block.sheet,
        {area.firstRow + (isHeader ? 0 : 1), isHeader ? area.firstRow : area.lastRow, place, place}};
  };
  const auto placed = [&](const basic::Reference& place) { return isLiteral_ ? nullptr : &place; };

  const basic::Reference name = at(column + 1, true);
  const basic::Reference categories = at(0, false);
  const basic::Reference values = at(column + 1, false);
  const pugi::xml_node valueNode = valuesFor(series, isXY ? "c:yVal" : "c:val");
  pugi::xml_node categoryNode = categoriesOf(series);
  if (!categoryNode) categoryNode = series.insert_child_before(isXY ? "c:xVal" : "c:cat", valueNode);
  pugi::xml_node nameNode = series.child("c:tx");
  if (!nameNode) nameNode = series.insert_child_after("c:tx", series.child("c:order"));
  fillName(nameNode, data.columns[column].name, placed(name));
  fillCategories(categoryNode, data, placed(categories));
  fillValues(valueNode, data.columns[column].values, placed(values));
  if (isBubble_) {
    pugi::xml_node sizes = series.child("c:bubbleSize");
    if (!sizes) sizes = series.insert_child_after("c:bubbleSize", valueNode);
    if (column + 1 < data.columns.size()) {
      const basic::Reference place = at(column + 2, false);
      fillValues(sizes, data.columns[column + 1].values, placed(place));
    } else {
      fillValues(sizes, std::vector<double>(data.rows(), 1), nullptr);
    }
  }
  dropPointsFrom(series, "c:dPt", data.rows());
  dropPointsFrom(series.child("c:dLbls"), "c:dLbl", data.rows());
}

void ChartSpace::clear() {
  for (const pugi::xml_node series : series_) {
    for (pugi::xml_node source : series.children()) {
      if (pugi::xml_node points = pointsIn(source)) {
        while (points.remove_child("c:pt")) {
        }
      }
    }
  }
}

}  // namespace deck
