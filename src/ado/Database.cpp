// One connection by the driver manager: opened, asked, and its failures in words without secrets.

#include "ado/Database.h"

#include <sql.h>
#include <sqlext.h>

#include <array>
#include <span>
#include <utility>
#include <variant>

#include "ado/Diagnostics.h"
#include "ado/Drivers.h"
#include "ado/Encoding.h"
#include "ado/ResultReader.h"
#include "ado/SqlText.h"
#include "ado/SqliteGuard.h"
#include "ado/TableName.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"

namespace ado {
namespace {

SQLCHAR* characters(const std::string& text) {
  // The interface is older than const; drivers do not write to it.
  return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.c_str()));
}

/// A statement of the connection.
class Statement {
 public:
  explicit Statement(SQLHDBC connection) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, connection, &handle_))) {
      throw basic::Error(basic::AdapterError, "ADODB.Recordset",
                         diagnosisOf(HandleKind::Connection, connection).words);
    }
  }
  ~Statement() { SQLFreeHandle(SQL_HANDLE_STMT, handle_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  [[nodiscard]] SQLHSTMT handle() const { return handle_; }
  /// Statements that change no row succeed without data.
  [[nodiscard]] bool execute(const std::string& sql) const {
    const SQLRETURN result = SQLExecDirect(handle_, characters(sql), SQL_NTS);
    return SQL_SUCCEEDED(result) || result == SQL_NO_DATA;
  }

 private:
  SQLHSTMT handle_ = SQL_NULL_HSTMT;
};

/// Shows a statement in a slot while it executes.
class Shown {
 public:
  Shown(const Statement& statement, StatementSlot& slot) : slot_(slot) { slot_.show(statement.handle()); }
  ~Shown() { slot_.hide(); }
  Shown(const Shown&) = delete;
  Shown& operator=(const Shown&) = delete;

 private:
  StatementSlot& slot_;
};

bool saysNoSuchTable(const std::string& state) { return state == "42P01" || state == "42S02"; }

bool isTable(const Source& source) {
  return source.kind == Source::Kind::Table ||
         (source.kind == Source::Kind::Either && !isStatement(source.text));
}

/// What is read while it lives changes nothing. No longer than that: a pooler may hand the session to others.
class ReadOnly {
 public:
  ReadOnly(SQLHDBC connection, const Dialect& dialect) : connection_(connection), dialect_(dialect) {
    begin();
  }
  ~ReadOnly() { end(); }
  ReadOnly(const ReadOnly&) = delete;
  ReadOnly& operator=(const ReadOnly&) = delete;

  /// After a failure, behind which databases may do nothing more in a transaction.
  void beginAnew() const {
    end();
    begin();
  }

 private:
  void begin() const { run(dialect_.beginReading); }
  /// What has gone with its connection has ended.
  void end() const try { run(dialect_.endReading); } catch (const basic::Error&) {
  }
  void run(const std::string& sql) const {
    if (sql.empty()) return;
    const Statement statement(connection_);
    if (statement.execute(sql)) return;
    throw basic::Error(basic::AdapterError, "ADODB.Recordset",
                       diagnosisOf(HandleKind::Statement, statement.handle()).words);
  }

  SQLHDBC connection_;
  const Dialect& dialect_;
};

void execute(const Statement& statement, const Source& source, const std::string& quote,
             const ReadOnly& readOnly) {
  const auto select = [](const std::string& table) { return "SELECT * FROM " + table; };
  if (statement.execute(isTable(source) ? select(quotedTableName(source.text, quote)) : source.text)) return;
  const Diagnosis diagnosis = diagnosisOf(HandleKind::Statement, statement.handle());
  // In quotes the case of letters counts, which the author may not have meant.
  const bool again = isTable(source) && saysNoSuchTable(diagnosis.state) && isPlainName(source.text);
  if (again) readOnly.beginAnew();
  if (again && statement.execute(select(source.text))) return;
  throw basic::Error(basic::AdapterError, "ADODB.Recordset", diagnosis.words);
}

std::string shortened(const std::string& text) {
  constexpr std::size_t Longest = 200;
  const std::string_view start = basic::Left(text, Longest);
  return start.size() == text.size() ? text : std::string(start) + "...";
}

bool isSchema(const Source& source) {
  return source.kind == Source::Kind::Tables || source.kind == Source::Kind::Columns;
}

/// A column of what the driver lists, and its name in a schema recordset.
struct SchemaColumn {
  std::size_t place;
  const char* name;
};
// The places of both lists are those of ODBC's reference, SQLTables and SQLColumns.
constexpr std::array TablesSchema = {SchemaColumn{1, "TABLE_SCHEMA"}, SchemaColumn{2, "TABLE_NAME"},
                                     SchemaColumn{3, "TABLE_TYPE"}};
constexpr std::array ColumnsSchema = {SchemaColumn{1, "TABLE_SCHEMA"}, SchemaColumn{2, "TABLE_NAME"},
                                      SchemaColumn{3, "COLUMN_NAME"}, SchemaColumn{16, "ORDINAL_POSITION"}};

/// In a pattern of names "_" and "%" stand for others.
std::string asPattern(const std::string& name, const std::string& escape) {
  std::string pattern;
  for (const char c : name) {
    if (c == '_' || c == '%' || escape == std::string(1, c)) pattern += escape;
    pattern += c;
  }
  return pattern;
}

void list(const Statement& statement, const Source& source, const std::string& escape) {
  std::string table = asPattern(source.text, escape);
  SQLCHAR* const named = table.empty() ? nullptr : characters(table);
  const SQLSMALLINT length = table.empty() ? 0 : SQL_NTS;
  std::string types = "TABLE,VIEW";
  const SQLRETURN result =
      source.kind == Source::Kind::Tables
          ? SQLTables(statement.handle(), nullptr, 0, nullptr, 0, named, length, characters(types), SQL_NTS)
          : SQLColumns(statement.handle(), nullptr, 0, nullptr, 0, named, length, nullptr, 0);
  if (SQL_SUCCEEDED(result)) return;
  throw basic::Error(basic::AdapterError, "ADODB.Connection",
                     diagnosisOf(HandleKind::Statement, statement.handle()).words);
}

/// Drivers name the columns of their lists as they like, and leave some out.
ResultTable schemaTable(const ResultTable& listed, const Source& source) {
  const std::span<const SchemaColumn> schema = source.kind == Source::Kind::Tables
                                                   ? std::span<const SchemaColumn>(TablesSchema)
                                                   : std::span<const SchemaColumn>(ColumnsSchema);
  std::vector<std::string> names;
  for (const SchemaColumn& column : schema) names.emplace_back(column.name);
  ResultTableBuilder builder(std::move(names));
  for (std::size_t row = 0; row < listed.rowCount(); ++row) {
    for (const SchemaColumn& column : schema) {
      const basic::Variant value = column.place < listed.columns().size() ? listed.value(row, column.place)
                                                                          : basic::Variant(basic::Null{});
      const std::string text =
          std::holds_alternative<basic::Null>(value) ? std::string() : basic::CStr(value);
      if (text.empty()) {
        builder.addNull();
      } else {
        builder.addText(text);
      }
    }
    builder.endRow();
  }
  return builder.finish();
}

}  // namespace

std::string shownSource(const Source& source) {
  if (source.kind == Source::Kind::Tables) return "the list of the tables";
  if (source.kind == Source::Kind::Columns) return "the list of the columns";
  return (isTable(source) ? "the table '" : "'") + shortened(source.text) + "'";
}

Database::Database(Target target) : target_(std::move(target)) {
  guardSqlite();
  if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_))) {
    fail("start the ODBC driver manager", "out of memory");
  }
  try {
    SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_))) {
      fail("start the ODBC driver manager", diagnosisOf(HandleKind::Environment, environment_).words);
    }
    // Not every driver knows it; who waits has a clock of their own.
    SQLSetConnectAttr(connection_, SQL_ATTR_LOGIN_TIMEOUT,
                      reinterpret_cast<SQLPOINTER>(target_.connectTimeout.count()), SQL_IS_UINTEGER);
    if (target_.isReadOnly) {
      SQLSetConnectAttr(connection_, SQL_ATTR_ACCESS_MODE, reinterpret_cast<SQLPOINTER>(SQL_MODE_READ_ONLY),
                        SQL_IS_UINTEGER);
    }
    const SqliteReadOnly sqlite(target_.isReadOnly);
    if (!SQL_SUCCEEDED(SQLDriverConnect(connection_, nullptr, characters(target_.odbcText), SQL_NTS, nullptr,
                                        0, nullptr, SQL_DRIVER_NOPROMPT))) {
      requireDescriptors();
      fail("open the connection '" + target_.shown + "'",
           diagnosisOf(HandleKind::Connection, connection_).words);
    }
    connected_ = true;
    dialect_ = askDialect();
  } catch (...) {
    disconnect();
    throw;
  }
}

Database::~Database() { disconnect(); }

void Database::disconnect() noexcept {
  if (connected_ && !SQL_SUCCEEDED(SQLDisconnect(connection_))) {
    SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_ROLLBACK);
    SQLDisconnect(connection_);
  }
  if (connection_ != nullptr) SQLFreeHandle(SQL_HANDLE_DBC, connection_);
  if (environment_ != nullptr) SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

ResultTable Database::read(const Source& source, StatementSlot& slot) try {
  const auto leaveIfStopped = [&slot] {
    if (slot.stopped()) throw basic::Error(basic::AdapterError, "ADODB.Recordset", "stopped");
  };
  const ReadOnly readOnly(connection_, dialect_);
  const Statement statement(connection_);
  {
    // Interrupted between rows, drivers free those that are being read, so that
    // ends with the execution. Reading looks at the slot itself.
    std::optional<Shown> shown;
    if (dialect_.interruptible) shown.emplace(statement, slot);
    // Who stopped it before the statement was shown could not interrupt it.
    leaveIfStopped();
    if (isSchema(source)) {
      list(statement, source, infoText(SQL_SEARCH_PATTERN_ESCAPE));
    } else {
      const bool isQuoted = isTable(source) && !dialect_.quote.empty();
      if (target_.isReadOnly && !isQuoted) requireOneStatement(source.text);
      execute(statement, source, dialect_.quote, readOnly);
    }
  }
  leaveIfStopped();
  ResultTable result = readResult(statement.handle(), dialect_, slot);
  return isSchema(source) ? schemaTable(result, source) : std::move(result);
} catch (const basic::Error& error) {
  const std::string of = isSchema(source) ? " of '" + target_.shown + "'" : std::string();
  fail("read " + shownSource(source) + of, error.description);
}

void Database::fail(const std::string& what, const std::string& words) const {
  throw basic::Error(basic::AdapterError, "ADODB.Connection",
                     withoutSecrets("Cannot " + what + ": " + words + ".", target_.secrets));
}

void Database::requireOneStatement(const std::string& sql) const {
  if (!holdsSeveralStatements(sql, syntaxOf(infoText(SQL_DBMS_NAME)))) return;
  throw basic::Error(basic::AdapterError, "ADODB.Recordset",
                     "it holds several statements, and here one alone is run; leave the one that reads");
}

std::string Database::infoText(std::uint16_t info) const {
  std::array<char, 128> text{};
  SQLSMALLINT length = 0;
  if (!SQL_SUCCEEDED(
          SQLGetInfo(connection_, info, text.data(), static_cast<SQLSMALLINT>(text.size()), &length))) {
    return {};
  }
  return text.data();
}

Dialect Database::askDialect() const {
  Dialect dialect;
  dialect.quote = infoText(SQL_IDENTIFIER_QUOTE_CHAR);
  if (dialect.quote == " ") dialect.quote.clear();
  const std::string driver = infoText(SQL_DRIVER_NAME);
  dialect.looseTypes = driver.find("sqlite") != std::string::npos;
  dialect.interruptible = !dialect.looseTypes;
  dialect.trueSizes =
      driver.find("maodbc") != std::string::npos || driver.find("tdsodbc") != std::string::npos;
  if (target_.isReadOnly) {
    // SQLite has been told already (SqliteReadOnly).
    const std::string database = infoText(SQL_DBMS_NAME);
    if (database == "PostgreSQL") {
      dialect.beginReading = "BEGIN TRANSACTION READ ONLY";
      dialect.endReading = "ROLLBACK";
    }
    // By the session: what defines tables ends a transaction before it is run.
    if (database == "MariaDB" || database == "MySQL") {
      dialect.beginReading = "SET SESSION TRANSACTION READ ONLY";
      dialect.endReading = "SET SESSION TRANSACTION READ WRITE";
    }
  }
  SQLUINTEGER extensions = 0;
  SQLGetInfo(connection_, SQL_GETDATA_EXTENSIONS, &extensions, sizeof extensions, nullptr);
  constexpr SQLUINTEGER Needed = SQL_GD_BOUND | SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER;
  dialect.rereads = (extensions & Needed) == Needed;
  return dialect;
}

}  // namespace ado
