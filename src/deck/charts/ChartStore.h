#pragma once

#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <unordered_map>

#include "deck/charts/ChartData.h"
#include "deck/charts/ChartSpace.h"
#include "opc/Package.h"

namespace deck {

/// A chart whose data may be replaced: the part with its XML, and the workbook
/// that is embedded with it. The chart is made anew from its author's for every
/// change of data, so that what it looks like depends on the data alone, and the
/// author's is byte for byte what it was when it comes back. The workbook is
/// changed by write() only.
class RefillableChart {
 public:
  /// Throws basic::Error with the reason when the chart cannot be refilled.
  explicit RefillableChart(opc::Part& part);

  [[nodiscard]] const ChartData& data() const { return data_; }
  /// Whether it holds other data than its author's.
  [[nodiscard]] bool isFilled() const { return isFilled_; }
  [[nodiscard]] bool sharesBookWith(const RefillableChart& other) const {
    return book_ != nullptr && book_ == other.book_;
  }
  /// Throws basic::Error with the reason when the chart cannot take the data.
  void check(const MSGraph::Table& table) const { static_cast<void>(chartData(table, categories_)); }
  /// Answer whether anything changed.
  bool fill(const MSGraph::Table& table);
  bool restore();
  /// Brings the workbook up to date.
  void write();

 private:
  void findBook();

  opc::Part& part_;
  opc::Part* book_ = nullptr;  // null: the chart has no workbook, its data stand in it alone
  std::string author_;         // the part's content
  std::string pattern_;        // the same without points
  ChartData authorsData_;
  ChartData data_;
  CategoryKind categories_ = CategoryKind::Text;
  ChartBlock block_;
  bool isFilled_ = false;
  std::optional<std::string> authorsBook_;  // while the workbook holds other data
  bool isBookCurrent_ = true;
};

/// The charts of a presentation that were asked for.
class ChartStore {
 public:
  /// The chart of a p:graphicFrame in a slide's part. Lives as long as the store.
  /// Throws basic::Error with the reason when it cannot be refilled.
  RefillableChart& of(opc::Part& slide, pugi::xml_node frame);
  /// Brings all workbooks up to date, before the package is written.
  void write();
  /// The chart's part goes away.
  void forget(opc::Part& part) { charts_.erase(&part); }

 private:
  std::unordered_map<opc::Part*, std::unique_ptr<RefillableChart>> charts_;
};

}  // namespace deck
