#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "basic/Variant.h"
#include "host/text_table.h"

// The part of ActiveX Data Objects that the system uses. Names, numbers and
// behaviour follow the object model's own reference (ADO API reference). Rows
// count from 1, fields from 0, as they do there. A member that fails throws
// basic::Error, with a description that holds no password. Everything is called
// on one thread; what takes long goes on behind it, and State tells. Opening may
// let the host process its messages, so who opens an object holds it meanwhile.

namespace ADODB {

/// Values of State as the system tests them: 4 is a recordset still being filled.
enum ObjectState : std::int32_t {
  adStateClosed = 0,
  adStateOpen = 1,
  adStateConnecting = 2,
  adStateFetching = 4
};
/// Where records are kept. The system asks for the client's side, so that a recordset stays when its
/// connection goes.
enum CursorLocation : std::int32_t { adUseServer = 2, adUseClient = 3 };
/// How one may move through records, and see the changes of others.
enum CursorType : std::int32_t { adOpenUnspecified = -1, adOpenForwardOnly = 0, adOpenStatic = 3 };
/// Whether records can be changed, and when they are locked.
enum LockType : std::int32_t { adLockUnspecified = -1, adLockReadOnly = 1, adLockOptimistic = 3 };
/// What the source of an opening is: anything; a statement, carried out in the background; a table's name.
enum Options : std::int32_t { adOptionUnspecified = -1, adAsyncExecute = 16, adCmdTableDirect = 512 };
/// Types of fields that are appended: text.
enum DataType : std::int32_t { adVarChar = 200 };
/// SchemaEnum, as far as used: what OpenSchema lists.
enum Schema : std::int32_t {
  /// TABLE_SCHEMA, TABLE_NAME, COLUMN_NAME, ORDINAL_POSITION.
  adSchemaColumns = 4,
  /// TABLE_SCHEMA, TABLE_NAME, TABLE_TYPE ("TABLE", "VIEW").
  adSchemaTables = 20
};

class Recordset;

/// A connection to a database. Opening may go on in the background: State tells. Destroying it closes it.
class Connection {
 public:
  virtual ~Connection() = default;
  /// "Key=value;…", as OLE DB and ODBC have it. An error while it is open.
  virtual void ConnectionString(std::string_view text) = 0;
  [[nodiscard]] virtual std::string ConnectionString() const = 0;
  /// An empty user and password leave those of the connection string. `options` are those of
  /// ConnectOptionEnum; -1 leaves the choice to the component.
  virtual void Open(std::string_view user, std::string_view password, std::int32_t options) = 0;
  /// Breaks off what is under way. An error when it is closed.
  virtual void Close() = 0;
  /// One of ObjectState. A failure in the background is thrown by the next call.
  [[nodiscard]] virtual std::int32_t State() = 0;
  /// Seconds; 0 waits for ever.
  [[nodiscard]] virtual std::int32_t ConnectionTimeout() const = 0;
  [[nodiscard]] virtual std::int32_t CommandTimeout() const = 0;
  /// What the connection's account can see of the database, a record each, with the fields that stand
  /// beside the schema; TABLE_SCHEMA is Null where the database has none. With a table's name what belongs
  /// to that table alone. The recordset is being filled as one that was opened with adAsyncExecute; an
  /// error while the connection is not open.
  [[nodiscard]] virtual std::shared_ptr<Recordset> OpenSchema(Schema schema, std::string_view table = {}) = 0;
};

/// One column of a recordset, as the current record has it. The recordset owns it.
class Field {
 public:
  virtual ~Field() = default;
  [[nodiscard]] virtual std::string Name() const = 0;
  /// Of the current record; an error without one.
  [[nodiscard]] virtual basic::Variant Value() const = 0;
  /// Changes the current record. The text of the value is cut to the field's defined size.
  virtual void Value(basic::Variant value) = 0;
};

/// The columns of a recordset, which owns them. References stay valid until it is opened or queried with
/// other columns.
class Fields {
 public:
  virtual ~Fields() = default;
  [[nodiscard]] virtual std::int32_t Count() const = 0;
  /// From 0; an error out of range.
  [[nodiscard]] virtual Field& Item(std::int32_t index) = 0;
  /// Any case; an error that names the field when there is none.
  [[nodiscard]] virtual Field& Item(std::string_view name) = 0;
  /// Defines a field of a recordset that is not open yet. `definedSize` in characters.
  virtual void Append(std::string_view name, DataType type, std::int32_t definedSize) = 0;
};

/// Rows of named fields behind a cursor. Opened without a source it lives in
/// memory only. Members that read or move are errors while it is closed.
class Recordset {
 public:
  virtual ~Recordset() = default;
  virtual void CursorLocation(ADODB::CursorLocation location) = 0;
  virtual void CursorType(ADODB::CursorType type) = 0;
  virtual void LockType(ADODB::LockType type) = 0;
  /// Null detaches the recordset: it keeps its rows.
  virtual void ActiveConnection(const std::shared_ptr<Connection>& connection) = 0;

  /// Opens on the statement or table over the active connection; the cursor and lock -1 stand for those that
  /// were set. With adAsyncExecute State is adStateFetching until all records are there.
  virtual void Open(std::string_view source, ADODB::CursorType cursorType, ADODB::LockType lockType,
                    std::int32_t options) = 0;
  /// Opens in memory with the appended fields and no record.
  virtual void Open() = 0;
  /// Opens in memory with all of a table of text, which it takes over as it is.
  virtual void Open(host::TextTable table) = 0;
  /// Reads the source again, over the connection that is active now. Until the new records have all come
  /// State is adStateFetching.
  virtual void Requery(std::int32_t options) = 0;
  virtual void Close() = 0;
  /// One of ObjectState. A failure in the background is thrown by the next call.
  [[nodiscard]] virtual std::int32_t State() = 0;

  [[nodiscard]] virtual std::int64_t RecordCount() const = 0;
  /// 1-based; negative before the first and after the last record (-2, -3) and without records (-1).
  [[nodiscard]] virtual std::int64_t AbsolutePosition() const = 0;
  virtual void MoveFirst() = 0;
  virtual void MoveLast() = 0;
  virtual void MovePrevious() = 0;
  /// Moves by a number of records from the current one; just before the first or just behind the last record
  /// there is no current one.
  virtual void Move(std::int32_t records) = 0;

  /// Adds a record of Nulls, which is the current one; it is kept by Update or by moving away.
  virtual void AddNew() = 0;
  virtual void Update() = 0;
  /// Deletes the current record.
  virtual void Delete() = 0;

  [[nodiscard]] virtual ADODB::Fields& Fields() = 0;
};

/// A component that opens databases.
struct Provider {
  /// As connection strings have it behind "Provider=".
  std::string Name;
  /// What it opens: "PostgreSQL".
  std::string Description;
  /// Its databases are files, which "Data Source" names; others are on servers.
  bool IsFile = false;
  /// A sentence on why it cannot be used on this machine; empty when it can.
  std::string Missing = {};
};

/// Creates the objects, as CreateObject("ADODB.…") does; throws where the
/// component is not there.
class Factory {
 public:
  virtual ~Factory() = default;
  /// The providers that are known, those first that can be used.
  [[nodiscard]] virtual std::vector<Provider> Providers() const = 0;
  /// The data sources (DSN) that were set up on this machine.
  [[nodiscard]] virtual std::vector<std::string> DataSources() const = 0;
  [[nodiscard]] virtual std::shared_ptr<Connection> CreateConnection() = 0;
  [[nodiscard]] virtual std::shared_ptr<Recordset> CreateRecordset() = 0;
};

}  // namespace ADODB
