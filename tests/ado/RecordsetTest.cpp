#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ado/Factory.h"
#include "basic/Error.h"

namespace ado {
namespace {

using Rows = std::vector<std::vector<const char*>>;  // null for a missing field

host::TextTable tableOf(std::vector<std::string> columns, const Rows& rows) {
  std::string text;
  for (const auto& row : rows) {
    for (const char* field : row) {
      if (field != nullptr) text += std::string(field) + "\t";
    }
  }
  host::Bytes bytes{std::make_unique<char[]>(text.size()), text.size()};
  text.copy(bytes.data.get(), text.size());
  host::TextTableBuilder builder(std::move(columns), std::move(bytes));
  std::size_t at = 0;
  for (const auto& row : rows) {
    builder.BeginRow(at);
    for (const char* field : row) {
      if (field == nullptr) continue;
      at += std::string(field).size();
      builder.AddField(at++);
    }
    builder.EndRow();
  }
  return builder.Finish();
}

std::shared_ptr<ADODB::Recordset> overTable(const Rows& rows) {
  auto recordset = Factory().CreateRecordset();
  recordset->Open(tableOf({"Name", "Price"}, rows));
  return recordset;
}

/// The same records, added one by one.
std::shared_ptr<ADODB::Recordset> inMemory(const Rows& rows) {
  auto recordset = Factory().CreateRecordset();
  recordset->Fields().Append("Name", ADODB::adVarChar, 10);
  recordset->Fields().Append("Price", ADODB::adVarChar, 10);
  recordset->Open();
  for (const auto& row : rows) {
    recordset->AddNew();
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (row[i] != nullptr)
        recordset->Fields().Item(static_cast<std::int32_t>(i)).Value(std::string(row[i]));
    }
    recordset->Update();
  }
  if (!rows.empty()) recordset->MoveFirst();
  return recordset;
}

std::string value(ADODB::Recordset& recordset, std::string_view field) {
  const basic::Variant variant = recordset.Fields().Item(field).Value();
  return basic::IsNull(variant) ? "Null" : std::get<std::string>(variant);
}

std::string errorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const basic::Error& error) {
    return error.description;
  }
  return "no error";
}

constexpr const char* NoCurrentRecord =
    "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a "
    "current record.";

/// What every recordset does, wherever its records come from.
class AnyRecordset : public testing::TestWithParam<std::shared_ptr<ADODB::Recordset> (*)(const Rows&)> {
 protected:
  std::shared_ptr<ADODB::Recordset> recordset_ =
      GetParam()({{"Apple", "1"}, {"Pear", nullptr}, {"", "3"}, {"Plum", "4"}});
};
INSTANTIATE_TEST_SUITE_P(Sources, AnyRecordset, testing::Values(&overTable, &inMemory),
                         [](const auto& source) { return source.index == 0 ? "Table" : "Memory"; });

TEST_P(AnyRecordset, ReadsFieldsByNumberAndByNameInAnyCase) {
  EXPECT_EQ(recordset_->Fields().Count(), 2);
  EXPECT_EQ(recordset_->Fields().Item(1).Name(), "Price");
  EXPECT_EQ(std::get<std::string>(recordset_->Fields().Item(0).Value()), "Apple");
  EXPECT_EQ(value(*recordset_, "pRICE"), "1");
  ADODB::Field& price = recordset_->Fields().Item("Price");
  recordset_->Move(1);
  EXPECT_TRUE(basic::IsNull(price.Value()));
  recordset_->Move(1);
  EXPECT_EQ(value(*recordset_, "Name"), "");

  const std::string missing =
      "Item cannot be found in the collection corresponding to the requested name or ordinal";
  EXPECT_EQ(errorOf([&] { (void)recordset_->Fields().Item("Colour"); }), missing + ": 'Colour'.");
  EXPECT_EQ(errorOf([&] { (void)recordset_->Fields().Item(2); }), missing + ": '2'.");
  EXPECT_EQ(errorOf([&] { (void)recordset_->Fields().Item(-1); }), missing + ": '-1'.");
}

TEST_P(AnyRecordset, MovesByTheRulesOfAdo) {
  EXPECT_EQ(recordset_->RecordCount(), 4);
  EXPECT_EQ(recordset_->AbsolutePosition(), 1);
  recordset_->MoveLast();
  EXPECT_EQ(recordset_->AbsolutePosition(), 4);
  recordset_->Move(-2);
  EXPECT_EQ(recordset_->AbsolutePosition(), 2);
  recordset_->Move(0);
  EXPECT_EQ(recordset_->AbsolutePosition(), 2);

  recordset_->Move(100);
  EXPECT_EQ(recordset_->AbsolutePosition(), -3);
  EXPECT_EQ(errorOf([&] { (void)value(*recordset_, "Name"); }), NoCurrentRecord);
  EXPECT_EQ(errorOf([&] { recordset_->Move(1); }), NoCurrentRecord);
  recordset_->MovePrevious();
  EXPECT_EQ(value(*recordset_, "Name"), "Plum");

  recordset_->Move(INT32_MIN);
  EXPECT_EQ(recordset_->AbsolutePosition(), -2);
  EXPECT_EQ(errorOf([&] { recordset_->MovePrevious(); }), NoCurrentRecord);
  recordset_->Move(1);
  EXPECT_EQ(value(*recordset_, "Name"), "Apple");
}

TEST_P(AnyRecordset, DeletesTheCurrentRecord) {
  recordset_->Move(1);
  recordset_->Delete();
  EXPECT_EQ(recordset_->RecordCount(), 3);
  EXPECT_EQ(errorOf([&] { (void)value(*recordset_, "Name"); }), NoCurrentRecord);
  EXPECT_EQ(errorOf([&] { recordset_->Delete(); }), NoCurrentRecord);
  recordset_->Move(1);
  EXPECT_EQ(value(*recordset_, "Price"), "3");
  EXPECT_EQ(recordset_->AbsolutePosition(), 2);

  recordset_->Delete();
  recordset_->MovePrevious();
  EXPECT_EQ(value(*recordset_, "Name"), "Apple");

  recordset_->MoveLast();
  recordset_->Delete();
  recordset_->Move(1);
  EXPECT_EQ(recordset_->AbsolutePosition(), -3);
  recordset_->MoveFirst();
  recordset_->Delete();
  EXPECT_EQ(recordset_->RecordCount(), 0);
  EXPECT_EQ(errorOf([&] { recordset_->MovePrevious(); }), NoCurrentRecord);
}

TEST_P(AnyRecordset, AddsAndChangesRecords) {
  recordset_->AddNew();
  recordset_->Fields().Item("Name").Value(std::string("Fig"));
  EXPECT_EQ(value(*recordset_, "Name"), "Fig");
  EXPECT_EQ(value(*recordset_, "Price"), "Null");
  EXPECT_EQ(recordset_->RecordCount(), 4);
  recordset_->Update();
  EXPECT_EQ(recordset_->AbsolutePosition(), 5);

  recordset_->MoveFirst();
  recordset_->Fields().Item("Price").Value(std::int32_t{7});
  recordset_->Move(1);  // updates
  recordset_->Move(-1);
  EXPECT_EQ(value(*recordset_, "Price"), "7");
  EXPECT_EQ(value(*recordset_, "Name"), "Apple");
  EXPECT_EQ(recordset_->RecordCount(), 5);

  recordset_->AddNew();
  EXPECT_EQ(errorOf([&] { recordset_->Close(); }), "Operation is not allowed in this context.");
  EXPECT_EQ(errorOf([&] { recordset_->Delete(); }), "Operation is not allowed in this context.");
}

TEST_P(AnyRecordset, IsOpenOnce) {
  ADODB::Field& name = recordset_->Fields().Item("Name");
  EXPECT_EQ(recordset_->State(), ADODB::adStateOpen);
  EXPECT_EQ(errorOf([&] { recordset_->Open(); }), "Operation is not allowed when the object is open.");
  EXPECT_EQ(errorOf([&] { recordset_->Fields().Append("X", ADODB::adVarChar, 1); }),
            "Operation is not allowed when the object is open.");

  recordset_->Close();
  EXPECT_EQ(recordset_->State(), ADODB::adStateClosed);
  const std::string closed = "Operation is not allowed when the object is closed.";
  EXPECT_EQ(errorOf([&] { (void)recordset_->RecordCount(); }), closed);
  EXPECT_EQ(errorOf([&] { recordset_->MoveFirst(); }), closed);
  EXPECT_EQ(errorOf([&] { (void)name.Value(); }), closed);
  EXPECT_EQ(errorOf([&] { recordset_->Close(); }), closed);

  recordset_->Open(tableOf({"Other"}, {{"x"}}));
  EXPECT_EQ(value(*recordset_, "Other"), "x");
}

TEST_P(AnyRecordset, WithoutRecordsHasNoPosition) {
  const auto empty = GetParam()({});
  EXPECT_EQ(empty->RecordCount(), 0);
  EXPECT_EQ(empty->AbsolutePosition(), -1);
  for (const auto& action : std::vector<std::function<void()>>{
           [&] { empty->MoveFirst(); }, [&] { empty->MoveLast(); }, [&] { empty->Move(0); },
           [&] { empty->Move(1); }, [&] { empty->Delete(); }, [&] { (void)value(*empty, "Name"); }}) {
    EXPECT_EQ(errorOf(action), NoCurrentRecord);
  }
}

TEST(RecordsetFields, RefuseWhatTheyCannotHold) {
  const auto recordset = Factory().CreateRecordset();
  recordset->Fields().Append("Name", ADODB::adVarChar, 3);
  EXPECT_EQ(errorOf([&] { recordset->Fields().Append("NAME", ADODB::adVarChar, 3); }),
            "Object is already in collection. Cannot append: 'NAME'.");
  recordset->Open();
  recordset->AddNew();
  recordset->Fields().Item(0).Value(std::string("äöü"));
  EXPECT_EQ(errorOf([&] { recordset->Fields().Item(0).Value(std::string("äöüß")); }),
            "Multiple-step operation generated errors. Check each status value: field 'Name' holds at most 3 "
            "characters, the value has 4.");
  EXPECT_EQ(value(*recordset, "Name"), "äöü");
}

TEST(Factory, HasNoDatabases) {
  EXPECT_EQ(errorOf([] { (void)Factory().CreateConnection(); }),
            "Database connections are not available in this build of Lumenfold.");
  EXPECT_NE(errorOf([] {
              Factory().CreateRecordset()->Open("SELECT * FROM Stock", ADODB::adOpenUnspecified,
                                                ADODB::adLockUnspecified, ADODB::adOptionUnspecified);
            }),
            "no error");
}

}  // namespace
}  // namespace ado
