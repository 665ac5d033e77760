// Recordsets: those of databases, and those that live in memory.

#include "windows/automation/AdoRecordset.h"

#include <cstddef>
#include <utility>

#include "basic/Conversion.h"
#include "basic/Strings.h"
#include "windows/automation/AdoConnection.h"

namespace windows::automation {
namespace {

namespace ado {
com::Class Fields{"Fields"};
com::Class Field{"Field"};
}  // namespace ado

constexpr std::int32_t TextSize = 4000;
/// adFldIsNullable and adFldMayBeNull: a row may have fewer fields.
constexpr std::int32_t Nullable = 0x20 + 0x40;

/// The texts of a row; what it lacks is Null.
com::Variant valuesOf(const host::TextTable& table, std::size_t row) {
  std::vector<com::Variant> values;
  for (std::size_t column = 0; column < table.columns().size(); ++column) {
    const auto text = table.field(row, column);
    values.push_back(text ? com::Variant(basic::Left(*text, TextSize)) : com::Variant(basic::Null{}));
  }
  return com::Variant::array(std::move(values));
}

}  // namespace

void Field::Value(basic::Variant value) {
  if (std::holds_alternative<basic::Empty>(value) || basic::IsNull(value)) {
    return field_.put(L"Value", com::Variant(basic::Null{}));
  }
  if (definedSize_ == 0) definedSize_ = field_.number(L"DefinedSize");
  field_.put(L"Value", basic::Left(basic::CStr(value), static_cast<std::size_t>(definedSize_)));
}

ADODB::Field& Fields::Item(std::int32_t index) {
  auto& field = byIndex_[index];
  if (!field) field = std::make_unique<Field>(fields_.object(ado::Field, L"Item", index));
  return *field;
}

ADODB::Field& Fields::Item(std::string_view name) {
  auto found = byName_.find(name);
  if (found == byName_.end()) {
    auto field = std::make_unique<Field>(fields_.object(ado::Field, L"Item", name));
    found = byName_.emplace(name, std::move(field)).first;
  }
  return *found->second;
}

void Fields::Append(std::string_view name, ADODB::DataType type, std::int32_t definedSize) {
  fields_.call(L"Append", name, static_cast<std::int32_t>(type), definedSize, Nullable);
}

void Recordset::CursorLocation(ADODB::CursorLocation location) {
  recordset_.put(L"CursorLocation", static_cast<std::int32_t>(location));
}

void Recordset::CursorType(ADODB::CursorType type) {
  recordset_.put(L"CursorType", static_cast<std::int32_t>(type));
}

void Recordset::LockType(ADODB::LockType type) {
  recordset_.put(L"LockType", static_cast<std::int32_t>(type));
}

void Recordset::ActiveConnection(const std::shared_ptr<ADODB::Connection>& connection) {
  const auto own = std::static_pointer_cast<Connection>(connection);
  recordset_.set(L"ActiveConnection", own ? own->object() : com::Object());
}

void Recordset::Open(std::string_view source, ADODB::CursorType cursorType, ADODB::LockType lockType,
                     std::int32_t options) {
  fields_.reset();
  recordset_.call(L"Open", source, com::Missing{}, static_cast<std::int32_t>(cursorType),
                  static_cast<std::int32_t>(lockType), options);
}

void Recordset::Open() {
  fields_.reset();
  recordset_.call(L"Open");
}

void Recordset::Open(host::TextTable table) {
  CursorLocation(ADODB::adUseClient);
  std::vector<com::Variant> places;
  for (std::size_t column = 0; column < table.columns().size(); ++column) {
    Fields().Append(table.columns()[column], ADODB::adVarChar, TextSize);
    places.emplace_back(static_cast<std::int32_t>(column));
  }
  Open();
  const com::Variant fields = com::Variant::array(std::move(places));
  for (std::size_t row = 0; row < table.rowCount(); ++row) {
    recordset_.call(L"AddNew", fields, valuesOf(table, row));
  }
  if (table.rowCount() > 0) MoveFirst();
}

void Recordset::Requery(std::int32_t options) {
  fields_.reset();
  recordset_.call(L"Requery", options);
}

void Recordset::Close() {
  fields_.reset();
  recordset_.call(L"Close");
}

ADODB::Fields& Recordset::Fields() {
  if (!fields_) {
    fields_ = std::make_unique<automation::Fields>(recordset_.object(ado::Fields, L"Fields"));
  }
  return *fields_;
}

}  // namespace windows::automation
