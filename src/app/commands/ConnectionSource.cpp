#include "app/commands/ConnectionSource.h"

#include <optional>

#include "basic/Error.h"
#include "connections/SheetTable.h"

namespace app {

const std::map<std::string, LF2000::ConnectionKind>& sourceTypes() {
  using LF2000::ConnectionKind;
  static const std::map<std::string, ConnectionKind> types = {
      {"text", ConnectionKind::TextFile},     {"csv", ConnectionKind::TextFile},
      {"excel", ConnectionKind::Excel},       {"xlsx", ConnectionKind::Excel},
      {"database", ConnectionKind::Database}, {"sqlite", ConnectionKind::Database}};
  return types;
}

std::string takeWholeSheet(LF2000::clsConnection& connection) {
  const std::string kept = "The range is " + connection.ConnectionRange() + ": ";
  std::optional<LF2000::SheetTable> table;
  try {
    table = LF2000::FindSheetTable(connection);
  } catch (const basic::Error& error) {
    return kept + "the sheet cannot be read now (" + error.description + "). Give another with --range.";
  }
  if (!table) return kept + "the sheet is empty. Give another with --range.";
  const bool hasNames = connection.ConnectionFirstRowFieldNames();
  const basic::Area area = table->Cells(hasNames);
  connection.ConnectionRange(LF2000::GrowingRange(area));
  return "The range is " + connection.ConnectionRange() + ", where the sheet has " + basic::AreaText(area) +
         " in use" + (table->HasTitles(hasNames) ? " below its titles" : "") +
         "; rows to come are read as well.";
}

}  // namespace app
