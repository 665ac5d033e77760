// ActiveX Data Objects: connections, and recordsets over them or in memory.

#include <cstddef>
#include <string>
#include <utility>

#include "fakes/FakeRecordset.h"
#include "windows/strict/Members.h"

namespace strict {
namespace {

/// Characters that a field of a fake takes.
constexpr std::int32_t DefinedSize = 4000;

using RecordsetPtr = std::shared_ptr<ADODB::Recordset>;

/// A recordset owns its fields.
struct Field {
  RecordsetPtr recordset;
  ADODB::Field* field;
};

const Class<Field>& fieldClass() {
  static const Class<Field> type{
      "Field",
      {get<Field>(L"Name", [](const auto& it) { return it->field->Name(); }),
       get<Field>(L"Value", [](const auto& it) { return it->field->Value(); }),
       put<Field>(L"Value", Kind::Any,
                  [](const auto& it, const Arguments& arguments) { it->field->Value(arguments.value(0)); }),
       get<Field>(L"DefinedSize", [](const auto&) { return DefinedSize; })}};
  return type;
}

struct Fields {
  RecordsetPtr recordset;
};

const Class<Fields>& fieldsClass() {
  static const Class<Fields> type{
      "Fields",
      {get<Fields>(L"Count", [](const auto& it) { return it->recordset->Fields().Count(); }),
       call<Fields>(L"Item", {Kind::TextOrNumber},
                    [](const auto& it, const Arguments& arguments) {
                      ADODB::Fields& fields = it->recordset->Fields();
                      ADODB::Field& field = arguments.isText(0) ? fields.Item(arguments.text(0))
                                                                : fields.Item(arguments.number(0));
                      return dispatchOf(std::make_shared<Field>(Field{it->recordset, &field}), fieldClass());
                    }),
       call<Fields>(L"Append", {Kind::Text, Kind::Number, optional(Kind::Number), optional(Kind::Number)},
                    [](const auto& it, const Arguments& arguments) {
                      it->recordset->Fields().Append(arguments.text(0),
                                                     static_cast<ADODB::DataType>(arguments.number(1)),
                                                     arguments.isMissing(2) ? 0 : arguments.number(2));
                    })}};
  return type;
}

/// The values of an array, in which each stands for one field.
void write(ADODB::Fields& fields, const VARIANT& places, const VARIANT& values) {
  LONG last = -1;
  SafeArrayGetUBound(values.parray, 1, &last);
  const std::vector<std::int32_t> numbers = Variant::copyOf(places).numbers();
  for (LONG i = 0; i <= last; ++i) {
    Variant value;
    SafeArrayGetElement(values.parray, &i, value.out());
    fields.Item(numbers.at(static_cast<std::size_t>(i))).Value(value.value());
  }
}

void open(ADODB::Recordset& recordset, const Arguments& arguments) {
  if (arguments.isMissing(0)) return recordset.Open();
  const auto number = [&](std::size_t place) {
    return arguments.isMissing(place) ? -1 : arguments.number(place);
  };
  recordset.Open(arguments.text(0), static_cast<ADODB::CursorType>(number(2)),
                 static_cast<ADODB::LockType>(number(3)), number(4));
}

template <typename Enumeration>
Member<ADODB::Recordset> option(const wchar_t* name, void (ADODB::Recordset::*write)(Enumeration)) {
  return put<ADODB::Recordset>(name, Kind::Number, [write](const auto& it, const Arguments& arguments) {
    ((*it).*write)(static_cast<Enumeration>(arguments.number(0)));
  });
}

const Class<ADODB::Recordset>& recordsetClass() {
  using Target = ADODB::Recordset;
  static const Class<Target> type{
      "Recordset",
      {option<ADODB::CursorLocation>(L"CursorLocation", &Target::CursorLocation),
       option<ADODB::CursorType>(L"CursorType", &Target::CursorType),
       option<ADODB::LockType>(L"LockType", &Target::LockType),
       member<Target>(L"ActiveConnection", PutRef, {Kind::Object},
                      [](const auto& it, const Arguments& arguments) {
                        it->ActiveConnection(targetOf<ADODB::Connection>(arguments.at(0)));
                      }),
       call<Target>(L"Open",
                    {optional(Kind::Text), optional(Kind::Object), optional(Kind::Number),
                     optional(Kind::Number), optional(Kind::Number)},
                    [](const auto& it, const Arguments& arguments) { open(*it, arguments); }),
       call<Target>(L"Requery", {optional(Kind::Number)},
                    [](const auto& it, const Arguments& arguments) {
                      it->Requery(arguments.isMissing(0) ? -1 : arguments.number(0));
                    }),
       action<Target>(L"Close", [](const auto& it) { it->Close(); }),
       get<Target>(L"State", [](const auto& it) { return it->State(); }),
       get<Target>(L"RecordCount",
                   [](const auto& it) { return static_cast<std::int32_t>(it->RecordCount()); }),
       get<Target>(L"AbsolutePosition",
                   [](const auto& it) { return static_cast<std::int32_t>(it->AbsolutePosition()); }),
       action<Target>(L"MoveFirst", [](const auto& it) { it->MoveFirst(); }),
       action<Target>(L"MoveLast", [](const auto& it) { it->MoveLast(); }),
       action<Target>(L"MovePrevious", [](const auto& it) { it->MovePrevious(); }),
       call<Target>(L"Move", {Kind::Number, optional(Kind::Any)},
                    [](const auto& it, const Arguments& arguments) { it->Move(arguments.number(0)); }),
       call<Target>(L"AddNew", {optional(Kind::Array), optional(Kind::Array)},
                    [](const auto& it, const Arguments& arguments) {
                      it->AddNew();
                      if (!arguments.isMissing(1)) write(it->Fields(), arguments.raw(0), arguments.raw(1));
                    }),
       action<Target>(L"Update", [](const auto& it) { it->Update(); }),
       action<Target>(L"Delete", [](const auto& it) { it->Delete(); }),
       get<Target>(L"Fields", [](const auto& it) {
         return dispatchOf(std::make_shared<Fields>(Fields{it}), fieldsClass());
       })}};
  return type;
}

const Class<ADODB::Connection>& connectionClass() {
  using Target = ADODB::Connection;
  static const Class<Target> type{
      "Connection",
      {put<Target>(
           L"ConnectionString", Kind::Text,
           [](const auto& it, const Arguments& arguments) { it->ConnectionString(arguments.text(0)); }),
       call<Target>(
           L"Open",
           {optional(Kind::Text), optional(Kind::Text), optional(Kind::Text), optional(Kind::Number)},
           [](const auto& it, const Arguments& arguments) {
             const auto text = [&](std::size_t place) {
               return arguments.isMissing(place) ? std::string() : arguments.text(place);
             };
             it->Open(text(1), text(2), arguments.isMissing(3) ? -1 : arguments.number(3));
           }),
       action<Target>(L"Close", [](const auto& it) { it->Close(); }),
       get<Target>(L"State", [](const auto& it) { return it->State(); }),
       get<Target>(L"ConnectionTimeout", [](const auto& it) { return it->ConnectionTimeout(); }),
       get<Target>(L"CommandTimeout", [](const auto& it) { return it->CommandTimeout(); }),
       call<Target>(L"OpenSchema", {Kind::Number, optional(Kind::Array), optional(Kind::Text)},
                    [](const auto& it, const Arguments& arguments) {
                      std::string table;
                      if (!arguments.isMissing(1)) {
                        LONG third = 2;  // catalog, schema, table
                        Variant name;
                        SafeArrayGetElement(arguments.raw(1).parray, &third, name.out());
                        table = name.text();
                      }
                      return it->OpenSchema(static_cast<ADODB::Schema>(arguments.number(0)), table);
                    })}};
  return type;
}

}  // namespace

Ptr<IDispatch> of(const std::shared_ptr<ADODB::Recordset>& target) {
  return dispatchOf(target, recordsetClass());
}
Ptr<IDispatch> of(const std::shared_ptr<ADODB::Connection>& target) {
  return dispatchOf(target, connectionClass());
}

}  // namespace strict
