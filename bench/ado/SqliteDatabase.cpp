#include "SqliteDatabase.h"

#include <sql.h>
#include <sqlext.h>

#include <array>
#include <cstdlib>
#include <stdexcept>

namespace bench {
namespace {

SQLCHAR* characters(std::string& text) { return reinterpret_cast<SQLCHAR*>(text.data()); }

void require(SQLRETURN result, const char* what) {
  if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) throw std::runtime_error(what);
}

class Statement {
 public:
  explicit Statement(std::string connection) {
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_);
    SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
    require(SQLDriverConnect(connection_, nullptr, characters(connection), SQL_NTS, nullptr, 0, nullptr,
                             SQL_DRIVER_NOPROMPT),
            "connecting failed");
    SQLAllocHandle(SQL_HANDLE_STMT, connection_, &handle_);
  }
  ~Statement() {
    SQLFreeHandle(SQL_HANDLE_STMT, handle_);
    SQLDisconnect(connection_);
    SQLFreeHandle(SQL_HANDLE_DBC, connection_);
    SQLFreeHandle(SQL_HANDLE_ENV, environment_);
  }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  void execute(std::string sql) { require(SQLExecDirect(handle_, characters(sql), SQL_NTS), sql.c_str()); }
  [[nodiscard]] SQLHSTMT handle() const { return handle_; }

 private:
  SQLHENV environment_ = nullptr;
  SQLHDBC connection_ = nullptr;
  SQLHSTMT handle_ = nullptr;
};

}  // namespace

SqliteDatabase::SqliteDatabase(std::int64_t rows) {
  std::string folder = (std::filesystem::temp_directory_path() / "lumenfold.XXXXXX").string();
  if (::mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no folder");
  file_ = folder + "/stock.db";
  Statement statement("Driver=SQLite3;Database=" + file_);
  std::string columns;
  std::string values;
  for (int i = 0; i < Columns; ++i) {
    const std::string number = std::to_string(i);
    columns += (i == 0 ? "c" : ", c") + number + " VARCHAR(40)";
    values += (i == 0 ? "" : ", ") + ("'value " + number + " of row ' || x");
  }
  statement.execute("CREATE TABLE Stock (" + columns + ")");
  statement.execute("WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n LIMIT " +
                    std::to_string(rows) + ") INSERT INTO Stock SELECT " + values + " FROM n");
}

SqliteDatabase::~SqliteDatabase() {
  std::error_code ignored;
  std::filesystem::remove_all(std::filesystem::path(file_).parent_path(), ignored);
}

std::size_t SqliteDatabase::bareLoop() const {
  Statement statement("Driver=SQLite3;Database=" + file_ + ";NoCreat=1;StepAPI=1");
  statement.execute(Query);
  std::array<std::array<char, 161>, Columns> buffers;
  std::array<SQLLEN, Columns> lengths{};
  for (std::size_t i = 0; i < Columns; ++i) {
    SQLBindCol(statement.handle(), static_cast<SQLUSMALLINT>(i + 1), SQL_C_CHAR, buffers[i].data(),
               static_cast<SQLLEN>(buffers[i].size()), &lengths[i]);
  }
  std::size_t bytes = 0;
  while (SQL_SUCCEEDED(SQLFetch(statement.handle()))) {
    for (const SQLLEN length : lengths) bytes += static_cast<std::size_t>(length);
  }
  return bytes;
}

}  // namespace bench
