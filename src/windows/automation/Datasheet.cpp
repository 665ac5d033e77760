// What a chart is drawn from: read, written and put back.

#include "windows/automation/Datasheet.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "basic/CellReference.h"
#include "basic/Conversion.h"
#include "basic/Error.h"

namespace windows::automation {
namespace {

/// As many as a datasheet has.
constexpr std::size_t MaxRows = 4000;
constexpr std::size_t MaxColumns = 4000;

bool isBlank(const basic::Variant& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return text->empty();
  return std::holds_alternative<basic::Empty>(value) || basic::IsNull(value);
}

/// The data end where neither a name nor a value follows.
MSGraph::Table read(const ChartCells& cells) {
  std::size_t columns = 1;
  while (columns < MaxColumns && !(isBlank(cells.cell(0, columns)) && isBlank(cells.cell(1, columns)))) {
    ++columns;
  }
  std::size_t rows = 1;
  while (rows < MaxRows && !(isBlank(cells.cell(rows, 0)) && isBlank(cells.cell(rows, 1)))) ++rows;
  MSGraph::Table table(rows, columns);
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t column = 0; column < columns; ++column) {
      table.cell(row, column, cells.cell(row, column));
    }
  }
  return table;
}

/// What a number is written as; other text among numbers is a gap.
basic::Variant asNumber(const basic::Variant& value) {
  if (isBlank(value)) return basic::Empty{};
  const auto* text = std::get_if<std::string>(&value);
  if (text == nullptr) return value;
  try {
    return basic::CDbl(*text);
  } catch (const basic::Error&) {
    return basic::Empty{};
  }
}

basic::Variant at(const MSGraph::Table& table, std::size_t row, std::size_t column) {
  if (row >= table.rows() || column >= table.columns()) return basic::Empty{};
  return table.cell(row, column);
}

void write(ChartCells& cells, const MSGraph::Table& shown, const MSGraph::Table& table) {
  for (std::size_t row = 0; row < std::max(shown.rows(), table.rows()); ++row) {
    for (std::size_t column = 0; column < std::max(shown.columns(), table.columns()); ++column) {
      const basic::Variant value = at(table, row, column);
      if (value != at(shown, row, column)) cells.cell(row, column, value);
    }
  }
  cells.show(table.rows(), table.columns());
}

bool sameCells(const MSGraph::Table& one, const MSGraph::Table& other) {
  if (one.rows() != other.rows() || one.columns() != other.columns()) return false;
  for (std::size_t row = 0; row < one.rows(); ++row) {
    for (std::size_t column = 0; column < one.columns(); ++column) {
      if (one.cell(row, column) != other.cell(row, column)) return false;
    }
  }
  return true;
}

}  // namespace

MSGraph::Table DataSheet::Cells() const {
  const auto kept = own_->charts.find(place_);
  return kept != own_->charts.end() ? kept->second.shown : read(*source_->open());
}

void DataSheet::Cells(const MSGraph::Table& table) {
  MSGraph::Table filled = table;
  for (std::size_t row = 1; row < filled.rows(); ++row) {
    for (std::size_t column = 1; column < filled.columns(); ++column) {
      filled.cell(row, column, asNumber(filled.cell(row, column)));
    }
  }
  const auto kept = own_->charts.find(place_);
  if (kept != own_->charts.end() && sameCells(kept->second.shown, filled)) return;
  const auto cells = source_->open();
  AuthorsOwn::Data data;
  if (kept != own_->charts.end()) {
    data = kept->second;
  } else {
    data.own = read(*cells);
    data.shown = data.own;
  }
  write(*cells, data.shown, filled);
  data.shown = std::move(filled);
  own_->charts[place_] = std::move(data);
}

void DataSheet::Restore() {
  const auto kept = own_->charts.find(place_);
  if (kept == own_->charts.end()) return;
  write(*source_->open(), kept->second.shown, kept->second.own);
  own_->charts.erase(place_);
}

std::string cellName(std::size_t row, std::size_t column) {
  return basic::ColumnLetters(static_cast<std::uint32_t>(column + 1)) + std::to_string(row + 1);
}

}  // namespace windows::automation
