// Looks at a worksheet as a whole, to compare it with the range that a connection reads.

#include "app/inspect/SheetUse.h"

#include <algorithm>
#include <memory>

#include "basic/Strings.h"
#include "connections/HeaderRow.h"
#include "host/excel.h"
#include "host/services.h"

namespace app {

namespace {

using LF2000::clsConnection;

constexpr const char* WholeSheet = "1:1048576";

/// The workbook stays open as long as its sheet is looked at.
class OpenSheet {
 public:
  explicit OpenSheet(const clsConnection& connection)
      : book_(host::Current().excel->CreateApplication()->Workbooks()->Open(connection.ResolvedFile(),
                                                                            DoNotUpdateLinks, true)) {
    const auto sheets = book_->Sheets();
    const std::string& name = connection.ConnectionSheet();
    sheet_ = name.empty() ? sheets->Item(1) : sheets->Item(std::string_view(name));
  }

  template <class Visit>
  void forEach(std::string_view range, Visit visit) const {
    sheet_->Range(range)->ForEach([&](const Excel::Cell& cell) {
      visit(cell);
      return true;
    });
  }

 private:
  static constexpr std::int32_t DoNotUpdateLinks = 0;

  std::shared_ptr<Excel::Workbook> book_;
  std::shared_ptr<Excel::Worksheet> sheet_;
};

bool showsSomething(const Excel::Cell& cell) { return !basic::Trim(cell.Text()).empty(); }

/// Grows by the cells that are put into it.
class Bounds {
 public:
  void add(const Excel::Cell& cell) {
    const auto row = static_cast<std::uint32_t>(cell.Row());
    const auto column = static_cast<std::uint32_t>(cell.Column());
    if (!area_) area_ = basic::Area{row, row, column, column};
    area_->firstRow = std::min(area_->firstRow, row);
    area_->lastRow = std::max(area_->lastRow, row);
    area_->firstColumn = std::min(area_->firstColumn, column);
    area_->lastColumn = std::max(area_->lastColumn, column);
  }
  [[nodiscard]] const std::optional<basic::Area>& area() const { return area_; }

 private:
  std::optional<basic::Area> area_;
};

/// The first rows that show something.
class FirstRows {
 public:
  /// Cells come row by row, from the left.
  void add(const Excel::Cell& cell) {
    constexpr std::size_t Most = 20;
    const auto row = static_cast<std::uint32_t>(cell.Row());
    if (rows_.empty() || rows_.back().number != row) {
      if (rows_.size() == Most) return;
      rows_.push_back({row, {}});
    }
    std::vector<std::string>& texts = rows_.back().texts;
    texts.resize(static_cast<std::size_t>(cell.Column()));
    texts.back() = cell.Text();
  }

  /// The number of the row that holds the names of the columns from this one on.
  [[nodiscard]] std::uint32_t header(std::uint32_t firstColumn) const {
    std::vector<LF2000::RecordFields> records;
    for (const Row& row : rows_) {
      records.emplace_back(row.texts.begin() + static_cast<std::ptrdiff_t>(firstColumn) - 1, row.texts.end());
    }
    return rows_[LF2000::HeaderRow(records)].number;
  }

 private:
  struct Row {
    std::uint32_t number = 0;
    /// From column A on.
    std::vector<std::string> texts;
  };

  std::vector<Row> rows_;
};

std::string rowsText(const basic::Area& area) {
  const std::string first = std::to_string(area.firstRow);
  return area.firstRow == area.lastRow ? "row " + first
                                       : "rows " + first + " to " + std::to_string(area.lastRow);
}

std::string columnsText(const basic::Area& area) {
  const std::string first = basic::ColumnLetters(area.firstColumn);
  return area.firstColumn == area.lastColumn
             ? "column " + first
             : "columns " + first + " to " + basic::ColumnLetters(area.lastColumn);
}

bool hasValue(clsConnection& connection, const std::string& column) {
  bool noValue = true;
  for (double row = 1; noValue && row <= connection.RecordCount(); ++row) {
    static_cast<void>(connection.GetValueDatabase(row, column, 1, false, noValue));
  }
  return !noValue;
}

}  // namespace

std::optional<SheetTable> findTable(const clsConnection& connection) {
  Bounds used;
  FirstRows rows;
  OpenSheet(connection).forEach(WholeSheet, [&](const Excel::Cell& cell) {
    if (!showsSomething(cell)) return;
    used.add(cell);
    rows.add(cell);
  });
  if (!used.area()) return std::nullopt;
  SheetTable table{*used.area()};
  if (connection.ConnectionFirstRowFieldNames()) table.area.firstRow = rows.header(table.area.firstColumn);
  table.hasTitles = table.area.firstRow > used.area()->firstRow;
  return table;
}

std::string growingRange(const basic::Area& area) {
  if (area.firstRow == 1) {
    return basic::ColumnLetters(area.firstColumn) + ":" + basic::ColumnLetters(area.lastColumn);
  }
  basic::Area range = area;
  range.lastRow = basic::MaximumRow;
  return basic::AreaText(range);
}

std::string leftOutOf(const clsConnection& connection) {
  // A name is its workbook's word for what belongs to it.
  const auto reference = basic::ParseReference(connection.ConnectionRange());
  if (!reference || reference->sheet) return {};
  const OpenSheet sheet(connection);
  Bounds taken;
  sheet.forEach(connection.ConnectionRange(), [&](const Excel::Cell& cell) { taken.add(cell); });
  if (!taken.area()) return {};
  const basic::Area range = *taken.area();
  Bounds used;
  Bounds left;
  Bounds right;
  Bounds below;
  sheet.forEach(WholeSheet, [&](const Excel::Cell& cell) {
    if (!showsSomething(cell)) return;
    used.add(cell);
    const auto row = static_cast<std::uint32_t>(cell.Row());
    const auto column = static_cast<std::uint32_t>(cell.Column());
    const bool isBeside = row >= range.firstRow && row <= range.lastRow;
    if (isBeside && column < range.firstColumn) left.add(cell);
    if (isBeside && column > range.lastColumn) right.add(cell);
    if (row > range.lastRow && column >= range.firstColumn && column <= range.lastColumn) below.add(cell);
  });
  std::string all;
  const auto add = [&all](const Bounds& bounds, std::string (*text)(const basic::Area&)) {
    if (bounds.area()) all += (all.empty() ? "" : ", ") + text(*bounds.area());
  };
  add(below, rowsText);
  add(left, columnsText);
  add(right, columnsText);
  if (all.empty()) return {};
  return "The range " + connection.ConnectionRange() + " leaves out data: " + all + ". --range " +
         growingRange(
             {range.firstRow, used.area()->lastRow, used.area()->firstColumn, used.area()->lastColumn}) +
         " takes them in.";
}

std::vector<std::string> remarksOn(const clsConnection& connection) {
  std::vector<std::string> remarks = connection.Remarks();
  if (static_cast<LF2000::ConnectionKind>(connection.ConnectionType()) == LF2000::ConnectionKind::Excel) {
    std::string leftOut = leftOutOf(connection);
    if (!leftOut.empty()) remarks.push_back(std::move(leftOut));
  }
  return remarks;
}

std::vector<std::string> offeredColumns(clsConnection& connection) {
  const bool isExcel =
      static_cast<LF2000::ConnectionKind>(connection.ConnectionType()) == LF2000::ConnectionKind::Excel;
  const auto range = basic::ParseReference(connection.ConnectionRange());
  const std::vector<std::string> all = connection.Columns();
  std::vector<std::string> offered;
  for (std::size_t i = 1; i < all.size(); ++i) {
    // A column without a name goes by its letters.
    const bool isUnnamed =
        isExcel && range &&
        all[i] == basic::ColumnLetters(range->area.firstColumn + static_cast<std::uint32_t>(i) - 1);
    if (!isUnnamed || hasValue(connection, all[i])) offered.push_back(all[i]);
  }
  return offered;
}

}  // namespace app
