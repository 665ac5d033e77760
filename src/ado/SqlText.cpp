// Where a statement ends, quotes and comments passed over.

#include "ado/SqlText.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace ado {
namespace {

bool isNameCharacter(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

class Scanner {
 public:
  Scanner(std::string_view sql, const SqlSyntax& syntax) : sql_(sql), syntax_(syntax) {}

  [[nodiscard]] bool findsSeveral() {
    bool isEnded = false;
    while (at_ < sql_.size()) {
      if (passBlank() || passComment()) continue;
      if (isAt(";")) {
        isEnded = true;
        ++at_;
      } else {
        if (isEnded) return true;
        passWord();
      }
    }
    return false;
  }

 private:
  [[nodiscard]] bool isAt(std::string_view text) const { return sql_.substr(at_, text.size()) == text; }
  void passTo(std::string_view end) {
    const std::size_t found = sql_.find(end, at_);
    at_ = found == std::string_view::npos ? sql_.size() : found + end.size();
  }

  bool passBlank() {
    if (std::isspace(static_cast<unsigned char>(sql_[at_])) == 0) return false;
    ++at_;
    return true;
  }

  bool passComment() {
    if (isAt("--")) return passTo("\n"), true;
    if (!isAt("/*")) return false;
    int depth = 0;
    do {
      if (isAt("/*") && (depth == 0 || syntax_.hasNestedComments)) {
        ++depth;
        at_ += 2;
      } else if (isAt("*/")) {
        --depth;
        at_ += 2;
      } else {
        ++at_;
      }
    } while (depth > 0 && at_ < sql_.size());
    return true;
  }

  /// A quoted text or name, or one character.
  void passWord() {
    const char c = sql_[at_];
    const bool isEscaping = syntax_.hasDollarQuotes && at_ > 0 && (sql_[at_ - 1] | 0x20) == 'e' &&
                            (at_ == 1 || !isNameCharacter(sql_[at_ - 2]));
    if (c == '\'') return passQuoted('\'', syntax_.hasBackslashes || isEscaping);
    if (c == '"' || c == '`') return passQuoted(c, syntax_.hasBackslashes && c == '"');
    if (c == '[' && syntax_.hasBrackets) return passQuoted(']', false);
    if (c == '$' && syntax_.hasDollarQuotes && passDollarQuoted()) return;
    ++at_;
  }

  /// One that is doubled does not end it.
  void passQuoted(char end, bool hasBackslashes) {
    for (++at_; at_ < sql_.size(); ++at_) {
      if (hasBackslashes && sql_[at_] == '\\') {
        ++at_;
      } else if (sql_[at_] == end) {
        if (sql_.substr(at_ + 1, 1) != std::string_view(&end, 1)) break;
        ++at_;
      }
    }
    at_ = std::min(at_ + 1, sql_.size());
  }

  bool passDollarQuoted() {
    if (at_ > 0 && isNameCharacter(sql_[at_ - 1])) return false;
    std::size_t end = at_ + 1;
    while (end < sql_.size() && isNameCharacter(sql_[end])) ++end;
    const bool isParameter = end > at_ + 1 && std::isdigit(static_cast<unsigned char>(sql_[at_ + 1])) != 0;
    if (end == sql_.size() || sql_[end] != '$' || isParameter) return false;
    const std::string_view tag = sql_.substr(at_, end + 1 - at_);
    at_ = end + 1;
    passTo(tag);
    return true;
  }

  std::string_view sql_;
  SqlSyntax syntax_;
  std::size_t at_ = 0;
};

bool holds(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

}  // namespace

SqlSyntax syntaxOf(std::string_view database) {
  SqlSyntax syntax;
  const bool isSqlServer = holds(database, "SQL Server");
  syntax.hasDollarQuotes = holds(database, "PostgreSQL");
  syntax.hasBackslashes = holds(database, "MariaDB") || holds(database, "MySQL");
  syntax.hasBrackets = isSqlServer || holds(database, "SQLite");
  syntax.hasNestedComments = isSqlServer || syntax.hasDollarQuotes;
  return syntax;
}

bool holdsSeveralStatements(std::string_view sql, const SqlSyntax& syntax) {
  return Scanner(sql, syntax).findsSeveral();
}

}  // namespace ado
