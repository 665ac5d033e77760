#pragma once

#include <functional>
#include <memory>

#include "host/excel.h"
#include "host/services.h"
#include "workbook/book/Book.h"

namespace workbook {

/// A range of a sheet; it reads the sheet anew on every visit, as far as the
/// range goes, and lets the loop run now and then meanwhile.
///
/// A range down to a sheet's last row ends with the last row that has a value
/// (but has its first row), one to the last column with the last column that has
/// a value in its rows (but has its first column).
class SheetRange final : public Excel::Range {
 public:
  SheetRange(std::shared_ptr<Book> book, Book::Target target, host::Loop& loop)
      : book_(std::move(book)), target_(target), loop_(loop) {}

  void ForEach(const std::function<bool(const Excel::Cell&)>& visit) override;

 private:
  [[nodiscard]] std::uint32_t lastColumnWithData() const;

  std::shared_ptr<Book> book_;
  Book::Target target_;
  host::Loop& loop_;
};

}  // namespace workbook
