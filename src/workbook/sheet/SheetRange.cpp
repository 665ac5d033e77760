#include "workbook/sheet/SheetRange.h"

#include <algorithm>
#include <chrono>

#include "workbook/sheet/CellView.h"
#include "workbook/sheet/SheetReader.h"

namespace workbook {
namespace {

/// Lets the host's messages be processed during a long read.
class Pump {
 public:
  explicit Pump(host::Loop& loop) : loop_(loop) {}
  void operator()() {
    constexpr std::chrono::milliseconds Pause{50};
    if (Clock::now() - last_ < Pause) return;
    loop_.DoEvents();
    last_ = Clock::now();
  }

 private:
  using Clock = std::chrono::steady_clock;
  host::Loop& loop_;
  Clock::time_point last_ = Clock::now();
};

}  // namespace

std::uint32_t SheetRange::lastColumnWithData() const {
  basic::Area firstColumn = target_.area;
  firstColumn.lastColumn = firstColumn.firstColumn;
  SheetReader reader(*book_, book_->sheets()[target_.sheet], firstColumn);
  std::uint32_t last = target_.area.firstColumn;
  for (Pump pump(loop_); reader.next(); pump()) last = std::max(last, reader.lastFilled());
  return last;
}

void SheetRange::ForEach(const std::function<bool(const Excel::Cell&)>& visit) {
  basic::Area area = target_.area;
  const bool endsWithData = area.lastRow == basic::MaximumRow;
  if (area.lastColumn == basic::MaximumColumn) area.lastColumn = lastColumnWithData();

  SheetReader reader(*book_, book_->sheets()[target_.sheet], area);
  CellView cell(*book_);
  Pump pump(loop_);
  const auto visitRow = [&](std::uint32_t row, bool isBlank) {
    static const CellData Blank;
    for (std::uint32_t column = area.firstColumn; column <= area.lastColumn; ++column) {
      cell.moveTo(row, column, isBlank ? Blank : reader.cell(column));
      if (!visit(cell)) return false;
    }
    pump();
    return true;
  };

  std::uint32_t row = area.firstRow;
  while (reader.next()) {
    if (endsWithData && !reader.hasValues()) continue;
    for (; row < reader.row(); ++row) {
      if (!visitRow(row, true)) return;
    }
    if (!visitRow(row++, false)) return;
  }
  for (const std::uint32_t end = endsWithData ? area.firstRow : area.lastRow; row <= end; ++row) {
    if (!visitRow(row, true)) return;
  }
}

}  // namespace workbook
