// The system's own connection over real databases.

#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <thread>

#include "ado/Factory.h"
#include "ado/Recordsets.h"
#include "ado/databases/Servers.h"
#include "connections/clsConnection.h"
#include "fakes/FakeServices.h"

namespace ado::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class SystemConnection : public testing::TestWithParam<TestServer& (*)()> {
 protected:
  SystemConnection() {
    machine_.UseAdo(&ado_);
    machine_.loop.onDoEvents = [] { std::this_thread::sleep_for(std::chrono::milliseconds(1)); };
  }
  void open(const std::string& source) {
    connection_.TagString("1\tStock\t" + server_.connectionString() + "\t" + source + "\t\t5000\t");
    connection_.OpenConnection();
    connection_.OpenRecordset();
    connection_.CloseConnection();
  }
  std::string value(double row, const char* column) {
    bool noValue = false;
    return connection_.GetValueDatabase(row, column, 1, false, noValue);
  }

  TestServer& server_ = GetParam()();
  ado::Factory ado_;
  fakes::Machine machine_;
  LF2000::clsConnection connection_;
};
INSTANTIATE_TEST_SUITE_P(Servers, SystemConnection, testing::Values(&sqlite, &postgres, &maria));

TEST_P(SystemConnection, ShowsValuesAndReloadsThem) {
  server_.execute("DROP TABLE IF EXISTS live");
  server_.execute("CREATE TABLE live (Name varchar(20), Price integer)");
  server_.execute("INSERT INTO live VALUES ('Apple', 3), ('Pear', NULL)");
  open("select * from live order by Name");
  EXPECT_EQ(connection_.RecordCount(), 2);
  EXPECT_THAT(connection_.Columns(), testing::SizeIs(3));
  EXPECT_EQ(value(1, "name") + value(1, "price") + value(2, "price"), "Apple3");
  EXPECT_GT(machine_.loop.doEvents, 0) << "the loop lives while the database works";

  server_.execute("UPDATE live SET Price = 4 WHERE Name = 'Apple'");
  EXPECT_EQ(value(1, "price"), "3");
  connection_.Requery(true);
  EXPECT_EQ(value(1, "price"), "4");

  server_.execute("DROP TABLE live");
  EXPECT_THAT(
      errorOf([&] { connection_.Requery(true); }),
      AllOf(StartsWith("Error requerying database Stock."), HasSubstr("live"), HasSubstr("SQLSTATE")));
  EXPECT_EQ(value(1, "price"), "4") << "the old values stay on show";
}

TEST_P(SystemConnection, RecoversWhenTheTableAppears) {
  server_.execute("DROP TABLE IF EXISTS live");
  EXPECT_THAT(errorOf([&] { open("live"); }), StartsWith("Error while reading database Stock."));
  EXPECT_THAT(errorOf([&] { connection_.Requery(true); }), HasSubstr("live"));
  EXPECT_EQ(value(1, "price"), "") << "nothing to show is no error";

  server_.execute("CREATE TABLE live (Price integer)");
  server_.execute("INSERT INTO live VALUES (5)");
  connection_.Requery(true);
  EXPECT_EQ(value(1, "price"), "5");
}

}  // namespace
}  // namespace ado::test
