#include "workbook/sheet/Describe.h"

#include <algorithm>
#include <utility>

#include "workbook/book/Opener.h"
#include "workbook/sheet/SheetReader.h"

namespace workbook {
namespace {

/// As the sheet declares it; writers that do not know it beforehand leave it out
/// or declare one cell.
basic::Area dimensionOf(const Book& book, const SheetEntry& sheet) {
  SheetReader reader(book, sheet, {1, basic::MaximumRow, 1, 1});
  const auto declared = reader.declared();
  if (declared && basic::AreaText(*declared).find(':') != std::string::npos) return *declared;
  basic::Area found;
  while (reader.next()) {
    if (!reader.hasValues()) continue;
    found.lastRow = reader.row();
    found.lastColumn = std::max(found.lastColumn, reader.lastFilled());
  }
  return found;
}

}  // namespace

Description describe(const std::string& path, host::Loop& loop) {
  const std::shared_ptr<Book> book = Opener(loop).open(path);
  const std::vector<SheetEntry>& sheets = book->sheets();
  Description description;
  for (const SheetEntry& sheet : sheets) {
    if (!sheet.isWorksheet) continue;
    description.sheets.push_back({sheet.name, sheet.isVisible, basic::AreaText(dimensionOf(*book, sheet))});
  }
  for (const DefinedName& name : book->names()) {
    if (name.isHidden) continue;
    const bool isLocal = name.sheet && *name.sheet < sheets.size();
    description.names.push_back({name.name, name.refersTo, isLocal ? sheets[*name.sheet].name : ""});
  }
  return description;
}

}  // namespace workbook
