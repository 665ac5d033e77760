// What every recordset does, wherever its records come from.

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ado/Recordsets.h"
#include "ado/databases/Servers.h"

namespace ado::test {
namespace {

using Maker = std::shared_ptr<ADODB::Recordset> (*)(const Rows&);

template <TestServer& (*Server)()>
std::shared_ptr<ADODB::Recordset> overDatabase(const Rows& rows) {
  TestServer& server = Server();
  const std::string table = server.quoted("Conformance");
  server.execute("DROP TABLE IF EXISTS " + table);
  server.execute("CREATE TABLE " + table + " (" + server.quoted("Name") + " VARCHAR(50), " +
                 server.quoted("Price") + " VARCHAR(50))");
  for (const auto& row : rows) {
    std::string values;
    for (const char* value : row) {
      values += (values.empty() ? "" : ", ") +
                (value == nullptr ? std::string("NULL") : "'" + std::string(value) + "'");
    }
    server.execute("INSERT INTO " + table + " VALUES (" + values + ")");
  }
  const auto recordset = server.opened("Conformance", ADODB::adCmdTableDirect);
  recordset->ActiveConnection(nullptr);
  return recordset;
}

class AnyRecordset : public testing::TestWithParam<std::pair<const char*, Maker>> {
 protected:
  [[nodiscard]] static std::shared_ptr<ADODB::Recordset> make(const Rows& rows) {
    return GetParam().second(rows);
  }
  std::shared_ptr<ADODB::Recordset> recordset_ =
      make({{"Apple", "1"}, {"Pear", nullptr}, {"", "3"}, {"Plum", "4"}});
};
INSTANTIATE_TEST_SUITE_P(Sources, AnyRecordset,
                         testing::Values(std::pair("Table", &overTable), std::pair("Memory", &inMemory),
                                         std::pair("Sqlite", &overDatabase<&sqlite>),
                                         std::pair("Postgres", &overDatabase<&postgres>),
                                         std::pair("Maria", &overDatabase<&maria>)),
                         [](const auto& source) { return source.param.first; });

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
  const auto empty = make({});
  EXPECT_EQ(empty->RecordCount(), 0);
  EXPECT_EQ(empty->AbsolutePosition(), -1);
  for (const auto& action : std::vector<std::function<void()>>{
           [&] { empty->MoveFirst(); }, [&] { empty->MoveLast(); }, [&] { empty->Move(0); },
           [&] { empty->Move(1); }, [&] { (void)value(*empty, "Name"); }}) {
    EXPECT_EQ(errorOf(action), NoCurrentRecord);
  }
}

}  // namespace
}  // namespace ado::test
