#pragma once

#include <optional>
#include <string>
#include <vector>

#include "basic/CellReference.h"
#include "connections/clsConnection.h"

namespace app {

// What a worksheet holds beside what a connection takes of it. All of it reads the workbook anew, lets the
// loop run meanwhile, and throws basic::Error where the workbook cannot be read.

/// The cells of a sheet that a connection can read.
struct SheetTable {
  /// From the first cell that shows something, below titles, to the last.
  basic::Area area;
  /// Whether titles stand above the row of the column names (connections/HeaderRow.h).
  bool hasTitles = false;
};

/// What a connection can read on its sheet; nothing for an empty sheet. Titles are left out where its first
/// row holds the column names.
std::optional<SheetTable> findTable(const LF2000::clsConnection& connection);

/// A range for these cells that takes in rows to come: "A:G", or "A3:G1048576" where rows above do not belong
/// to it.
std::string growingRange(const basic::Area& area);

/// A sentence on the rows below the connection's range and the columns beside it that hold data as well;
/// empty where there are none, and where the range is a defined name.
std::string leftOutOf(const LF2000::clsConnection& connection);

/// What an author should know of an open connection's source, a sentence each: what its reader noticed in a
/// text file, or what a worksheet's range leaves out.
std::vector<std::string> remarksOn(const LF2000::clsConnection& connection);

/// The columns of an open connection that there is something to link to. A range of a worksheet may have
/// columns with neither a name nor data besides.
std::vector<std::string> offeredColumns(LF2000::clsConnection& connection);

}  // namespace app
