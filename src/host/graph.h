#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "basic/Variant.h"

// The part of the Microsoft Graph object model that the system uses: a chart and
// its datasheet. Names follow the object model's own reference (Microsoft Graph
// Visual Basic reference). A member that
// fails throws basic::Error. Everything is called on one thread.

namespace MSGraph {

/// A whole datasheet. Row 0 is the header with the names of the columns, column 0
/// holds the categories. There is at least one row and one column.
class Table {
 public:
  Table() : Table(1, 1) {}
  /// Of Empty cells; `columns` is above 0.
  Table(std::size_t rows, std::size_t columns) : columns_(columns), cells_(rows * columns) {}

  [[nodiscard]] std::size_t rows() const { return cells_.size() / columns_; }
  [[nodiscard]] std::size_t columns() const { return columns_; }
  /// Both indices from 0, within the table.
  [[nodiscard]] const basic::Variant& cell(std::size_t row, std::size_t column) const {
    return cells_[row * columns_ + column];
  }
  void cell(std::size_t row, std::size_t column, basic::Variant value) {
    cells_[row * columns_ + column] = std::move(value);
  }

 private:
  std::size_t columns_;
  std::vector<basic::Variant> cells_;
};

/// What a chart is drawn from. Its columns are the series.
class DataSheet {
 public:
  virtual ~DataSheet() = default;
  /// All cells at once. Empty is a gap; the corner may be.
  [[nodiscard]] virtual Table Cells() const = 0;
  /// Replaces all cells at once, with more or fewer rows and columns than before;
  /// the chart keeps its formatting. As when cells are typed, text that reads as
  /// a number by the user's settings becomes one where the chart has numbers;
  /// Null, and other text among numbers, is a gap. Cells that say what the chart
  /// shows already change nothing. Throws, and leaves the chart as it was, when
  /// the chart cannot take the data.
  virtual void Cells(const Table& table) = 0;
  /// Throws when the chart cannot take the data, and changes nothing: a service of the host, so that
  /// several shapes take what is new together or not at all.
  virtual void Check(const Table& table) const = 0;
  /// Puts back the author's own data, which the first replacing put aside: a
  /// service of the host, the object model has no such member. A datasheet that
  /// was never replaced stays.
  virtual void Restore() = 0;
};

class Application {
 public:
  virtual ~Application() = default;
  [[nodiscard]] virtual std::shared_ptr<MSGraph::DataSheet> DataSheet() = 0;
};

class Chart {
 public:
  virtual ~Chart() = default;
  [[nodiscard]] virtual std::shared_ptr<MSGraph::Application> Application() = 0;
  /// Whether its data lie in another file (ChartData of the presentation's object model, as the next one).
  [[nodiscard]] virtual bool IsLinked() const = 0;
  /// It keeps the data that it shows and is no longer linked. Nothing where it is not.
  virtual void BreakLink() = 0;
};

}  // namespace MSGraph
