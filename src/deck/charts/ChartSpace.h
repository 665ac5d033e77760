#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "basic/CellReference.h"
#include "deck/charts/ChartData.h"

namespace deck {

/// Where a chart's data lie in its workbook: a block with the header in its first
/// row and the categories in its first column.
struct ChartBlock {
  /// Nothing when the chart does not say: then the first worksheet.
  std::optional<std::string> sheet;
  std::uint32_t firstRow = 1;
  std::uint32_t firstColumn = 1;
  /// The cells that the author's data take up.
  basic::Area used;

  /// What data take up.
  [[nodiscard]] basic::Area area(const ChartData& data) const;
};

/// The data in the XML of a chart (c:chartSpace, ECMA-376 part 1, 21.2): the
/// caches of its series, in the order of the columns that they come from. A
/// bubble chart's columns are Y values and sizes in turn.
class ChartSpace {
 public:
  /// Throws basic::Error with the reason when this is no chart or one that cannot
  /// be refilled.
  explicit ChartSpace(pugi::xml_node root);

  [[nodiscard]] CategoryKind categories() const;
  [[nodiscard]] ChartBlock block() const;
  [[nodiscard]] ChartData data() const;

  /// Refills the chart, which must have its author's series still: series, points
  /// and labels that the data have no place for go, further series get automatic
  /// formatting. Throws when it is of a kind that cannot have as many columns.
  void fill(const ChartData& data, const ChartBlock& block);
  /// Takes the points out of the caches.
  void clear();

 private:
  void sortByColumns();
  [[nodiscard]] std::size_t seriesFor(const ChartData& data) const;
  void resize(std::size_t count);
  void addSeries();
  void removeEmptyGroups();
  void fillSeries(std::size_t index, const ChartData& data, const ChartBlock& block);

  pugi::xml_node plotArea_;
  std::vector<pugi::xml_node> series_;
  bool isBubble_ = false;
  bool isStock_ = false;
  bool isLiteral_ = false;  // the values stand in the chart alone
};

}  // namespace deck
