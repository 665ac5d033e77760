#pragma once

#include <string>
#include <string_view>

namespace LF2000 {

/// A connection string as a form asks for it. What else it says is no part, and stays.
struct ConnectionParts {
  /// As behind "Provider="; empty where a driver or a data source is named instead.
  std::string Provider;
  /// A data source of the machine (DSN).
  std::string DataSource;
  std::string Server;
  std::string Port;
  /// The database on the server, or its file.
  std::string Database;
  std::string User;
};

enum class ConnectionPart { Server, Port, Database, User };

/// The parts of a connection string; those that cannot be read are empty.
[[nodiscard]] ConnectionParts ReadParts(std::string_view text);

/// A connection string of these parts alone. `isFile`: the provider's databases are files. Values stand in
/// braces, so that none of them can say more than its own.
[[nodiscard]] std::string BuildConnectionString(const ConnectionParts& parts, bool isFile);

/// The connection string with another value of a part, in its place, and everything else as it was.
[[nodiscard]] std::string WithPart(std::string_view text, ConnectionPart part, std::string_view value,
                                   bool isFile);

}  // namespace LF2000
