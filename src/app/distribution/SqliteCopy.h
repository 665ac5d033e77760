#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace app {

/// Whether a file's first bytes are those of an SQLite database.
[[nodiscard]] bool isSqlite(std::string_view bytes);

/// The database as it stands between two transactions, also while others write: what lies in its write-ahead
/// log is in it. Throws basic::Error naming the file and why.
[[nodiscard]] std::string sqliteCopy(const std::string& path);

}  // namespace app
