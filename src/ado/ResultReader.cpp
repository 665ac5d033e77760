// Rows fetched from a driver in blocks, and long values piece by piece.

#include "ado/ResultReader.h"

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <array>

#include "ado/Column.h"
#include "ado/Database.h"
#include "ado/Diagnostics.h"
#include "ado/Encoding.h"
#include "basic/Error.h"

namespace ado {
namespace {

constexpr std::size_t MostRowsAtOnce = 1000;                   // rows
constexpr std::size_t LargestBuffers = std::size_t{1} << 20U;  // bytes
constexpr std::size_t LongestName = 1024;

[[noreturn]] void fail(const std::string& words) {
  throw basic::Error(basic::AdapterError, "ADODB.Recordset", words);
}

[[noreturn]] void failFor(SQLHSTMT statement) { fail(diagnosisOf(HandleKind::Statement, statement).words); }

std::uint16_t columnCount(SQLHSTMT statement) {
  SQLSMALLINT count = 0;
  if (!SQL_SUCCEEDED(SQLNumResultCols(statement, &count))) failFor(statement);
  return static_cast<std::uint16_t>(count);
}

/// Goes to the first result that has columns and returns their number.
std::uint16_t findResult(SQLHSTMT statement) {
  SQLLEN changed = -1;
  SQLRowCount(statement, &changed);
  while (true) {
    if (const std::uint16_t count = columnCount(statement); count > 0) return count;
    const SQLRETURN more = SQLMoreResults(statement);
    if (more == SQL_NO_DATA) break;
    if (!SQL_SUCCEEDED(more)) failFor(statement);
  }
  fail("the statement was executed but gives no records" +
       (changed > 0 ? " (it changed " + std::to_string(changed) + ")" : std::string()) +
       "; a data connection needs one that does, such as SELECT");
}

ColumnDescription describe(SQLHSTMT statement, std::uint16_t number) {
  std::array<SQLCHAR, LongestName> name{};
  SQLSMALLINT length = 0;
  SQLSMALLINT type = 0;
  SQLULEN size = 0;
  SQLSMALLINT scale = 0;
  SQLSMALLINT nullable = 0;
  if (!SQL_SUCCEEDED(SQLDescribeCol(statement, number, name.data(), static_cast<SQLSMALLINT>(name.size()),
                                    &length, &type, &size, &scale, &nullable))) {
    failFor(statement);
  }
  SQLLEN isUnsigned = SQL_FALSE;
  if (type == SQL_BIGINT) {
    SQLColAttribute(statement, number, SQL_DESC_UNSIGNED, nullptr, 0, nullptr, &isUnsigned);
  }
  return {utf8FromDriver(reinterpret_cast<const char*>(name.data())), type, size, isUnsigned == SQL_TRUE};
}

/// Rows that a block has: one where values may have to be asked for.
std::size_t blockSize(SQLHSTMT statement, const std::vector<Column>& columns) {
  std::size_t width = 0;
  for (const Column& column : columns) {
    if (column.isLong()) return 1;
    width += column.width();
  }
  const std::size_t rows =
      std::clamp(LargestBuffers / std::max<std::size_t>(width, 1), std::size_t{1}, MostRowsAtOnce);
  // ODBC hands numbers over as pointers. NOLINTNEXTLINE(performance-no-int-to-ptr)
  const bool taken = SQL_SUCCEEDED(SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE,
                                                  reinterpret_cast<SQLPOINTER>(rows), SQL_IS_UINTEGER));
  return taken ? rows : 1;
}

/// Without rereading only the columns before the first long one are bound: the
/// others are asked for, in their order.
void bind(SQLHSTMT statement, std::vector<Column>& columns, bool rereads, std::size_t rows) {
  bool bound = true;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const auto number = static_cast<std::uint16_t>(i + 1);
    bound = bound && (rereads || !columns[i].isLong());
    if (bound) {
      columns[i].bind(statement, number, rows);
    } else {
      columns[i].leaveUnbound(number);
    }
  }
}

}  // namespace

ResultTable readResult(void* statement, const Dialect& dialect, const StatementSlot& slot) {
  const std::uint16_t count = findResult(statement);
  std::vector<std::string> names;
  std::vector<Column> columns;
  for (std::uint16_t i = 1; i <= count; ++i) {
    ColumnDescription description = describe(statement, i);
    names.push_back(description.name);
    columns.emplace_back(std::move(description), dialect);
  }

  const std::size_t rows = blockSize(statement, columns);
  SQLULEN fetched = 0;
  std::vector<SQLUSMALLINT> states(rows, SQL_ROW_SUCCESS);
  if (rows > 1) {
    SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, SQL_IS_POINTER);
    SQLSetStmtAttr(statement, SQL_ATTR_ROW_STATUS_PTR, states.data(), SQL_IS_POINTER);
  }
  bind(statement, columns, dialect.rereads, rows);

  ResultTableBuilder builder(std::move(names));
  while (true) {
    const SQLRETURN result = SQLFetch(statement);
    if (result == SQL_NO_DATA) return builder.finish();
    if (!SQL_SUCCEEDED(result)) failFor(statement);
    if (slot.stopped()) fail("stopped");
    const std::size_t block = rows == 1 ? 1 : fetched;
    for (std::size_t row = 0; row < block; ++row) {
      if (states[row] == SQL_ROW_ERROR) failFor(statement);
      for (Column& column : columns) column.addCell(statement, row, builder);
      builder.endRow();
    }
  }
}

}  // namespace ado
