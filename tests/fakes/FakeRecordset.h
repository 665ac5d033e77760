#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/adodb.h"

namespace fakes {

/// A recordset in memory: fields that were appended or those of a table of text, records behind a cursor.
class Recordset : public ADODB::Recordset, public ADODB::Fields {
 public:
  void CursorLocation(ADODB::CursorLocation) override {}
  void CursorType(ADODB::CursorType) override {}
  void LockType(ADODB::LockType) override {}
  void ActiveConnection(const std::shared_ptr<ADODB::Connection>&) override {}

  void Open(std::string_view, ADODB::CursorType, ADODB::LockType, std::int32_t) override {
    Fail("it has no database");
  }
  void Open() override { isOpen_ = true; }
  void Open(host::TextTable table) override {
    for (const std::string& name : table.columns()) Append(name, ADODB::adVarChar, 0);
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
      AddNew();
      for (std::size_t column = 0; column < fields_.size(); ++column) {
        const auto text = table.field(row, column);
        if (text) rows_.back()[column] = std::string(*text);
      }
    }
    isOpen_ = true;
    MoveFirst();
  }
  void Requery(std::int32_t) override { Fail("it has no database"); }
  void Close() override {
    isOpen_ = false;
    rows_.clear();
  }
  std::int32_t State() override { return isOpen_ ? ADODB::adStateOpen : ADODB::adStateClosed; }

  std::int64_t RecordCount() const override {
    if (!isOpen_) Fail("it is closed");
    return static_cast<std::int64_t>(rows_.size());
  }
  std::int64_t AbsolutePosition() const override { return rows_.empty() ? -1 : place_ + 1; }
  void MoveFirst() override { place_ = 0; }
  void MoveLast() override { place_ = static_cast<std::int64_t>(rows_.size()) - 1; }
  void MovePrevious() override { --place_; }
  void Move(std::int32_t records) override { place_ += records; }
  void AddNew() override {
    rows_.emplace_back(fields_.size(), basic::Variant(basic::Null{}));
    MoveLast();
  }
  void Update() override {}
  void Delete() override {
    static_cast<void>(Current());
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(place_));
  }
  ADODB::Fields& Fields() override { return *this; }

  std::int32_t Count() const override { return static_cast<std::int32_t>(fields_.size()); }
  ADODB::Field& Item(std::int32_t index) override { return *fields_.at(static_cast<std::size_t>(index)); }
  ADODB::Field& Item(std::string_view name) override {
    for (const auto& field : fields_) {
      if (basic::EqualsIgnoreCase(field->name, name)) return *field;
    }
    Fail("it has no field '" + std::string(name) + "'");
  }
  void Append(std::string_view name, ADODB::DataType, std::int32_t) override {
    fields_.push_back(std::make_unique<Column>(*this, fields_.size(), std::string(name)));
  }

 private:
  using Row = std::vector<basic::Variant>;
  struct Column final : ADODB::Field {
    Column(Recordset& owner, std::size_t place, std::string itsName)
        : recordset(owner), index(place), name(std::move(itsName)) {}
    std::string Name() const override { return name; }
    basic::Variant Value() const override { return recordset.Current()[index]; }
    void Value(basic::Variant value) override { recordset.Current()[index] = std::move(value); }
    Recordset& recordset;
    std::size_t index;
    std::string name;
  };

  [[noreturn]] static void Fail(const std::string& what) {
    throw basic::Error(basic::AdapterError, "fake recordset", what);
  }
  Row& Current() {
    if (place_ < 0 || place_ >= static_cast<std::int64_t>(rows_.size())) Fail("it stands on no record");
    return rows_[static_cast<std::size_t>(place_)];
  }

  std::vector<std::unique_ptr<Column>> fields_;
  std::vector<Row> rows_;
  std::int64_t place_ = 0;
  bool isOpen_ = false;
};

/// Data components without databases.
class DataObjects final : public ADODB::Factory {
 public:
  std::vector<ADODB::Provider> Providers() const override { return {}; }
  std::vector<std::string> DataSources() const override { return {}; }
  std::shared_ptr<ADODB::Connection> CreateConnection() override {
    throw basic::Error(basic::AdapterError, "fake data objects", "there are no databases");
  }
  std::shared_ptr<ADODB::Recordset> CreateRecordset() override { return std::make_shared<Recordset>(); }
};

}  // namespace fakes
