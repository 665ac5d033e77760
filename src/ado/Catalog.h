#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ado/Providers.h"

namespace ado {

/// A table or view of a database.
struct TableInfo {
  std::string schema;  // empty where the database has none
  std::string name;
  std::string type;  // "TABLE", "VIEW"
};

/// The tables and views that the account of the connection string can see, as
/// the driver orders them. Opens a connection of its own and waits for the
/// server: for commands, not for the loop. Errors are as those of Connection.
[[nodiscard]] std::vector<TableInfo> listTables(std::string_view connectionString,
                                                const PathTranslator& translatePath = {});

}  // namespace ado
