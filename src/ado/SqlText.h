#pragma once

#include <string_view>

namespace ado {

/// How a database quotes, beside 'texts', "names" and `names`.
struct SqlSyntax {
  bool hasBrackets = false;      // [names]
  bool hasBackslashes = false;   // 'it\'s'
  bool hasDollarQuotes = false;  // $tag$text$tag$, and backslashes in E'…'
  bool hasNestedComments = false;
};

/// By the name that a database gives itself (SQL_DBMS_NAME).
[[nodiscard]] SqlSyntax syntaxOf(std::string_view database);

/// Whether anything but comments follows a ";" that ends a statement. Statements that follow each other
/// without one, as those of SQL Server may, look like one.
[[nodiscard]] bool holdsSeveralStatements(std::string_view sql, const SqlSyntax& syntax);

}  // namespace ado
