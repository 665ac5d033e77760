#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ado/Factory.h"
#include "ado/Recordsets.h"

namespace ado::test {
namespace {

/// What every recordset does whose records can be changed.
class ChangeableRecordset : public testing::TestWithParam<std::string> {
 protected:
  std::shared_ptr<ADODB::Recordset> recordset_ = (GetParam() == "Table" ? overTable : inMemory)(
      {{"Apple", "1"}, {"Pear", nullptr}, {"", "3"}, {"Plum", "4"}});
};
INSTANTIATE_TEST_SUITE_P(Sources, ChangeableRecordset, testing::Values("Table", "Memory"),
                         [](const auto& source) { return source.param; });

TEST_P(ChangeableRecordset, DeletesTheCurrentRecord) {
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

TEST_P(ChangeableRecordset, AddsAndChangesRecords) {
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

TEST(Recordset, WithoutConnectionHasNoSource) {
  const auto recordset = Factory().CreateRecordset();
  EXPECT_EQ(errorOf([&] {
              recordset->Open("SELECT * FROM Stock", ADODB::adOpenUnspecified, ADODB::adLockUnspecified,
                              ADODB::adOptionUnspecified);
            }),
            "The connection cannot be used to perform this operation. It is either closed or invalid in this "
            "context.");
}

}  // namespace
}  // namespace ado::test
