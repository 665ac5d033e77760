// Looks at a workbook as a whole: its sheets, and what one of them holds beside a connection's range.

#include "connections/SheetTable.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "connections/HeaderRow.h"
#include "host/excel.h"

namespace LF2000 {

namespace {

constexpr std::int32_t DoNotUpdateLinks = 0;
constexpr const char* WholeSheet = "1:1048576";

/// Open for as long as it is looked at.
class OpenWorkbook {
 public:
  explicit OpenWorkbook(const clsConnection& connection) {
    modGlobalFunctions::ExcelStatus(true, false);
    modGlobalFunctions::ExcelStatus(true, false);
    const auto excel = modGlobalFunctions::SystemExcel;
    if (!excel) {
      throw basic::Error(basic::AdapterError, basic::DefaultSource,
                         "There is nothing on this computer that reads workbooks.");
    }
    book_ = excel->Workbooks()->Open(connection.ResolvedFile(), DoNotUpdateLinks, true);
  }
  ~OpenWorkbook() {
    modGlobalFunctions::IgnoreErrors([this] {
      book_->Saved(true);
      book_->Close();
    });
  }
  OpenWorkbook(const OpenWorkbook&) = delete;
  OpenWorkbook& operator=(const OpenWorkbook&) = delete;

  [[nodiscard]] std::shared_ptr<Excel::Sheets> Sheets() const { return book_->Sheets(); }

 private:
  std::shared_ptr<Excel::Workbook> book_;
};

/// The sheet of a connection; the first where it names none.
class OpenSheet {
 public:
  explicit OpenSheet(const clsConnection& connection) : book_(connection) {
    const auto sheets = book_.Sheets();
    const std::string& name = connection.ConnectionSheet();
    sheet_ = name.empty() ? sheets->Item(1) : sheets->Item(std::string_view(name));
  }

  template <class Visit>
  void ForEach(std::string_view range, Visit visit) const {
    sheet_->Range(range)->ForEach([&](const Excel::Cell& cell) {
      visit(cell);
      return true;
    });
  }

 private:
  OpenWorkbook book_;
  std::shared_ptr<Excel::Worksheet> sheet_;
};

bool ShowsSomething(const Excel::Cell& cell) { return !basic::Trim(cell.Text()).empty(); }

/// Grows by the cells that are put into it.
class Bounds {
 public:
  void Add(const Excel::Cell& cell) {
    const auto row = static_cast<std::uint32_t>(cell.Row());
    const auto column = static_cast<std::uint32_t>(cell.Column());
    if (!area_) area_ = basic::Area{row, row, column, column};
    area_->firstRow = std::min(area_->firstRow, row);
    area_->lastRow = std::max(area_->lastRow, row);
    area_->firstColumn = std::min(area_->firstColumn, column);
    area_->lastColumn = std::max(area_->lastColumn, column);
  }
  [[nodiscard]] const std::optional<basic::Area>& Area() const { return area_; }

 private:
  std::optional<basic::Area> area_;
};

/// The first rows that show something.
class FirstRows {
 public:
  /// Cells come row by row, from the left.
  void Add(const Excel::Cell& cell) {
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

  /// Finds the names of the columns from this one on.
  void FindNames(std::uint32_t firstColumn, SheetTable& table) const {
    std::vector<RecordFields> records;
    for (const Row& row : rows_) {
      records.emplace_back(row.texts.begin() + static_cast<std::ptrdiff_t>(firstColumn) - 1, row.texts.end());
    }
    const std::size_t header = HeaderRow(records);
    table.NamesRow = rows_[header].number;
    records.erase(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(header));
    table.HasNames = header > 0 || LooksLikeHeader(records);
  }

 private:
  struct Row {
    std::uint32_t number = 0;
    /// From column A on.
    std::vector<std::string> texts;
  };

  std::vector<Row> rows_;
};

std::string RowsText(const basic::Area& area) {
  const std::string first = std::to_string(area.firstRow);
  return area.firstRow == area.lastRow ? "row " + first
                                       : "rows " + first + " to " + std::to_string(area.lastRow);
}

std::string ColumnsText(const basic::Area& area) {
  const std::string first = basic::ColumnLetters(area.firstColumn);
  return area.firstColumn == area.lastColumn
             ? "column " + first
             : "columns " + first + " to " + basic::ColumnLetters(area.lastColumn);
}

}  // namespace

std::vector<std::string> ReadSheets(const clsConnection& connection) try {
  const OpenWorkbook book(connection);
  const auto sheets = book.Sheets();
  std::vector<std::string> names;
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) names.push_back(sheets->Item(i)->Name());
  return names;
} catch (...) {
  modErrors::SetLastError();
  modErrors::RaiseError(modErrors::ReadingSheets, connection.ConnectionFileString(),
                        std::string(modErrors::LastError.Description));
}

basic::Area SheetTable::Cells(bool firstRowFieldNames) const {
  basic::Area cells = Used;
  if (firstRowFieldNames) cells.firstRow = NamesRow;
  return cells;
}

std::optional<SheetTable> FindSheetTable(const clsConnection& connection) {
  Bounds used;
  FirstRows rows;
  OpenSheet(connection).ForEach(WholeSheet, [&](const Excel::Cell& cell) {
    if (!ShowsSomething(cell)) return;
    used.Add(cell);
    rows.Add(cell);
  });
  if (!used.Area()) return std::nullopt;
  SheetTable table{*used.Area()};
  rows.FindNames(table.Used.firstColumn, table);
  return table;
}

std::string GrowingRange(const basic::Area& area) {
  if (area.firstRow == 1) {
    return basic::ColumnLetters(area.firstColumn) + ":" + basic::ColumnLetters(area.lastColumn);
  }
  basic::Area range = area;
  range.lastRow = basic::MaximumRow;
  return basic::AreaText(range);
}

LeftOutCells FindLeftOutCells(const clsConnection& connection) {
  // A name is its workbook's word for what belongs to it.
  const auto reference = basic::ParseReference(connection.ConnectionRange());
  if (!reference || reference->sheet) return {};
  const OpenSheet sheet(connection);
  Bounds taken;
  sheet.ForEach(connection.ConnectionRange(), [&](const Excel::Cell& cell) { taken.Add(cell); });
  if (!taken.Area()) return {};
  const basic::Area range = *taken.Area();
  Bounds used;
  Bounds left;
  Bounds right;
  Bounds below;
  sheet.ForEach(WholeSheet, [&](const Excel::Cell& cell) {
    if (!ShowsSomething(cell)) return;
    used.Add(cell);
    const auto row = static_cast<std::uint32_t>(cell.Row());
    const auto column = static_cast<std::uint32_t>(cell.Column());
    const bool isBeside = row >= range.firstRow && row <= range.lastRow;
    if (isBeside && column < range.firstColumn) left.Add(cell);
    if (isBeside && column > range.lastColumn) right.Add(cell);
    if (row > range.lastRow && column >= range.firstColumn && column <= range.lastColumn) below.Add(cell);
  });
  std::string all;
  const auto add = [&all](const Bounds& bounds, std::string (*text)(const basic::Area&)) {
    if (bounds.Area()) all += (all.empty() ? "" : ", ") + text(*bounds.Area());
  };
  add(below, RowsText);
  add(left, ColumnsText);
  add(right, ColumnsText);
  if (all.empty()) return {};
  return {all, GrowingRange({range.firstRow, used.Area()->lastRow, used.Area()->firstColumn,
                             used.Area()->lastColumn})};
}

}  // namespace LF2000
