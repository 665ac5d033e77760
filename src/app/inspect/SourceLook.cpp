#include "app/inspect/SourceLook.h"

#include <chrono>

#include "app/inspect/SheetUse.h"
#include "app/wiring/Output.h"
#include "basic/Counted.h"
#include "basic/Error.h"

namespace app {

SourceLook lookInto(LF2000::clsConnection& connection) {
  SourceLook look;
  try {
    const auto start = std::chrono::steady_clock::now();
    connection.OpenConnection();
    connection.OpenRecordset();
    connection.CloseConnection();
    look.milliseconds =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    if (!connection.RecordsetReady()) {
      look.failure = "There is nothing here that can read it.";
      return look;
    }
    look.columns = connection.Columns();
    look.columns.erase(look.columns.begin());
    look.offered = offeredColumns(connection);
    look.rowCount = static_cast<std::int64_t>(connection.RecordCount());
    look.remarks = remarksOn(connection);
  } catch (const basic::Error& error) {
    look.failure = joinedLines(error.description);
  }
  return look;
}

std::string sizeOf(const SourceLook& look) {
  std::string text =
      basic::Counted(look.rowCount, "row") + ", " + basic::Counted(look.offered.size(), "column");
  constexpr std::size_t MostNames = 20;
  for (std::size_t i = 0; i < look.offered.size(); ++i) {
    if (i == MostNames) return text + ", \u2026";
    text += (i == 0 ? ": " : ", ") + look.offered[i];
  }
  return text;
}

}  // namespace app
