// Which cell of a table shows which value of a connection.

#include "model/modTable.h"

#include <algorithm>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Error.h"
#include "basic/Strings.h"

namespace LF2000::modTable {

namespace {

[[noreturn]] void Fail(const std::string& text) {
  throw basic::Error(basic::AdapterError, basic::DefaultSource, text);
}

std::string Listed(const std::vector<std::string>& columns) {
  std::string names;
  for (std::size_t i = 1; i < columns.size(); ++i) names += (i == 1 ? "" : ", ") + columns[i];
  return names;
}

}  // namespace

std::int32_t BodyRows(const PowerPoint::Table& table) {
  return std::max(0, table.RowCount() - (table.FirstRow() ? 1 : 0) - (table.LastRow() ? 1 : 0));
}

std::vector<std::string> HeaderTexts(const PowerPoint::Table& table) {
  std::vector<std::string> texts(static_cast<std::size_t>(table.ColumnCount()) + 1);
  if (!table.FirstRow()) return texts;
  for (std::size_t i = 1; i < texts.size(); ++i) {
    std::string text = table.Text(1, static_cast<std::int32_t>(i));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\v'; }, ' ');
    texts[i] = basic::Trim(text);
  }
  return texts;
}

std::vector<std::string> ColumnsOf(const PowerPoint::Table& table,
                                   const std::vector<std::string>& dataColumns, const std::string& source) {
  const auto places = static_cast<std::size_t>(table.ColumnCount()) + 1;
  if (!table.FirstRow()) {
    if (dataColumns.size() < places) {
      Fail(source + " has " + std::to_string(dataColumns.size() - 1) + " columns, and the table " +
           std::to_string(places - 1) + " without a header row that would name some of them.");
    }
    return {dataColumns.begin(), dataColumns.begin() + static_cast<std::ptrdiff_t>(places)};
  }
  std::vector<std::string> columns(places);
  std::string missing;
  const std::vector<std::string> headers = HeaderTexts(table);
  for (std::size_t i = 1; i < places; ++i) {
    if (headers[i].empty()) continue;
    const auto found = std::find_if(dataColumns.begin() + 1, dataColumns.end(), [&](const std::string& name) {
      return basic::EqualsIgnoreCase(name, headers[i]);
    });
    if (found == dataColumns.end()) {
      missing += (missing.empty() ? "'" : ", '") + headers[i] + "'";
    } else {
      columns[i] = *found;
    }
  }
  if (!missing.empty()) {
    Fail(source + " has no column " + missing +
         ", which the table's header names. It has: " + Listed(dataColumns) + ".");
  }
  return columns;
}

std::vector<CellText> ReadCells(PowerPoint::Shape& shape, clsConnection& connection, double firstRow,
                                std::int16_t displayType) {
  const auto table = shape.Table();
  const std::vector<std::string> columns =
      ColumnsOf(*table, connection.Columns(),
                "Table '" + shape.Name() + "': connection " + connection.ConnectionTagNumber() + " (" +
                    connection.ConnectionDescription() + ")");
  const std::int32_t firstBodyRow = table->FirstRow() ? 2 : 1;
  const std::int32_t rows = BodyRows(*table);
  std::vector<CellText> cells;
  for (std::int32_t i = 0; i < rows; ++i) {
    const std::int32_t row = firstBodyRow + i;
    for (std::int32_t column = 1; column <= table->ColumnCount(); ++column) {
      const std::string& name = columns[static_cast<std::size_t>(column)];
      if (name.empty() || table->IsCovered(row, column)) continue;
      bool noValue = true;
      std::string text =
          connection.GetValueDatabase(firstRow + i, name, displayType, /*showMarkers=*/false, noValue);
      if (text.empty()) text = " ";
      cells.push_back({row, column, std::move(text)});
    }
  }
  return cells;
}

void WriteCells(PowerPoint::Shape& shape, const std::vector<CellText>& cells) {
  const auto table = shape.Table();
  for (const CellText& cell : cells) {
    if (table->Text(cell.Row, cell.Column) != cell.Text) table->Text(cell.Row, cell.Column, cell.Text);
  }
}

void RestoreTable(PowerPoint::Shape& shape) {
  modGlobalFunctions::IgnoreErrors([&] { shape.Table()->Restore(); });
}

}  // namespace LF2000::modTable
