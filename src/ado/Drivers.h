#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace ado {

/// An ODBC driver that this system knows to use.
struct KnownDriver {
  std::string_view database;  // for messages
  std::string_view package;   // of Debian
  std::string_view library;   // file name of the driver
  /// Beginnings of the names that it is usually registered by, here and on
  /// other systems, the one to look for first first; letters and digits only.
  std::array<std::string_view, 5> names;
};

extern const KnownDriver SqliteDriver;
extern const KnownDriver PostgresDriver;
extern const KnownDriver MariaDriver;
extern const KnownDriver TdsDriver;
extern const KnownDriver MdbDriver;

// Registered is what odbcinst.ini of this machine names. A library that is not is
// never used: whoever writes a connection string must not choose what is loaded.

/// The driver whose usual names a registered or foreign name begins with; null
/// when it is none of them.
[[nodiscard]] const KnownDriver* knownDriver(std::string_view name);

/// The registered name of the driver. When there is none, an error that names the
/// package; `wanted` says what asked for it.
[[nodiscard]] std::string installedDriver(const KnownDriver& driver, std::string_view wanted);

/// The registered driver of exactly that name (in any case of letters), as it is
/// registered; else empty.
[[nodiscard]] std::string registeredDriver(std::string_view name);

/// Whether some registered driver serves the database.
[[nodiscard]] bool isInstalled(const KnownDriver& driver);

/// The data sources (DSN) that odbc.ini of this machine names.
[[nodiscard]] std::vector<std::string> dataSources();

/// Throws when no file can be opened any more, so that a driver that cannot be found is
/// not called missing.
void requireDescriptors();

/// Names of all registered drivers, for messages.
[[nodiscard]] std::string registeredDriverNames();

/// The driver whose library stands behind a registered name, or behind a data
/// source of odbc.ini; null when it is another's.
[[nodiscard]] const KnownDriver* driverBehindName(const std::string& registeredName);
[[nodiscard]] const KnownDriver* driverBehindSource(const std::string& source);

}  // namespace ado
