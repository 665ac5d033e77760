// Text in memory, values of records, and what connections say of failures.

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/ErrorOf.h"
#include "windows/automation/AdoConnection.h"
#include "windows/automation/AdoRecordset.h"
#include "windows/com/Bstr.h"
#include "windows/support/ScriptedObject.h"

namespace windows::automation {
namespace {

using com::Variant;
using support::anyClass;
using support::ScriptedObject;

std::vector<basic::Variant> elementsOf(const Variant& array) {
  std::vector<basic::Variant> elements;
  LONG last = -1;
  SafeArrayGetUBound(array.raw().parray, 1, &last);
  for (LONG i = 0; i <= last; ++i) {
    Variant element;
    SafeArrayGetElement(array.raw().parray, &i, element.out());
    elements.push_back(element.value());
  }
  return elements;
}

host::TextTable table(std::vector<std::string> columns, const std::vector<std::vector<std::string>>& rows) {
  std::string text;
  for (const auto& row : rows) {
    for (const auto& field : row) text += field + "\t";
  }
  host::Bytes bytes{std::make_unique<char[]>(text.size() + 1), text.size()};
  std::memcpy(bytes.data.get(), text.data(), text.size());
  host::TextTableBuilder builder(std::move(columns), std::move(bytes));
  std::size_t at = 0;
  for (const auto& row : rows) {
    builder.BeginRow(at);
    for (const auto& field : row) {
      builder.AddField(at + field.size());
      at += field.size() + 1;
    }
    builder.EndRow();
  }
  return builder.Finish();
}

TEST(Recordset, TakesTextRowByRowInOnePieceEach) {
  std::vector<std::string> steps;
  std::vector<std::vector<basic::Variant>> records;
  const auto step = [&steps](std::string text) { return [&steps, text] { steps.push_back(text); }; };
  const auto fields = ScriptedObject::make({{L"Append", [&steps](const auto& a) {
                                               steps.push_back("append " + a.at(0).text() + " " +
                                                               a.at(1).text() + " " + a.at(2).text());
                                             }}});
  Recordset recordset(
      {ScriptedObject::make({{L"CursorLocation", step("client")},
                             {L"Fields", fields},
                             {L"Open", step("open")},
                             {L"AddNew",
                              [&](const auto& a) {
                                EXPECT_EQ(elementsOf(a.at(0)), (std::vector<basic::Variant>{0, 1}));
                                records.push_back(elementsOf(a.at(1)));
                              }},
                             {L"MoveFirst", step("first")}}),
       anyClass});
  recordset.Open(table({"Item", "Price"}, {{"T\xC3\xA9", "3"}, {"Rye"}, {std::string(5000, 'x'), ""}}));
  EXPECT_EQ(steps, (std::vector<std::string>{"client", "append Item 200 4000", "append Price 200 4000",
                                             "open", "first"}));
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[0], (std::vector<basic::Variant>{"T\xC3\xA9", "3"}));
  EXPECT_EQ(records[1], (std::vector<basic::Variant>{"Rye", basic::Null{}})) << "what a row lacks";
  EXPECT_EQ(records[2], (std::vector<basic::Variant>{std::string(4000, 'x'), ""}));
}

TEST(Recordset, AFieldIsAskedForOnceAndCutsWhatIsTooLong) {
  int asked = 0;
  std::vector<basic::Variant> written;
  const auto field = ScriptedObject::make({{L"Value",
                                            [&](const auto& a) {
                                              if (!a.empty()) written.push_back(a[0].value());
                                              return 7;
                                            }},
                                           {L"DefinedSize", 3}});
  const auto fields = ScriptedObject::make({{L"Item", [&] {
                                               ++asked;
                                               return field;
                                             }}});
  Recordset recordset({ScriptedObject::make({{L"Fields", fields}, {L"Requery", [] {}}}), anyClass});
  for (int i = 0; i < 3; ++i) EXPECT_EQ(recordset.Fields().Item("Price").Value(), basic::Variant(7));
  EXPECT_EQ(asked, 1);
  recordset.Fields().Item("Price").Value(std::string("12345"));
  recordset.Fields().Item("Price").Value(basic::Null{});
  EXPECT_EQ(written, (std::vector<basic::Variant>{"123", basic::Null{}}));
  recordset.Requery(-1);
  (void)recordset.Fields().Item("Price").Value();
  EXPECT_EQ(asked, 2) << "other columns may have come";
}

TEST(Connection, SaysNothingOfThePassword) {
  std::string closed;
  auto* scripted = new ScriptedObject({{L"ConnectionString", [] {}},
                                       {L"Open", [] {}},
                                       {L"Close", [&closed] { closed += "closed"; }},
                                       {L"State", 1}});
  {
    Connection connection({com::Ptr<IDispatch>::taking(scripted), anyClass});
    connection.ConnectionString("DSN=stock;UID=me;PWD=hush hush");
    scripted->failure = DISP_E_EXCEPTION;
    scripted->exception.scode = E_FAIL;
    scripted->exception.bstrDescription = com::Bstr("No login for 'me' with 'hush hush'").release();
    EXPECT_EQ(support::errorOf([&] { connection.Open("", "", -1); }), "No login for 'me' with '***'");
    scripted->failure = S_OK;
    EXPECT_EQ(connection.ConnectionString(), "DSN=stock;UID=me;PWD=hush hush");
  }
  EXPECT_EQ(closed, "closed") << "with its object";
}

}  // namespace
}  // namespace windows::automation
