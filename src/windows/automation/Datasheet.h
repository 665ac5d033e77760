#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "host/graph.h"
#include "windows/automation/OpenPresentation.h"
#include "windows/com/Object.h"

namespace windows::automation {

/// Cells that a chart is drawn from, open for as long as this lives. Rows and columns count from 0, which are
/// the names of the columns and the categories.
class ChartCells {
 public:
  virtual ~ChartCells() = default;
  [[nodiscard]] virtual basic::Variant cell(std::size_t row, std::size_t column) const = 0;
  /// Empty clears the cell.
  virtual void cell(std::size_t row, std::size_t column, const basic::Variant& value) = 0;
  /// Draws the chart from so many cells.
  virtual void show(std::size_t rows, std::size_t columns) = 0;
};

/// Where the cells come from.
class CellSource {
 public:
  virtual ~CellSource() = default;
  [[nodiscard]] virtual std::unique_ptr<ChartCells> open() = 0;
};

/// A chart's data over its cells: the author's own are kept aside, and of what is shown only what differs is
/// written.
class DataSheet final : public MSGraph::DataSheet {
 public:
  DataSheet(std::unique_ptr<CellSource> source, std::shared_ptr<AuthorsOwn> own, AuthorsOwn::Place place)
      : source_(std::move(source)), own_(std::move(own)), place_(place) {}
  [[nodiscard]] MSGraph::Table Cells() const override;
  void Cells(const MSGraph::Table& table) override;
  /// Cells take anything.
  void Check(const MSGraph::Table& /*table*/) const override {}
  void Restore() override;

 private:
  std::unique_ptr<CellSource> source_;
  std::shared_ptr<AuthorsOwn> own_;
  AuthorsOwn::Place place_;
};

/// "A1", by row and column from 0.
[[nodiscard]] std::string cellName(std::size_t row, std::size_t column);

}  // namespace windows::automation
