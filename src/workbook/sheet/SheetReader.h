#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "workbook/book/Book.h"
#include "workbook/book/ElementStream.h"
#include "workbook/sheet/Row.h"

namespace workbook {

/// Reads the rows of an area one after the other, as far as the area goes. Hidden
/// rows and columns are read like any other; what a formula gave last is its
/// value.
class SheetReader {
 public:
  /// The book outlives it. Errors of the sheet's part are thrown here and by
  /// next(), with part, line and column.
  SheetReader(const Book& book, const SheetEntry& sheet, const basic::Area& area);

  /// Goes to the next row that the sheet has in the area; false when there is none.
  bool next();
  [[nodiscard]] std::uint32_t row() const { return row_; }
  /// The cell of a column of the area, until the next next().
  [[nodiscard]] const CellData& cell(std::uint32_t column) const {
    return cells_[column - area_.firstColumn];
  }
  /// Whether any cell of the row has a value, within the area or not.
  [[nodiscard]] bool hasValues() const { return lastFilled_ > 0; }
  /// The last column of the row with a value; 0 without any.
  [[nodiscard]] std::uint32_t lastFilled() const { return lastFilled_; }
  /// The area that the sheet says it fills: not all say the truth.
  [[nodiscard]] std::optional<basic::Area> declared() const;

 private:
  void readRow(pugi::xml_node row);
  void readCell(pugi::xml_node cell);
  [[nodiscard]] CellData valueOf(pugi::xml_node cell, std::string_view type);
  [[nodiscard]] std::string_view kept(std::string text);

  const Book& book_;
  const SheetEntry& sheet_;
  basic::Area area_;
  ElementStream rows_;
  std::uint32_t row_ = 0;
  std::uint32_t column_ = 0;
  std::uint32_t lastFilled_ = 0;
  std::vector<CellData> cells_;
  std::deque<std::string> texts_;  // of the row, where the part's own bytes do not do
};

}  // namespace workbook
