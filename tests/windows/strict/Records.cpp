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

struct Fields {
  RecordsetPtr recordset;
  [[nodiscard]] std::int32_t count() const { return recordset->Fields().Count(); }
  void append(std::string_view name, ADODB::DataType type, std::int32_t size) const {
    recordset->Fields().Append(name, type, size);
  }
};

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

/// Of the names of a schema's restrictions.
std::string tableOf(const Arguments& arguments, std::size_t place) {
  if (arguments.isMissing(place)) return {};
  LONG third = 2;  // catalog, schema, table
  Variant name;
  SafeArrayGetElement(arguments.raw(place).parray, &third, name.out());
  return name.text();
}

}  // namespace

Class<Field> describe(Tag<Field>) {
  return Table<Field>("Field")
      .get(L"Name", [](const auto& it) { return it->field->Name(); })
      .get(L"Value", [](const auto& it) { return it->field->Value(); })
      .put(L"Value", Kind::Any,
           [](const auto& it, const Arguments& arguments) { it->field->Value(arguments.value(0)); })
      .get(L"DefinedSize", [](const auto&) { return DefinedSize; });
}

Class<Fields> describe(Tag<Fields>) {
  return Table<Fields>("Fields")
      .get(L"Count", &Fields::count)
      .call(L"Item", {Kind::TextOrNumber},
            [](const auto& it, const Arguments& arguments) {
              ADODB::Fields& fields = it->recordset->Fields();
              ADODB::Field& field =
                  arguments.isText(0) ? fields.Item(arguments.text(0)) : fields.Item(arguments.number(0));
              return std::make_shared<Field>(Field{it->recordset, &field});
            })
      .call(L"Append", {Kind::Text, Kind::Number, optional(Kind::Number), optional(Kind::Number)},
            &Fields::append);
}

Class<ADODB::Recordset> describe(Tag<ADODB::Recordset>) {
  using ADODB::Recordset;
  return Table<Recordset>("Recordset")
      .put(L"CursorLocation", Kind::Number, &Recordset::CursorLocation)
      .put(L"CursorType", Kind::Number, &Recordset::CursorType)
      .put(L"LockType", Kind::Number, &Recordset::LockType)
      .member(L"ActiveConnection", PutRef, {Kind::Object},
              [](const auto& it, const Arguments& arguments) {
                it->ActiveConnection(targetOf<ADODB::Connection>(arguments.at(0)));
              })
      .call(L"Open",
            {optional(Kind::Text), optional(Kind::Object), optional(Kind::Number), optional(Kind::Number),
             optional(Kind::Number)},
            [](const auto& it, const Arguments& arguments) { open(*it, arguments); })
      .call(L"Requery", {optional(Kind::Number)},
            [](const auto& it, const Arguments& arguments) {
              it->Requery(arguments.isMissing(0) ? -1 : arguments.number(0));
            })
      .call(L"Close", &Recordset::Close)
      .get(L"State", &Recordset::State)
      .get(L"RecordCount", &Recordset::RecordCount)
      .get(L"AbsolutePosition", &Recordset::AbsolutePosition)
      .call(L"MoveFirst", &Recordset::MoveFirst)
      .call(L"MoveLast", &Recordset::MoveLast)
      .call(L"MovePrevious", &Recordset::MovePrevious)
      .call(L"Move", {Kind::Number, optional(Kind::Any)}, &Recordset::Move)
      .call(L"AddNew", {optional(Kind::Array), optional(Kind::Array)},
            [](const auto& it, const Arguments& arguments) {
              it->AddNew();
              if (!arguments.isMissing(1)) write(it->Fields(), arguments.raw(0), arguments.raw(1));
            })
      .call(L"Update", &Recordset::Update)
      .call(L"Delete", &Recordset::Delete)
      .get(L"Fields", [](const auto& it) { return std::make_shared<Fields>(Fields{it}); });
}

Class<ADODB::Connection> describe(Tag<ADODB::Connection>) {
  using ADODB::Connection;
  return Table<Connection>("Connection")
      .put(L"ConnectionString", Kind::Text, &Connection::ConnectionString)
      .call(L"Open",
            {optional(Kind::Text), optional(Kind::Text), optional(Kind::Text), optional(Kind::Number)},
            [](const auto& it, const Arguments& arguments) {
              const auto text = [&](std::size_t place) { return argument<std::string>(arguments, place); };
              it->Open(text(1), text(2), arguments.isMissing(3) ? -1 : arguments.number(3));
            })
      .call(L"Close", &Connection::Close)
      .get(L"State", &Connection::State)
      .get(L"ConnectionTimeout", &Connection::ConnectionTimeout)
      .get(L"CommandTimeout", &Connection::CommandTimeout)
      .call(L"OpenSchema", {Kind::Number, optional(Kind::Array), optional(Kind::Text)},
            [](const auto& it, const Arguments& arguments) {
              return it->OpenSchema(argument<ADODB::Schema>(arguments, 0), tableOf(arguments, 1));
            });
}

}  // namespace strict
