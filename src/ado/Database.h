#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "ado/Providers.h"
#include "ado/ResultTable.h"
#include "ado/StatementSlot.h"

namespace ado {

/// How a driver differs from others.
struct Dialect {
  /// Around names; empty where names cannot be quoted.
  std::string quote;
  /// Columns hold values of any type, whatever they were declared as.
  bool looseTypes = false;
  /// Text columns are never longer than the driver says.
  bool trueSizes = false;
  /// Values can be asked for again after they were fetched into a buffer.
  bool rereads = false;
  /// The driver can be interrupted from another thread while it executes. That
  /// for SQLite frees what it is working on.
  bool interruptible = true;
  /// Between the two nothing is changed. Empty where that is not wanted, or the database does not know it.
  std::string beginReading;
  std::string endReading;
};

/// What a recordset is opened on.
struct Source {
  enum class Kind { Statement, Table, Either, Tables, Columns };
  /// Of Tables and Columns: the table that is asked for, or none for all.
  std::string text;
  Kind kind = Kind::Either;
};

/// The source in words, for messages.
[[nodiscard]] std::string shownSource(const Source& source);

/// An open connection of the driver manager. Every call blocks. Failures are
/// errors with SQLSTATE, native code and the driver's own words, secrets masked.
/// Used by one thread at a time; made, used and destroyed by the same.
class Database {
 public:
  explicit Database(Target target);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  /// Executes the source and reads its first result that has columns; a source
  /// without one is an error. Tables and views and their columns have the fields of
  /// ADODB::Schema. Stops early, with any error, when the slot says so.
  [[nodiscard]] ResultTable read(const Source& source, StatementSlot& slot);

 private:
  [[noreturn]] void fail(const std::string& what, const std::string& words) const;
  [[nodiscard]] Dialect askDialect() const;
  void requireOneStatement(const std::string& sql) const;
  [[nodiscard]] std::string infoText(std::uint16_t info) const;
  void disconnect() noexcept;

  Target target_;
  void* environment_ = nullptr;
  void* connection_ = nullptr;
  bool connected_ = false;
  Dialect dialect_;
};

}  // namespace ado
