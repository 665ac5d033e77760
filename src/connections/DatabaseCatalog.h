#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/adodb.h"

namespace LF2000 {

/// A table or view of a database.
struct DatabaseTable {
  /// Empty where the database has none.
  std::string Schema;
  std::string Name;
  /// "TABLE" or "VIEW".
  std::string Type;

  /// As a connection names it: with its schema, unless that is the one that databases look in by themselves.
  [[nodiscard]] std::string FullName() const;
};

/// What a database offers, listed over a connection of its own. Both lists open it, let the loop run while
/// they wait, and close it again.
class DatabaseCatalog {
 public:
  /// The connection string with its paths resolved (modGlobalFunctions::ResolveConnectionString).
  explicit DatabaseCatalog(std::string connectionString) : connectionString_(std::move(connectionString)) {}

  /// The tables and views that the account can see, as the database orders them.
  [[nodiscard]] std::vector<DatabaseTable> Tables();
  /// The columns of a table in their order.
  [[nodiscard]] std::vector<std::string> Columns(const DatabaseTable& table);
  /// Makes the list that is under way end, by an error.
  void Close();

 private:
  std::shared_ptr<ADODB::Recordset> List(ADODB::Schema schema, std::string_view table);
  void WaitForConnection(const std::shared_ptr<ADODB::Connection>& opening) const;
  void RequireStillWanted(const std::shared_ptr<ADODB::Connection>& connection) const;

  std::string connectionString_;
  std::shared_ptr<ADODB::Connection> connection_;
};

}  // namespace LF2000
