// The drivers that are registered on this machine, and which database each is for.

#include "ado/Drivers.h"

#include <fcntl.h>
#include <odbcinst.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstring>
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

/// Names that end with a zero each, the last with two.
using Names = std::array<char, 16384>;

std::vector<std::string> listed(const Names& names) {
  std::vector<std::string> all;
  for (const char* name = names.data(); *name != '\0'; name += all.back().size() + 1) all.emplace_back(name);
  return all;
}

std::vector<std::string> registered() {
  Names names{};
  WORD length = 0;
  if (SQLGetInstalledDrivers(names.data(), static_cast<WORD>(names.size() - 2), &length) == 0) return {};
  return listed(names);
}

/// An entry of odbcinst.ini or odbc.ini; empty when there is none.
std::string entry(const std::string& section, const char* key, const char* file) {
  // The driver manager would give that of any section for it.
  if (section.empty()) return {};
  std::array<char, 1024> value{};
  SQLGetPrivateProfileString(section.c_str(), key, "", value.data(), static_cast<int>(value.size()), file);
  return value.data();
}

std::string libraryOf(const std::string& driver) {
  return std::filesystem::path(entry(driver, "Driver", "odbcinst.ini")).filename().string();
}

const KnownDriver* driverOfLibrary(std::string_view library) {
  const auto* const found = std::find_if(KnownDrivers.begin(), KnownDrivers.end(),
                                         [&](const KnownDriver* each) { return each->library == library; });
  return found == KnownDrivers.end() ? nullptr : *found;
}

}  // namespace

const KnownDriver* knownDriver(std::string_view name) {
  const std::string plain = lettersAndDigits(name);
  for (const KnownDriver* driver : KnownDrivers) {
    for (const std::string_view usual : driver->names) {
      if (!usual.empty() && basic::StartsWith(plain, usual)) return driver;
    }
  }
  return nullptr;
}

namespace {

/// Empty when there is none.
std::string nameOf(const KnownDriver& driver) {
  const std::vector<std::string> all = registered();
  for (const std::string& name : all) {
    if (libraryOf(name) == driver.library) return name;
  }
  // Another vendor's driver for the same database.
  for (const std::string& name : all) {
    if (knownDriver(name) == &driver) return name;
  }
  return {};
}

}  // namespace

bool isInstalled(const KnownDriver& driver) { return !nameOf(driver).empty(); }

std::vector<std::string> dataSources() {
  Names names{};
  SQLGetPrivateProfileString(nullptr, nullptr, "", names.data(), static_cast<int>(names.size() - 2),
                             "odbc.ini");
  std::vector<std::string> all = listed(names);
  // A section of the driver manager's own.
  std::erase(all, "ODBC Data Sources");
  return all;
}

std::string installedDriver(const KnownDriver& driver, std::string_view wanted) {
  if (std::string name = nameOf(driver); !name.empty()) return name;
  requireDescriptors();
  throw basic::Error(basic::AdapterError, "ADODB.Connection",
                     std::string(wanted) + " needs the ODBC driver for " + std::string(driver.database) +
                         ", which is not installed. On Debian it is in the package " +
                         std::string(driver.package) + ".");
}

std::string registeredDriver(std::string_view name) {
  for (std::string& each : registered()) {
    if (basic::EqualsIgnoreCase(each, name)) return std::move(each);
  }
  return {};
}

void requireDescriptors() {
  const int descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
  if (descriptor >= 0) {
    ::close(descriptor);
    return;
  }
  throw basic::Error(basic::AdapterError, "ADODB.Connection",
                     std::string("The ODBC drivers cannot be looked for: ") + std::strerror(errno) + ".");
}

std::string registeredDriverNames() {
  std::string names;
  for (const std::string& name : registered()) names += (names.empty() ? "" : ", ") + name;
  return names.empty() ? "none" : names;
}

const KnownDriver* driverBehindName(const std::string& registeredName) {
  return driverOfLibrary(libraryOf(registeredName));
}

const KnownDriver* driverBehindSource(const std::string& source) {
  const std::string driver = entry(source, "Driver", "odbc.ini");
  if (const KnownDriver* known = driverBehindName(driver)) return known;
  return driverOfLibrary(std::filesystem::path(driver).filename().string());
}

}  // namespace ado
