#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/adodb.h"
#include "windows/com/Object.h"

namespace windows::automation {

class Field final : public ADODB::Field {
 public:
  explicit Field(com::Object field) : field_(std::move(field)) {}
  [[nodiscard]] std::string Name() const override { return field_.text(L"Name"); }
  [[nodiscard]] basic::Variant Value() const override { return field_.get(L"Value").value(); }
  void Value(basic::Variant value) override;

 private:
  com::Object field_;
  std::int32_t definedSize_ = 0;
};

/// Keeps every field that was asked for: a field follows the current record.
class Fields final : public ADODB::Fields {
 public:
  explicit Fields(com::Object fields) : fields_(std::move(fields)) {}
  [[nodiscard]] std::int32_t Count() const override { return fields_.number(L"Count"); }
  [[nodiscard]] ADODB::Field& Item(std::int32_t index) override;
  [[nodiscard]] ADODB::Field& Item(std::string_view name) override;
  void Append(std::string_view name, ADODB::DataType type, std::int32_t definedSize) override;

 private:
  com::Object fields_;
  std::map<std::int32_t, std::unique_ptr<Field>> byIndex_;
  std::map<std::string, std::unique_ptr<Field>, std::less<>> byName_;
};

class Recordset final : public ADODB::Recordset {
 public:
  explicit Recordset(com::Object recordset) : recordset_(std::move(recordset)) {}

  void CursorLocation(ADODB::CursorLocation location) override;
  void CursorType(ADODB::CursorType type) override;
  void LockType(ADODB::LockType type) override;
  void ActiveConnection(const std::shared_ptr<ADODB::Connection>& connection) override;

  void Open(std::string_view source, ADODB::CursorType cursorType, ADODB::LockType lockType,
            std::int32_t options) override;
  void Open() override;
  void Open(host::TextTable table) override;
  void Requery(std::int32_t options) override;
  void Close() override;
  [[nodiscard]] std::int32_t State() override { return recordset_.number(L"State"); }

  [[nodiscard]] std::int64_t RecordCount() const override { return recordset_.number(L"RecordCount"); }
  [[nodiscard]] std::int64_t AbsolutePosition() const override {
    return recordset_.number(L"AbsolutePosition");
  }
  void MoveFirst() override { recordset_.call(L"MoveFirst"); }
  void MoveLast() override { recordset_.call(L"MoveLast"); }
  void MovePrevious() override { recordset_.call(L"MovePrevious"); }
  void Move(std::int32_t records) override { recordset_.call(L"Move", records); }

  void AddNew() override { recordset_.call(L"AddNew"); }
  void Update() override { recordset_.call(L"Update"); }
  void Delete() override { recordset_.call(L"Delete"); }

  [[nodiscard]] ADODB::Fields& Fields() override;

 private:
  com::Object recordset_;
  std::unique_ptr<automation::Fields> fields_;
};

}  // namespace windows::automation
