#include "app/commands/ConnectionSource.h"

#include <algorithm>
#include <array>

#include "basic/Error.h"
#include "connections/SheetTable.h"

namespace app {

namespace {

using LF2000::ConnectionKind;

struct Word {
  std::string_view word;
  ConnectionKind kind;
};

constexpr std::array Types = {
    Word{"text", ConnectionKind::TextFile},     Word{"csv", ConnectionKind::TextFile},
    Word{"excel", ConnectionKind::Excel},       Word{"xlsx", ConnectionKind::Excel},
    Word{"database", ConnectionKind::Database}, Word{"sqlite", ConnectionKind::Database}};

}  // namespace

std::vector<std::string> typeWords() {
  std::vector<std::string> words;
  words.reserve(std::size(Types));
  for (const Word& type : Types) words.emplace_back(type.word);
  return words;
}

ConnectionKind kindOfType(std::string_view word) {
  return std::find_if(Types.begin(), Types.end(), [&](const Word& type) { return type.word == word; })->kind;
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
