#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ado {

/// A connection string as the driver manager takes it, and what else it says.
struct Target {
  std::string odbcText;
  /// For messages: the string as its author wrote it, secrets masked.
  std::string shown;
  /// What must not stand in any message.
  std::vector<std::string> secrets;
  std::chrono::seconds connectTimeout{15};
  /// Zero is without end.
  std::chrono::seconds commandTimeout{30};
  /// See Factory::readOnly().
  bool isReadOnly = false;
};

/// Turns a path of any system into one of this system, or throws basic::Error
/// with the reason. An empty one leaves paths as they are.
using PathTranslator = std::function<std::string(std::string_view)>;

/// Translates a connection string:
///
/// - plain ODBC (Driver=, DSN=, FILEDSN=): a driver by the name that it is registered
///   by here, or by its usual name elsewhere ("{SQL Server}"), never by a path;
/// - Provider=MSDASQL around such a one, also in Extended Properties;
/// - OLE DB providers, by the ODBC driver that serves their database here:
///   Microsoft.Jet.OLEDB.*, Microsoft.ACE.OLEDB.*, SQLOLEDB, SQLNCLI*, MSOLEDBSQL*,
///   PostgreSQL, PGNP, MySQL, MariaDB, SQLite.
///
/// User and password, where given, replace those of the string. "Connect
/// Timeout" and "Command Timeout" (seconds) are taken out of it. What nothing
/// serves is an error that names provider and package, and so is a setting that is not
/// known to be harmless (see Keywords.h). Paths of database files (SQLite, Access) and of
/// FILEDSN go through `translatePath`. Where such a file lies on another machine, the loop runs while it is
/// looked for and read (host/drives.h).
[[nodiscard]] Target targetOf(std::string_view connectionString, const PathTranslator& translatePath = {},
                              std::string_view user = {}, std::string_view password = {});

}  // namespace ado
