#pragma once

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "host/graph.h"

namespace deck {

/// What a chart's categories are, by what its author gave them. X values can be
/// nothing but numbers.
enum class CategoryKind { Text, Number, Date, XValues };

/// A category: a gap, a number (a date as its serial number), or text.
using Category = std::variant<std::monostate, double, std::string>;

/// What a chart shows: columns of numbers over categories. A gap is NaN.
struct ChartData {
  struct Column {
    std::string name;
    std::vector<double> values;  // as many as there are categories
  };

  /// The name above the categories, which no chart shows.
  std::string corner;
  std::vector<Category> categories;
  std::vector<Column> columns;

  [[nodiscard]] std::size_t rows() const { return categories.size(); }
  /// Of no more than numbers and gaps, and not of gaps alone.
  [[nodiscard]] bool hasNumericCategories() const;
  /// Whether the chart would look the same.
  [[nodiscard]] bool shows(const ChartData& other) const;
  [[nodiscard]] MSGraph::Table table() const;
};

/// The cells as a chart takes them. Text that reads as a number by the user's
/// settings, or by those with comma and point changed where a column's numbers
/// cannot be meant otherwise, is a number in the columns of values, and among categories that are
/// numbers; dates likewise. Other text among values and X values is a gap. Throws basic::Error
/// when there is no column of values, or more columns or rows than a worksheet
/// has room for, or when a column holds text and not one number.
ChartData chartData(const MSGraph::Table& table, CategoryKind categories);

}  // namespace deck
