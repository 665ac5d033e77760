#include "ado/Drivers.h"

#include <odbcinst.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <vector>

#include "basic/Error.h"
#include "basic/Strings.h"

namespace ado {

const KnownDriver SqliteDriver{
    "SQLite", "libsqliteodbc", "libsqlite3odbc.so", {"sqlite3", "sqliteodbc", "sqlite"}};
const KnownDriver PostgresDriver{"PostgreSQL",
                                 "odbc-postgresql",
                                 "psqlodbcw.so",
                                 {"postgresqlunicode", "postgresql", "psqlodbc", "postgres"}};
const KnownDriver MariaDriver{"MariaDB and MySQL", "odbc-mariadb", "libmaodbc.so", {"mariadb", "mysql"}};
const KnownDriver TdsDriver{"Microsoft SQL Server",
                            "tdsodbc",
                            "libtdsodbc.so",
                            {"freetds", "sqlserver", "odbcdriver1", "sqlnativeclient", "sqlncli"}};
const KnownDriver MdbDriver{
    "Access databases", "odbc-mdbtools", "libmdbodbc.so", {"mdbtools", "microsoftaccessdriver", "mdb"}};

namespace {

const std::array<const KnownDriver*, 5> KnownDrivers = {&SqliteDriver, &PostgresDriver, &MariaDriver,
                                                        &TdsDriver, &MdbDriver};

std::string lettersAndDigits(std::string_view text) {
  std::string plain;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) != 0) plain += static_cast<char>(std::tolower(byte));
  }
  return plain;
}

/// Names end with a zero each, the last with two.
std::vector<std::string> registered() {
  std::array<char, 16384> names{};
  WORD length = 0;
  if (SQLGetInstalledDrivers(names.data(), static_cast<WORD>(names.size() - 2), &length) == 0) return {};
  std::vector<std::string> all;
  for (const char* name = names.data(); *name != '\0'; name += all.back().size() + 1) all.emplace_back(name);
  return all;
}

std::string libraryOf(const std::string& driver) {
  std::array<char, 1024> path{};
  SQLGetPrivateProfileString(driver.c_str(), "Driver", "", path.data(), static_cast<int>(path.size()),
                             "odbcinst.ini");
  return std::filesystem::path(path.data()).filename().string();
}

/// Debian keeps drivers in the folder "odbc" below that of the architecture.
std::string unregisteredLibrary(std::string_view library) {
  std::error_code ignored;
  for (const char* root : {"/usr/lib", "/usr/local/lib"}) {
    for (const auto& each : std::filesystem::directory_iterator(root, ignored)) {
      for (const auto& folder : {each.path() / "odbc", each.path()}) {
        if (std::filesystem::exists(folder / library, ignored)) return (folder / library).string();
      }
    }
  }
  return {};
}

}  // namespace

const KnownDriver* knownDriver(std::string_view nameOrPath) {
  const bool isPath = basic::StartsWith(nameOrPath, "/");
  const std::string file = std::filesystem::path(nameOrPath).filename().string();
  const std::string plain = lettersAndDigits(nameOrPath);
  for (const KnownDriver* driver : KnownDrivers) {
    if (isPath && file == driver->library) return driver;
    if (isPath) continue;
    for (const std::string_view name : driver->names) {
      if (!name.empty() && basic::StartsWith(plain, name)) return driver;
    }
  }
  return nullptr;
}

std::string installedDriver(const KnownDriver& driver, std::string_view wanted) {
  const std::vector<std::string> all = registered();
  for (const std::string& name : all) {
    if (libraryOf(name) == driver.library) return name;
  }
  if (std::string path = unregisteredLibrary(driver.library); !path.empty()) return path;
  // Another vendor's driver for the same database.
  for (const std::string& name : all) {
    if (knownDriver(name) == &driver) return name;
  }
  throw basic::Error(basic::AdapterError, "ADODB.Connection",
                     std::string(wanted) + " needs the ODBC driver for " + std::string(driver.database) +
                         ", which is not installed. On Debian it is in the package " +
                         std::string(driver.package) + ".");
}

std::string registeredDriver(std::string_view name) {
  if (basic::StartsWith(name, "/")) return std::string(name);
  for (std::string& each : registered()) {
    if (basic::EqualsIgnoreCase(each, name)) return std::move(each);
  }
  return {};
}

std::string registeredDriverNames() {
  std::string names;
  for (const std::string& name : registered()) names += (names.empty() ? "" : ", ") + name;
  return names.empty() ? "none" : names;
}

}  // namespace ado
