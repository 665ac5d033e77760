#include "connections/DatabaseCatalog.h"

#include <array>
#include <utility>
#include <variant>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/services.h"

namespace LF2000 {

namespace {

constexpr std::array<std::string_view, 2> UsualSchemas = {"public", "dbo"};

std::string Part(const std::string& name) {
  const bool isPlain = name.find_first_of(".\"`[]") == std::string::npos;
  return isPlain ? name : '"' + basic::Replace(name, "\"", "\"\"") + '"';
}

std::string TextOf(ADODB::Recordset& recordset, std::string_view field) {
  const basic::Variant value = recordset.Fields().Item(field).Value();
  return std::holds_alternative<basic::Null>(value) ? std::string() : basic::CStr(value);
}

}  // namespace

std::string DatabaseTable::FullName() const {
  const bool isUsual = Schema.empty() || basic::EqualsIgnoreCase(Schema, UsualSchemas[0]) ||
                       basic::EqualsIgnoreCase(Schema, UsualSchemas[1]);
  return isUsual ? Part(Name) : Part(Schema) + "." + Part(Name);
}

std::vector<DatabaseTable> DatabaseCatalog::Tables() {
  const auto list = List(ADODB::adSchemaTables, {});
  std::vector<DatabaseTable> tables;
  for (std::int64_t left = list->RecordCount(); left > 0; --left, list->Move(1)) {
    tables.push_back(
        {TextOf(*list, "TABLE_SCHEMA"), TextOf(*list, "TABLE_NAME"), TextOf(*list, "TABLE_TYPE")});
  }
  return tables;
}

std::vector<std::string> DatabaseCatalog::Columns(const DatabaseTable& table) {
  const auto list = List(ADODB::adSchemaColumns, table.Name);
  std::vector<std::string> columns;
  for (std::int64_t left = list->RecordCount(); left > 0; --left, list->Move(1)) {
    if (TextOf(*list, "TABLE_SCHEMA") == table.Schema) columns.push_back(TextOf(*list, "COLUMN_NAME"));
  }
  return columns;
}

std::shared_ptr<ADODB::Recordset> DatabaseCatalog::List(ADODB::Schema schema, std::string_view table) try {
  Close();
  const auto opening = host::Current().ado->CreateConnection();
  connection_ = opening;
  opening->ConnectionString(connectionString_);
  opening->Open("", "", ADODB::adOptionUnspecified);
  RequireStillWanted(opening);
  WaitForConnection(opening);
  auto list = opening->OpenSchema(schema, table);
  while (list->State() == ADODB::adStateFetching) {
    host::Current().loop->DoEvents();
    RequireStillWanted(opening);
  }
  list->ActiveConnection(nullptr);
  Close();
  return list;
} catch (...) {
  Close();
  throw;
}

void DatabaseCatalog::WaitForConnection(const std::shared_ptr<ADODB::Connection>& opening) const {
  while (opening->State() != ADODB::adStateOpen) {
    host::Current().loop->DoEvents();
    RequireStillWanted(opening);
  }
}

void DatabaseCatalog::RequireStillWanted(const std::shared_ptr<ADODB::Connection>& connection) const {
  if (connection_ == connection) return;
  throw basic::Error(basic::AdapterError, basic::DefaultSource, "It was closed while it was being listed.");
}

void DatabaseCatalog::Close() {
  const auto connection = std::exchange(connection_, nullptr);
  modGlobalFunctions::IgnoreErrors([&] {
    if (connection && connection->State() != ADODB::adStateClosed) connection->Close();
  });
}

}  // namespace LF2000
