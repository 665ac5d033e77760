#include "app/commands/ConnectionSource.h"

#include <algorithm>
#include <array>

#include "app/inspect/SheetUse.h"
#include "basic/ConnectionString.h"
#include "basic/Error.h"
#include "basic/Strings.h"

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

constexpr std::array Endings = {
    Word{"CSV", ConnectionKind::TextFile},     Word{"TSV", ConnectionKind::TextFile},
    Word{"TAB", ConnectionKind::TextFile},     Word{"TXT", ConnectionKind::TextFile},
    Word{"XLSX", ConnectionKind::Excel},       Word{"XLSM", ConnectionKind::Excel},
    Word{"XLS", ConnectionKind::Excel},        Word{"XLSB", ConnectionKind::Excel},
    Word{"ODS", ConnectionKind::Excel},        Word{"DB", ConnectionKind::Database},
    Word{"DB3", ConnectionKind::Database},     Word{"SQLITE", ConnectionKind::Database},
    Word{"SQLITE3", ConnectionKind::Database}, Word{"MDB", ConnectionKind::Database},
    Word{"ACCDB", ConnectionKind::Database}};

/// Behind the last dot of the name, in capitals.
std::string endingOf(std::string_view path) {
  const std::size_t name = path.find_last_of("/\\") + 1;
  const std::size_t dot = path.rfind('.');
  return dot == std::string_view::npos || dot < name ? std::string() : basic::UCase(path.substr(dot + 1));
}

std::string fileString(std::string_view provider, std::string_view path) {
  const std::string unnamed = "Provider=" + std::string(provider) + ";Data Source=";
  return basic::WithConnectionValue(unnamed, basic::ReadConnectionString(unnamed).back(), path);
}

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

std::optional<ConnectionKind> kindOfFile(std::string_view path) {
  const std::string ending = endingOf(path);
  const auto* const found =
      std::find_if(Endings.begin(), Endings.end(), [&](const Word& each) { return each.word == ending; });
  return found == Endings.end() ? std::nullopt : std::optional(found->kind);
}

std::string sqliteString(std::string_view path) { return fileString("SQLite", path); }

std::string databaseString(std::string_view text) {
  const bool isFile =
      text.find('=') == std::string_view::npos && kindOfFile(text) == ConnectionKind::Database;
  if (!isFile) return std::string(text);
  const std::string ending = endingOf(text);
  if (ending == "MDB") return fileString("Microsoft.Jet.OLEDB.4.0", text);
  if (ending == "ACCDB") return fileString("Microsoft.ACE.OLEDB.12.0", text);
  return sqliteString(text);
}

std::string takeWholeSheet(LF2000::clsConnection& connection) {
  const std::string kept = "The range is " + connection.ConnectionRange() + ": ";
  std::optional<SheetTable> table;
  try {
    table = findTable(connection);
  } catch (const basic::Error& error) {
    return kept + "the sheet cannot be read now (" + error.description + "). Give another with --range.";
  }
  if (!table) return kept + "the sheet is empty. Give another with --range.";
  connection.ConnectionRange(growingRange(table->area));
  return "The range is " + connection.ConnectionRange() + ", where the sheet has " +
         basic::AreaText(table->area) + " in use" + (table->hasTitles ? " below its titles" : "") +
         "; rows to come are read as well.";
}

}  // namespace app
