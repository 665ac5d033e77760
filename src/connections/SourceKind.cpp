#include "connections/SourceKind.h"

#include <algorithm>
#include <array>

#include "basic/ConnectionString.h"
#include "basic/Strings.h"

namespace LF2000 {

namespace {

struct Ending {
  std::string_view ending;
  ConnectionKind kind;
};

constexpr std::array Endings = {
    Ending{"CSV", ConnectionKind::TextFile},     Ending{"TSV", ConnectionKind::TextFile},
    Ending{"TAB", ConnectionKind::TextFile},     Ending{"TXT", ConnectionKind::TextFile},
    Ending{"XLSX", ConnectionKind::Excel},       Ending{"XLSM", ConnectionKind::Excel},
    Ending{"XLS", ConnectionKind::Excel},        Ending{"XLSB", ConnectionKind::Excel},
    Ending{"ODS", ConnectionKind::Excel},        Ending{"DB", ConnectionKind::Database},
    Ending{"DB3", ConnectionKind::Database},     Ending{"SQLITE", ConnectionKind::Database},
    Ending{"SQLITE3", ConnectionKind::Database}, Ending{"MDB", ConnectionKind::Database},
    Ending{"ACCDB", ConnectionKind::Database}};

/// Behind the last dot of the name, in capitals.
std::string EndingOf(std::string_view path) {
  const std::size_t name = path.find_last_of("/\\") + 1;
  const std::size_t dot = path.rfind('.');
  return dot == std::string_view::npos || dot < name ? std::string() : basic::UCase(path.substr(dot + 1));
}

std::string FileString(std::string_view provider, std::string_view path) {
  const std::string unnamed = "Provider=" + std::string(provider) + ";Data Source=";
  return basic::WithConnectionValue(unnamed, basic::ReadConnectionString(unnamed).back(), path);
}

}  // namespace

std::optional<ConnectionKind> KindOfFile(std::string_view path) {
  const std::string ending = EndingOf(path);
  const auto* const found =
      std::find_if(Endings.begin(), Endings.end(), [&](const Ending& each) { return each.ending == ending; });
  return found == Endings.end() ? std::nullopt : std::optional(found->kind);
}

std::string SqliteString(std::string_view path) { return FileString("SQLite", path); }

std::string DatabaseString(std::string_view text) {
  const bool isFile =
      text.find('=') == std::string_view::npos && KindOfFile(text) == ConnectionKind::Database;
  if (!isFile) return std::string(text);
  const std::string ending = EndingOf(text);
  if (ending == "MDB") return FileString("Microsoft.Jet.OLEDB.4.0", text);
  if (ending == "ACCDB") return FileString("Microsoft.ACE.OLEDB.12.0", text);
  return SqliteString(text);
}

std::string SourceText(const clsConnection& connection) {
  switch (static_cast<ConnectionKind>(connection.ConnectionType())) {
    case ConnectionKind::Database:
      return basic::MaskedConnectionString(connection.ConnectionString()) + ": " + connection.RecordsetSQL();
    case ConnectionKind::Excel:
      return connection.ConnectionRange() + " of " +
             (connection.ConnectionSheet().empty() ? "the first sheet" : connection.ConnectionSheet()) +
             " in " + connection.ConnectionFileString();
    case ConnectionKind::TextFile:
      break;
  }
  return connection.ConnectionFileString();
}

std::string StatementOrTable(std::string text) {
  constexpr std::string_view First = "SELECT";
  const std::size_t start = text.find_first_not_of(" \r\n");
  if (start == std::string::npos) return {};
  text.erase(0, start);
  const bool isStatement = basic::UCase(std::string_view(text).substr(0, First.size())) == First;
  if (isStatement && text.size() > First.size() &&
      (text[First.size()] == '\n' || text[First.size()] == '\r')) {
    text[First.size()] = ' ';
  }
  return text;
}

}  // namespace LF2000
