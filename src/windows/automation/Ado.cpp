// What opens databases on this machine, and connections to them.

#include "windows/automation/Ado.h"

#include <algorithm>
#include <array>
#include <utility>

#include "basic/ConnectionString.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "windows/automation/AdoConnection.h"
#include "windows/automation/AdoRecordset.h"
#include "windows/com/Text.h"

namespace windows::automation {
namespace {

com::Class connectionClass{"ADODB.Connection"};
com::Class recordsetClass{"ADODB.Recordset"};

struct KnownProvider {
  const char* name;
  const char* description;
  bool isFile;
};
constexpr std::array<KnownProvider, 7> KnownProviders = {
    {{"Microsoft.ACE.OLEDB.16.0", "Access and Excel files", true},
     {"Microsoft.ACE.OLEDB.12.0", "Access and Excel files", true},
     {"Microsoft.Jet.OLEDB.4.0", "Access files of version 2000 to 2003", true},
     {"MSOLEDBSQL", "SQL Server", false},
     {"SQLOLEDB", "SQL Server", false},
     {"OraOLEDB.Oracle", "Oracle", false},
     {"MSDASQL", "ODBC data sources", false}}};

/// The names of the data sources below a root of the registry.
void addDataSources(HKEY root, std::vector<std::string>& names) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, L"Software\\ODBC\\ODBC.INI\\ODBC Data Sources", 0, KEY_QUERY_VALUE, &key) !=
      ERROR_SUCCESS) {
    return;
  }
  std::array<wchar_t, 256> name{};
  for (DWORD i = 0;; ++i) {
    auto size = static_cast<DWORD>(name.size());
    const LSTATUS result = RegEnumValueW(key, i, name.data(), &size, nullptr, nullptr, nullptr, nullptr);
    if (result != ERROR_SUCCESS) break;
    names.push_back(com::narrow({name.data(), size}));
  }
  RegCloseKey(key);
}

/// Without the secrets of the connection string that it is about.
basic::Error withoutSecrets(basic::Error error, std::string_view connectionString) {
  for (const auto& setting : basic::ReadConnectionString(connectionString)) {
    if (setting.value.empty() || !basic::IsSecretKey(setting.key)) continue;
    error.description = basic::Replace(error.description, setting.value, "***");
  }
  return error;
}

template <typename Call>
auto withoutSecretsOf(std::string_view connectionString, Call&& call) {
  try {
    return call();
  } catch (const basic::Error& error) {
    throw withoutSecrets(error, connectionString);
  }
}

}  // namespace

Connection::~Connection() {
  try {
    if (connection_.number(L"State") != ADODB::adStateClosed) connection_.call(L"Close");
  } catch (const basic::Error&) {  // NOLINT(bugprone-empty-catch): it goes all the same
  }
}

void Connection::ConnectionString(std::string_view text) {
  withoutSecretsOf(text, [&] { connection_.put(L"ConnectionString", text); });
  text_ = text;
}

void Connection::Open(std::string_view user, std::string_view password, std::int32_t options) {
  // ConnectionString, UserID, Password, Options
  withoutSecretsOf(text_, [&] { connection_.call(L"Open", com::Missing{}, user, password, options); });
}

void Connection::Close() { connection_.call(L"Close"); }

std::int32_t Connection::State() {
  return withoutSecretsOf(text_, [this] { return connection_.number(L"State"); });
}

std::shared_ptr<ADODB::Recordset> Connection::OpenSchema(ADODB::Schema schema, std::string_view table) {
  const auto kind = static_cast<std::int32_t>(schema);
  if (table.empty()) {
    return std::make_shared<Recordset>(connection_.object(recordsetClass, L"OpenSchema", kind));
  }
  // Catalog, schema, table, and a fourth that differs
  std::vector<com::Variant> restrictions(4);
  restrictions[2] = com::Variant(table);
  return std::make_shared<Recordset>(
      connection_.object(recordsetClass, L"OpenSchema", kind, com::Variant::array(std::move(restrictions))));
}

std::vector<ADODB::Provider> DataObjects::Providers() const {
  std::vector<ADODB::Provider> providers;
  for (const KnownProvider& known : KnownProviders) {
    CLSID id;
    const bool isThere = SUCCEEDED(CLSIDFromProgID(com::wide(known.name).c_str(), &id));
    providers.push_back({known.name, known.description, known.isFile,
                         isThere ? "" : "It is not installed on this computer."});
  }
  std::stable_partition(providers.begin(), providers.end(),
                        [](const ADODB::Provider& each) { return each.Missing.empty(); });
  return providers;
}

std::vector<std::string> DataObjects::DataSources() const {
  std::vector<std::string> names;
  addDataSources(HKEY_CURRENT_USER, names);
  addDataSources(HKEY_LOCAL_MACHINE, names);
  return names;
}

std::shared_ptr<ADODB::Connection> DataObjects::CreateConnection() {
  return std::make_shared<Connection>(com::Object::create(L"ADODB.Connection", connectionClass));
}

std::shared_ptr<ADODB::Recordset> DataObjects::CreateRecordset() {
  return std::make_shared<Recordset>(com::Object::create(L"ADODB.Recordset", recordsetClass));
}

}  // namespace windows::automation
