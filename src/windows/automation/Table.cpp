#include "windows/automation/Table.h"

#include "windows/automation/Classes.h"
#include "windows/automation/Optional.h"

namespace windows::automation {

std::int32_t Table::RowCount() const { return table_.object(classes::Rows, L"Rows").number(L"Count"); }

std::int32_t Table::ColumnCount() const {
  return table_.object(classes::Columns, L"Columns").number(L"Count");
}

// Versions before 12 know neither; their tables were made with a header.
bool Table::FirstRow() const {
  return whereThere([this] { return table_.flag(L"FirstRow"); }, true);
}

bool Table::LastRow() const {
  return whereThere([this] { return table_.flag(L"LastRow"); }, false);
}

com::Object Table::cellShape(std::int32_t row, std::int32_t column) const {
  return table_.object(classes::Cell, L"Cell", row, column).object(classes::Shape, L"Shape");
}

com::Object Table::textRange(std::int32_t row, std::int32_t column) const {
  return cellShape(row, column)
      .object(classes::TextFrame, L"TextFrame")
      .object(classes::TextRange, L"TextRange");
}

/// All places of a merged cell have its frame.
bool Table::IsCovered(std::int32_t row, std::int32_t column) const {
  if (!table_.object(classes::Cell, L"Cell", row, column).flag(L"Merged")) return false;
  const com::Object shape = cellShape(row, column);
  const double left = shape.real(L"Left");
  const double top = shape.real(L"Top");
  return (column > 1 && cellShape(row, column - 1).real(L"Left") == left) ||
         (row > 1 && cellShape(row - 1, column).real(L"Top") == top);
}

std::string Table::Text(std::int32_t row, std::int32_t column) const {
  return IsCovered(row, column) ? std::string() : textRange(row, column).text(L"Text");
}

void Table::Text(std::int32_t row, std::int32_t column, std::string_view text) {
  if (IsCovered(row, column)) return;
  const com::Object range = textRange(row, column);
  own_->cells[place_].try_emplace({row, column}, range.text(L"Text"));
  range.put(L"Text", text);
}

void Table::Restore() {
  const auto found = own_->cells.find(place_);
  if (found == own_->cells.end()) return;
  for (const auto& [cell, text] : found->second) textRange(cell.first, cell.second).put(L"Text", text);
  own_->cells.erase(found);
}

}  // namespace windows::automation
