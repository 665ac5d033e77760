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
// behaviour follow the object model's own reference. Rows count from 1, fields
// from 0, as they do there. A member that fails throws basic::Error.

namespace ADODB {

/// Values of State as the system tests them: 4 is a recordset still being filled.
enum ObjectState : std::int32_t {
  adStateClosed = 0,
  adStateOpen = 1,
  adStateConnecting = 2,
  adStateFetching = 4
};
enum CursorLocation : std::int32_t { adUseServer = 2, adUseClient = 3 };
enum CursorType : std::int32_t { adOpenUnspecified = -1, adOpenForwardOnly = 0, adOpenStatic = 3 };
enum LockType : std::int32_t { adLockUnspecified = -1, adLockReadOnly = 1, adLockOptimistic = 3 };
enum Options : std::int32_t { adOptionUnspecified = -1, adAsyncExecute = 16, adCmdTableDirect = 512 };
enum DataType : std::int32_t { adVarChar = 200 };

/// A connection to a database. Opening may go on in the background: State tells.
class Connection {
 public:
  virtual ~Connection() = default;
  virtual void ConnectionString(std::string_view text) = 0;
  [[nodiscard]] virtual std::string ConnectionString() const = 0;
  virtual void Open(std::string_view user, std::string_view password, std::int32_t options) = 0;
  virtual void Close() = 0;
  /// One of ObjectState. A failure in the background is thrown by the next call.
  [[nodiscard]] virtual std::int32_t State() = 0;
  /// Seconds.
  [[nodiscard]] virtual std::int32_t ConnectionTimeout() const = 0;
  [[nodiscard]] virtual std::int32_t CommandTimeout() const = 0;
};

class Field {
 public:
  virtual ~Field() = default;
  [[nodiscard]] virtual std::string Name() const = 0;
  /// Of the current record; an error without one.
  [[nodiscard]] virtual basic::Variant Value() const = 0;
  virtual void Value(basic::Variant value) = 0;
};

class Fields {
 public:
  virtual ~Fields() = default;
  [[nodiscard]] virtual std::int32_t Count() const = 0;
  [[nodiscard]] virtual Field& Item(std::int32_t index) = 0;
  /// Any case; an error that names the field when there is none.
  [[nodiscard]] virtual Field& Item(std::string_view name) = 0;
  /// Defines a field of a recordset that is not open yet.
  virtual void Append(std::string_view name, DataType type, std::int32_t definedSize) = 0;
};

/// Rows of named fields behind a cursor. Opened without a source it lives in
/// memory only.
class Recordset {
 public:
  virtual ~Recordset() = default;
  virtual void CursorLocation(ADODB::CursorLocation location) = 0;
  virtual void CursorType(ADODB::CursorType type) = 0;
  virtual void LockType(ADODB::LockType type) = 0;
  /// Null detaches the recordset: it keeps its rows.
  virtual void ActiveConnection(const std::shared_ptr<Connection>& connection) = 0;

  /// Opens on the statement or table over the active connection.
  virtual void Open(std::string_view source, ADODB::CursorType cursorType, ADODB::LockType lockType,
                    std::int32_t options) = 0;
  /// Opens in memory with the appended fields and no record.
  virtual void Open() = 0;
  /// Opens in memory with all of a table of text, which it takes over as it is.
  virtual void Open(host::TextTable table) = 0;
  virtual void Requery(std::int32_t options) = 0;
  virtual void Close() = 0;
  /// One of ObjectState.
  [[nodiscard]] virtual std::int32_t State() = 0;

  [[nodiscard]] virtual std::int64_t RecordCount() const = 0;
  /// 1-based; negative before the first and after the last record (-2, -3) and without records (-1).
  [[nodiscard]] virtual std::int64_t AbsolutePosition() const = 0;
  virtual void MoveFirst() = 0;
  virtual void MoveLast() = 0;
  virtual void MovePrevious() = 0;
  /// Moves by a number of records from the current one.
  virtual void Move(std::int32_t records) = 0;

  virtual void AddNew() = 0;
  virtual void Update() = 0;
  /// Deletes the current record.
  virtual void Delete() = 0;

  [[nodiscard]] virtual ADODB::Fields& Fields() = 0;
};

/// Creates the objects, as CreateObject("ADODB.…") does; throws where the
/// component is not there.
class Factory {
 public:
  virtual ~Factory() = default;
  [[nodiscard]] virtual std::shared_ptr<Connection> CreateConnection() = 0;
  [[nodiscard]] virtual std::shared_ptr<Recordset> CreateRecordset() = 0;
};

}  // namespace ADODB
