#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "connections/clsConnection.h"

namespace LF2000 {

/// What the ending of a file's name tells, in any case of letters; nothing for an ending that may be
/// anything.
std::optional<ConnectionKind> KindOfFile(std::string_view path);

/// The connection string of an SQLite file of any name.
std::string SqliteString(std::string_view path);

/// The connection string of a database that is one file, where the text is the name of such a file alone
/// ("plant.db"); any other text as it is.
std::string DatabaseString(std::string_view text);

/// Where a connection's data come from, without secrets: a file, "RANGE of SHEET in FILE", "CONNECTION
/// STRING: SQL".
std::string SourceText(const clsConnection& connection);

/// What an author wrote of a statement or of a table's name, as a connection tells them apart: by the first
/// word and a blank behind it. In statements from files it is a line break as often.
std::string StatementOrTable(std::string text);

}  // namespace LF2000
