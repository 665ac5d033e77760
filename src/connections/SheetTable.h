#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "basic/CellReference.h"
#include "connections/clsConnection.h"

namespace LF2000 {

// What a workbook holds beside what a connection takes of it. All of it reads the workbook anew, lets the
// loop run meanwhile, and throws basic::Error where the workbook cannot be read.

/// The names of the sheets of a connection's workbook, as their tabs have them. Raises ReadingSheets.
std::vector<std::string> ReadSheets(const clsConnection& connection);

/// What a sheet shows.
struct SheetTable {
  /// From the first cell that shows something to the last.
  basic::Area Used;
  /// The row of the column names, if there are any: the first one, or that below titles
  /// (connections/HeaderRow.h).
  std::uint32_t NamesRow = 1;
  /// Whether that row looks like names (LooksLikeHeader).
  bool HasNames = false;

  /// The cells that a connection can read. Titles are left out where its first row holds the column names.
  [[nodiscard]] basic::Area Cells(bool firstRowFieldNames) const;
  [[nodiscard]] bool HasTitles(bool firstRowFieldNames) const {
    return Cells(firstRowFieldNames).firstRow > Used.firstRow;
  }
};

/// What the connection's sheet shows; nothing for an empty sheet.
std::optional<SheetTable> FindSheetTable(const clsConnection& connection);

/// A range for these cells that takes in rows to come: "A:G", or "A3:G1048576" where rows above do not belong
/// to it.
std::string GrowingRange(const basic::Area& area);

/// What a range leaves out.
struct LeftOutCells {
  /// "rows 11 to 40, column E"; empty where it leaves out nothing, and where the range is a defined name.
  std::string What;
  /// The range that takes it in.
  std::string Range;
};

/// The rows below the connection's range and the columns beside it that hold data as well.
LeftOutCells FindLeftOutCells(const clsConnection& connection);

}  // namespace LF2000
