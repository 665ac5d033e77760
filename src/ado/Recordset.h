#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "ado/Cursor.h"
#include "ado/Database.h"
#include "ado/Fields.h"
#include "ado/Records.h"
#include "basic/Error.h"
#include "host/adodb.h"

namespace ado {

class Connection;
class Query;

/// A recordset whose records lie in memory: those of a table of text, of fields
/// that were appended and records that were added, or those read from a
/// database. Cursor location, cursor type and lock type make no difference to it.
///
/// A database is read in the background whatever the options; State is
/// adStateFetching meanwhile, and records arrive in State alone, so that nothing
/// changes under a reader between two calls of it. While an open recordset is
/// queried again its old records stand; when that fails they stay, and State
/// throws the failure once. A failure of Open is thrown by every State until the
/// recordset is closed, opened or queried again: who waits for it to be open
/// must not wait for ever. Reading longer than the connection's CommandTimeout
/// is broken off, which is a failure. Records of a database cannot be changed.
///
/// Fields stay defined, and references to them valid, when it is closed;
/// opening it with a table or on a database, or querying again what has other
/// columns now, replaces them.
class Recordset final : public ADODB::Recordset {
 public:
  Recordset() : fields_(*this) {}
  ~Recordset() override;
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  void CursorLocation(ADODB::CursorLocation location) override;
  void CursorType(ADODB::CursorType type) override;
  void LockType(ADODB::LockType type) override;
  /// One made by this folder's factory. An error while reading goes on.
  void ActiveConnection(const std::shared_ptr<ADODB::Connection>& connection) override;

  /// The source is the name of a table with adCmdTableDirect, otherwise a
  /// statement, or a table's name where it does not begin as a statement does.
  void Open(std::string_view source, ADODB::CursorType cursorType, ADODB::LockType lockType,
            std::int32_t options) override;
  void Open() override;
  /// For Connection::OpenSchema, over the active connection.
  void OpenSchema(ADODB::Schema schema, std::string_view table);
  void Open(host::TextTable table) override;
  /// Reads the source again over the active connection, also after the opening
  /// of it has failed.
  void Requery(std::int32_t options) override;
  /// Breaks off what is being read. An error while an added or changed record has not been updated.
  void Close() override;
  [[nodiscard]] std::int32_t State() override;

  [[nodiscard]] std::int64_t RecordCount() const override;
  [[nodiscard]] std::int64_t AbsolutePosition() const override;
  /// Moving updates the record first that is being added or changed.
  void MoveFirst() override;
  void MoveLast() override;
  void MovePrevious() override;
  void Move(std::int32_t records) override;

  void AddNew() override;
  void Update() override;
  void Delete() override;

  [[nodiscard]] ADODB::Fields& Fields() override { return fields_; }

  /// What fields ask of their recordset: values of the current record, by
  /// 0-based number of the field.
  [[nodiscard]] basic::Variant value(std::size_t field) const;
  void setValue(std::size_t field, basic::Variant value);
  void requireClosed() const;

 private:
  void requireOpen() const;
  void requireChangeable() const;
  /// Throws a failure of the query once.
  void takeRecords();
  void startReading();
  void breakOff(const std::string& why);
  [[nodiscard]] std::size_t currentRecord() const;

  ado::Fields fields_;
  ado::Records records_;
  Cursor cursor_;
  bool open_ = false;
  /// The record being added or changed, until Update.
  std::optional<Record> edited_;
  bool adding_ = false;

  std::shared_ptr<Connection> connection_;
  /// What it was opened on; nothing in memory.
  std::optional<Source> source_;
  std::shared_ptr<Query> query_;
  std::chrono::seconds timeout_{0};
  std::chrono::steady_clock::time_point started_;
  /// Of an Open that failed in the background.
  std::optional<basic::Error> failure_;
  bool requerying_ = false;
};

}  // namespace ado
