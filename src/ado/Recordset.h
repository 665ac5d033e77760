#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "ado/Cursor.h"
#include "ado/Fields.h"
#include "ado/Records.h"
#include "host/adodb.h"

namespace ado {

/// A recordset that lives in memory: over a table of text, or over fields that
/// were appended and records that were added. Cursor location, cursor type and
/// lock type make no difference to it.
///
/// Fields stay defined, and references to them valid, when it is closed;
/// opening it with a table replaces them.
class Recordset final : public ADODB::Recordset {
 public:
  Recordset() : fields_(*this) {}
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  void CursorLocation(ADODB::CursorLocation location) override;
  void CursorType(ADODB::CursorType type) override;
  void LockType(ADODB::LockType type) override;
  void ActiveConnection(const std::shared_ptr<ADODB::Connection>& connection) override;

  void Open(std::string_view source, ADODB::CursorType cursorType, ADODB::LockType lockType,
            std::int32_t options) override;
  void Open() override;
  void Open(host::TextTable table) override;
  void Requery(std::int32_t options) override;
  /// An error while an added or changed record has not been updated.
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
  [[nodiscard]] std::size_t currentRecord() const;

  ado::Fields fields_;
  ado::Records records_;
  Cursor cursor_;
  bool open_ = false;
  /// The record being added or changed, until Update.
  std::optional<Record> edited_;
  bool adding_ = false;
};

}  // namespace ado
