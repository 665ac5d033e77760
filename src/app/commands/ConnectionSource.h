#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "connections/clsConnection.h"

namespace app {

/// The words for kinds of sources, as --type takes them.
std::vector<std::string> typeWords();

/// What one of these words stands for.
LF2000::ConnectionKind kindOfType(std::string_view word);

/// What the ending of a file's name tells, in any case of letters; nothing for an ending that may be
/// anything.
std::optional<LF2000::ConnectionKind> kindOfFile(std::string_view path);

/// The connection string of an SQLite file of any name.
std::string sqliteString(std::string_view path);

/// The connection string of a database that is one file, where the text is the name of such a file alone
/// ("plant.db"); any other text as it is.
std::string databaseString(std::string_view text);

/// Has a workbook's connection read what its sheet holds, rows to come included, and says so in a sentence.
/// Where the workbook cannot be read the range stays, and the sentence says why. The loop runs meanwhile.
std::string takeWholeSheet(LF2000::clsConnection& connection);

}  // namespace app
