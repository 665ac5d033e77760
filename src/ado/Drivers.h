#pragma once

#include <array>
#include <string>
#include <string_view>

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

/// The driver whose usual names a registered or foreign name begins with, or
/// the one whose library a path names; null when it is none of them.
[[nodiscard]] const KnownDriver* knownDriver(std::string_view nameOrPath);

/// What follows "Driver=" to get the driver: a name from odbcinst.ini or, where
/// it is not registered, the path of its library. When it is not installed, an
/// error that names the package; `wanted` says what asked for it.
[[nodiscard]] std::string installedDriver(const KnownDriver& driver, std::string_view wanted);

/// The registered driver of exactly that name (in any case of letters), as it
/// is registered, or a path to a library as it is; else empty.
[[nodiscard]] std::string registeredDriver(std::string_view name);

/// Names of all registered drivers, for messages.
[[nodiscard]] std::string registeredDriverNames();

}  // namespace ado
