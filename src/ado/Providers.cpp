// Connection strings of other systems as those of the drivers here.

#include "ado/Providers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <utility>

#include "ado/ConnectionString.h"
#include "ado/Diagnostics.h"
#include "ado/Drivers.h"
#include "ado/FileSource.h"
#include "ado/Keywords.h"
#include "basic/ConnectionString.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/drives.h"

namespace ado {
namespace {

[[noreturn]] void failFor(const std::string& description) {
  throw basic::Error(basic::AdapterError, "ADODB.Connection", description);
}

using Keys = std::initializer_list<std::string_view>;

/// Moves the setting to the key that the driver reads, and erases the others.
void rename(ConnectionString& string, Keys from, std::string_view to) {
  const auto value = string.find(from);
  for (const std::string_view key : from) string.erase(key);
  if (value) string.set(to, *value);
}

constexpr std::array<std::string_view, 4> UserKeys = {"User ID", "UID", "User", "Username"};
constexpr std::array<std::string_view, 2> PasswordKeys = {"Password", "PWD"};

void renameCredentials(ConnectionString& string) {
  rename(string, {UserKeys[0], UserKeys[1], UserKeys[2], UserKeys[3]}, "UID");
  rename(string, {PasswordKeys[0], PasswordKeys[1]}, "PWD");
}

/// Settings of OLE DB itself mean nothing to a driver. Most of their keys have blanks.
void eraseOleDbSettings(ConnectionString& string) {
  std::vector<std::string> gone = {"Provider", "Mode", "Prompt", "Location"};
  for (const auto& [key, value] : string.settings()) {
    if (key.find(' ') != std::string::npos) gone.push_back(key);
  }
  for (const std::string& key : gone) string.erase(key);
}

void flattenExtendedProperties(ConnectionString& string) {
  const auto nested = string.find({"Extended Properties"});
  if (!nested) return;
  string.erase("Extended Properties");
  const ConnectionString properties(*nested);
  for (const auto& [key, value] : properties.settings()) string.setDefault(key, value);
}

constexpr std::string_view InMemory = ":memory:";

/// The setting's path as this system has it.
void translatePathOf(ConnectionString& string, std::string_view key, const PathTranslator& translatePath) {
  const auto path = string.find({key});
  if (translatePath && path && !path->empty() && *path != InMemory) string.set(key, translatePath(*path));
}

std::string dataFile(const ConnectionString& string, const std::string& provider) {
  std::string file = string.find({"Database"}).value_or("");
  if (file.empty()) failFor("A connection with " + provider + " names its file in \"Data Source\".");
  if (file == InMemory) return file;
  const std::string fault = host::OnDrive(file, [file](const auto&) -> std::string {
    std::error_code error;
    if (std::filesystem::is_regular_file(file, error)) return {};
    return std::filesystem::exists(file, error) ? "is not a file" : "does not exist or cannot be reached";
  });
  if (!fault.empty()) failFor("The database file " + file + " " + fault + ".");
  return file;
}

void setSqliteDefaults(ConnectionString& string) {
  // A path that leads nowhere is an error, not a new file.
  string.set("NoCreat", "1");
  // Rows one by one instead of all at once in the driver's memory.
  string.setDefault("StepAPI", "1");
  // Milliseconds for a lock to go; the reason is told before the command times out.
  string.setDefault("Timeout", "20000");
}

void setPostgresDefaults(ConnectionString& string) {
  string.setDefault("BoolsAsChar", "0");
  string.setDefault("UseDeclareFetch", "1");
  string.setDefault("Fetch", "1000");
}

void setTdsDefaults(ConnectionString& string) {
  for (const std::string_view key : {"Integrated Security", "Trusted_Connection"}) {
    const std::string value = basic::UCase(string.find({key}).value_or("NO"));
    if (value != "NO" && value != "FALSE") {
      failFor("The connection wants to sign in with the Windows account (" + std::string(key) +
              "). That is not possible here; give User ID and Password of an account of the server.");
    }
    string.erase(key);
  }
  rename(string, {"Encrypt"}, "Encryption");
  if (const auto encryption = string.find({"Encryption"})) {
    const std::string value = basic::UCase(*encryption);
    const bool isWanted = value == "YES" || value == "TRUE" || value == "MANDATORY" || value == "STRICT";
    if (isWanted) string.set("Encryption", "require");
    if (value == "NO" || value == "FALSE" || value == "OPTIONAL") string.erase("Encryption");
  }
  // "host,port" as the other drivers for this server have it.
  if (const auto server = string.find({"Server"})) {
    std::string host = basic::StartsWith(basic::UCase(*server), "TCP:") ? server->substr(4) : *server;
    if (const std::size_t comma = host.find(','); comma != std::string::npos) {
      string.set("Port", host.substr(comma + 1));
      host.resize(comma);
    }
    string.set("Server", host == "." || host == "(local)" ? "localhost" : host);
    if (host.find('\\') == std::string::npos) string.setDefault("Port", "1433");
  }
  string.setDefault("ClientCharset", "UTF-8");
  string.setDefault("TDS_Version", "7.4");
}

void setMariaDefaults(ConnectionString& string, const Target& target) {
  string.setDefault("CHARSET", "utf8mb4");
  // The driver takes it from here alone, and without would wait for a silent
  // server for ever.
  if (target.connectTimeout.count() > 0) {
    string.setDefault("CONN_TIMEOUT", std::to_string(target.connectTimeout.count()));
  }
}

void setDefaults(ConnectionString& string, const KnownDriver* driver, const Target& target) {
  if (driver == &SqliteDriver) setSqliteDefaults(string);
  if (driver == &PostgresDriver) setPostgresDefaults(string);
  if (driver == &MariaDriver) setMariaDefaults(string, target);
  if (driver == &TdsDriver) setTdsDefaults(string);
}

void translateSqlite(ConnectionString& string, const std::string& provider) {
  dataFile(string, provider);
  renameCredentials(string);
}

void translateMdb(ConnectionString& string, const std::string& provider) {
  const std::string properties = string.find({"Extended Properties"}).value_or("");
  for (const std::string_view kind : {"EXCEL", "TEXT", "DBASE", "HTML"}) {
    if (!basic::StartsWith(basic::UCase(properties), kind)) continue;
    failFor(provider + " serves Access databases here, not \"" + properties.substr(0, properties.find(';')) +
            "\". Text files and worksheets have connections of their own.");
  }
  const std::string file = dataFile(string, provider);
  string = ConnectionString();
  string.set("DBQ", file);
}

void translateServer(ConnectionString& string, std::string_view serverKey) {
  flattenExtendedProperties(string);
  rename(string, {"Data Source", "Server", "Host", "Address", "Addr", "Servername"}, serverKey);
  rename(string, {"Initial Catalog", "Database", "Location"}, "Database");
  renameCredentials(string);
}

void translateToServer(ConnectionString& string, const std::string&) { translateServer(string, "Server"); }
void translatePostgres(ConnectionString& string, const std::string&) {
  translateServer(string, "Servername");
}

struct Provider {
  std::string_view prefix;  // of the provider's name, in capitals
  const KnownDriver& driver;
  void (*translate)(ConnectionString& string, const std::string& provider);
};

const std::array<Provider, 11> Providers = {{{"MICROSOFT.JET.OLEDB.", MdbDriver, &translateMdb},
                                             {"MICROSOFT.ACE.OLEDB.", MdbDriver, &translateMdb},
                                             {"SQLOLEDB", TdsDriver, &translateToServer},
                                             {"SQLNCLI", TdsDriver, &translateToServer},
                                             {"MSOLEDBSQL", TdsDriver, &translateToServer},
                                             {"POSTGRES", PostgresDriver, &translatePostgres},
                                             {"PGNP", PostgresDriver, &translatePostgres},
                                             {"MYSQL", MariaDriver, &translateToServer},
                                             {"MARIADB", MariaDriver, &translateToServer},
                                             {"OLEMYSQL", MariaDriver, &translateToServer},
                                             {"SQLITE", SqliteDriver, &translateSqlite}}};

[[noreturn]] void failUnserved(const std::string& provider) {
  std::string served;
  for (const KnownDriver* driver : {&MdbDriver, &TdsDriver, &PostgresDriver, &MariaDriver, &SqliteDriver}) {
    served += (served.empty() ? "" : ", ") + std::string(driver->database) + " (package " +
              std::string(driver->package) + ")";
  }
  failFor("No driver here serves the provider '" + provider + "'. There are drivers for " + served +
          "; with another ODBC driver write \"Driver={its name};...\".");
}

/// The driver by that name, here or elsewhere; null when it is registered but not known.
const KnownDriver* resolveDriver(ConnectionString& string) {
  const std::string name = *string.find({"Driver"});
  const KnownDriver* const known = knownDriver(name);
  std::string registered = registeredDriver(name);
  if (registered.empty()) {
    if (known == nullptr) {
      requireDescriptors();
      failFor("No ODBC driver is registered as '" + name + "'. These are: " + registeredDriverNames() + ".");
    }
    registered = installedDriver(*known, "Driver={" + name + "}");
  }
  string.set("Driver", registered);
  return known;
}

void translateMsdasql(ConnectionString& string) {
  flattenExtendedProperties(string);
  rename(string, {"Data Source", "DSN"}, "DSN");
  rename(string, {"Initial Catalog", "Database"}, "Database");
  renameCredentials(string);
}

const KnownDriver& translateProvider(ConnectionString& string, const std::string& provider,
                                     const PathTranslator& translatePath) {
  const std::string name = basic::UCase(provider);
  const auto* const found = std::find_if(Providers.begin(), Providers.end(), [&name](const Provider& each) {
    return basic::StartsWith(name, each.prefix);
  });
  if (found == Providers.end()) failUnserved(provider);
  if (&found->driver == &SqliteDriver || &found->driver == &MdbDriver) {
    rename(string, {"Data Source", "Database", "DBQ", "DataSource"}, "Database");
    translatePathOf(string, "Database", translatePath);
  }
  found->translate(string, provider);
  string.set("Driver", installedDriver(found->driver, "The provider '" + provider + "'"));
  return found->driver;
}

/// What a file data source says is said by the string itself, where it does not say otherwise.
void expandFileSource(ConnectionString& string, const PathTranslator& translatePath) {
  translatePathOf(string, "FILEDSN", translatePath);
  const auto name = string.find({"FILEDSN"});
  if (!name) return;
  string.erase("FILEDSN");
  ConnectionString file = readFileSource(*name);
  translateMsdasql(file);
  const bool namesSource = string.has("Driver") || string.has("DSN");
  for (const auto& [key, value] : file.settings()) {
    const bool isSource = basic::EqualsIgnoreCase(key, "Driver") || basic::EqualsIgnoreCase(key, "DSN");
    if (!isSource || !namesSource) string.setDefault(key, value);
  }
}

void translateDriver(ConnectionString& string, const KnownDriver* driver, const Target& target) {
  setDefaults(string, driver, target);
  eraseOleDbSettings(string);
  keepKnownSettings(string, driver);
}

/// Returns how the driver reads braces.
Braces translate(ConnectionString& string, const Target& target, const PathTranslator& translatePath) {
  const auto provider = string.find({"Provider"});
  if (provider && !basic::StartsWith(basic::UCase(*provider), "MSDASQL")) {
    translateDriver(string, &translateProvider(string, *provider, translatePath), target);
  } else {
    translateMsdasql(string);
    expandFileSource(string, translatePath);
    if (string.has("DSN")) {
      if (string.has("Driver")) failFor("The connection string names both a Driver and a DSN.");
      eraseOleDbSettings(string);
      keepKnownSettingsBesideSource(string);
      return bracesOf(driverBehindSource(*string.find({"DSN"})));
    }
    if (!string.has("Driver")) failFor("The connection string names no Provider, Driver, DSN or FILEDSN.");
    const KnownDriver* const driver = resolveDriver(string);
    if (driver == &SqliteDriver) translatePathOf(string, "Database", translatePath);
    if (driver == &MdbDriver) translatePathOf(string, "DBQ", translatePath);
    translateDriver(string, driver, target);
  }
  return bracesOf(driverBehindName(*string.find({"Driver"})));
}

std::chrono::seconds takeSeconds(ConnectionString& string, Keys keys, std::chrono::seconds otherwise) {
  const auto text = string.find(keys);
  for (const std::string_view key : keys) string.erase(key);
  if (!text) return otherwise;
  int seconds = 0;
  const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), seconds);
  if (error != std::errc() || end != text->data() + text->size() || seconds < 0) {
    failFor("The time-out '" + *text + "' of the connection string is no number of seconds.");
  }
  return std::chrono::seconds(seconds);
}

void addSecrets(std::vector<std::string>& secrets, const ConnectionString& string) {
  for (std::string& secret : secretsOf(string)) {
    if (std::find(secrets.begin(), secrets.end(), secret) == secrets.end())
      secrets.push_back(std::move(secret));
  }
}

}  // namespace

Target targetOf(std::string_view connectionString, const PathTranslator& translatePath, std::string_view user,
                std::string_view password) {
  Target target;
  target.shown = basic::MaskedConnectionString(connectionString);
  ConnectionString string(connectionString);
  addSecrets(target.secrets, string);
  if (!password.empty()) target.secrets.emplace_back(password);
  try {
    target.connectTimeout =
        takeSeconds(string, {"Connect Timeout", "Connection Timeout"}, target.connectTimeout);
    target.commandTimeout =
        takeSeconds(string, {"Command Timeout", "General Timeout"}, target.commandTimeout);
    const Braces braces = translate(string, target, translatePath);
    addSecrets(target.secrets, string);  // a file data source may have brought some
    if (!user.empty()) string.set("UID", user);
    if (!password.empty()) string.set("PWD", password);
    target.odbcText = string.odbcText(braces);
  } catch (basic::Error& error) {
    error.description = withoutSecrets(std::move(error.description), target.secrets);
    throw;
  }
  return target;
}

}  // namespace ado
