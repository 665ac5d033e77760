#pragma once

#include "host/excel.h"
#include "workbook/book/Book.h"
#include "workbook/sheet/Row.h"

namespace workbook {

/// The cell that a visit is at; one object goes over all cells of a range.
class CellView final : public Excel::Cell {
 public:
  /// The book outlives it.
  explicit CellView(Book& book) : book_(book), styles_(book.styles()) {}

  /// The data stays where it is until the next call.
  void moveTo(std::uint32_t row, std::uint32_t column, const CellData& data) {
    row_ = row;
    column_ = column;
    data_ = &data;
  }

  [[nodiscard]] std::int32_t Column() const override { return static_cast<std::int32_t>(column_); }
  [[nodiscard]] std::int32_t Row() const override { return static_cast<std::int32_t>(row_); }
  /// As the number format shows it in a column that is wide enough. A text or
  /// style that the workbook does not have is empty, or General.
  [[nodiscard]] std::string Text() const override;
  /// A number, truth value or text; an error as its text. The serial of a date
  /// counts as basic::Date does, whichever date system the workbook has.
  [[nodiscard]] basic::Variant Value() const override;
  [[nodiscard]] std::string NumberFormat() const override;

 private:
  [[nodiscard]] basic::CellValue content() const;

  Book& book_;
  const Styles& styles_;
  std::uint32_t row_ = 1;
  std::uint32_t column_ = 1;
  const CellData* data_ = nullptr;
};

}  // namespace workbook
