#include "app/inspect/SheetUse.h"

#include "basic/CellReference.h"
#include "connections/SheetTable.h"

namespace app {

namespace {

using LF2000::clsConnection;

bool hasValue(clsConnection& connection, const std::string& column) {
  bool noValue = true;
  for (double row = 1; noValue && row <= connection.RecordCount(); ++row) {
    static_cast<void>(connection.GetValueDatabase(row, column, 1, false, noValue));
  }
  return !noValue;
}

}  // namespace

std::vector<std::string> remarksOn(const clsConnection& connection) {
  std::vector<std::string> remarks = connection.Remarks();
  if (static_cast<LF2000::ConnectionKind>(connection.ConnectionType()) == LF2000::ConnectionKind::Excel) {
    const LF2000::LeftOutCells leftOut = LF2000::FindLeftOutCells(connection);
    if (!leftOut.What.empty()) {
      remarks.push_back("The range " + connection.ConnectionRange() + " leaves out data: " + leftOut.What +
                        ". --range " + leftOut.Range + " takes them in.");
    }
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
