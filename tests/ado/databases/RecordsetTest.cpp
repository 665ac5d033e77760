// Recordsets over databases: what they are opened on, and what happens meanwhile.

#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <thread>

#include "ado/Recordsets.h"
#include "ado/databases/Servers.h"

namespace ado::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::shared_ptr<ADODB::Recordset> opening(const std::shared_ptr<ADODB::Connection>& connection,
                                          const std::string& source, std::int32_t options = 16) {
  auto recordset = Factory().CreateRecordset();
  recordset->CursorLocation(ADODB::adUseClient);
  recordset->CursorType(ADODB::adOpenForwardOnly);
  recordset->LockType(ADODB::adLockReadOnly);
  recordset->ActiveConnection(connection);
  recordset->Open(source, ADODB::adOpenUnspecified, ADODB::adLockUnspecified, options);
  return recordset;
}

class Server : public testing::TestWithParam<TestServer& (*)()> {
 protected:
  TestServer& server_ = GetParam()();
  [[nodiscard]] std::string quoted(std::string_view name) const { return server_.quoted(name); }
  void makeTable(const std::string& table, const std::string& columns, const std::string& values) const {
    server_.execute("DROP TABLE IF EXISTS " + table);
    server_.execute("CREATE TABLE " + table + " (" + columns + ")");
    server_.execute("INSERT INTO " + table + " VALUES " + values);
  }
};
INSTANTIATE_TEST_SUITE_P(Servers, Server, testing::Values(&sqlite, &postgres, &maria));

TEST_P(Server, OpensTablesByAnyName) {
  const std::string quote = quoted("x").substr(0, 1);
  for (const std::string& name : {std::string("Fruit list"), "we" + quote + "ird", std::string("order"),
                                  std::string("Äpfel"), std::string("plain")}) {
    SCOPED_TRACE(name);
    makeTable(quoted(name), quoted("Name") + " varchar(20)", "('" + std::string("Pear") + "')");
    EXPECT_EQ(value(*server_.opened(name, ADODB::adCmdTableDirect), "Name"), "Pear");
    EXPECT_EQ(value(*server_.opened(quoted(name), ADODB::adCmdTableDirect), "Name"), "Pear");
    EXPECT_EQ(value(*server_.opened(name, ADODB::adOptionUnspecified), "Name"), "Pear");
  }
  // There tables are files, and the case of letters counts.
  const bool anyCase = &server_ != &maria();
  EXPECT_EQ(value(*server_.opened(anyCase ? "PLAIN" : "plain", ADODB::adCmdTableDirect), "Name"), "Pear");
  EXPECT_EQ(value(*server_.opened("SELECT * FROM plain", ADODB::adOptionUnspecified), "Name"), "Pear");
  EXPECT_THAT(errorOf([&] { (void)server_.opened("none; DROP TABLE plain", ADODB::adCmdTableDirect); }),
              HasSubstr("none; DROP TABLE plain"));
  EXPECT_EQ(value(*server_.opened("plain", ADODB::adCmdTableDirect), "Name"), "Pear");
}

TEST_P(Server, ReadsResultsOfUnusualShape) {
  makeTable("shape", "a varchar(10), b varchar(10)", "('1', '2')");
  const auto twins = server_.opened("SELECT a AS x, b AS x FROM shape");
  EXPECT_EQ(value(*twins, "X"), "1");
  EXPECT_EQ(std::get<std::string>(twins->Fields().Item(1).Value()), "2");

  EXPECT_EQ(server_.opened("SELECT * FROM shape WHERE a = 'none'")->RecordCount(), 0);

  std::string wide;
  for (int i = 0; i < 1600; ++i)
    wide += (i == 0 ? "" : ",") + ("'" + std::to_string(i) + "' AS c" + std::to_string(i));
  const auto columns = server_.opened("SELECT " + wide);
  EXPECT_EQ(columns->Fields().Count(), 1600);
  EXPECT_EQ(value(*columns, "C1599"), "1599");

  EXPECT_THAT(errorOf([&] { (void)server_.opened("UPDATE shape SET a = '3'"); }),
              AllOf(HasSubstr("UPDATE shape"), HasSubstr("gives no records")));
  EXPECT_THAT(errorOf([&] { (void)server_.opened("DELETE FROM shape WHERE a = 'none'"); }),
              HasSubstr("gives no records"));
}

TEST_P(Server, ReadsManyRows) {
  makeTable("many", "n integer, t varchar(40)", "(0, 'row 0')");
  for (int i = 1; i <= 1 << 14; i *= 2) {
    server_.execute("INSERT INTO many SELECT n + " + std::to_string(i) + ", 'row' FROM many");
  }
  const auto many = server_.opened("SELECT n, t FROM many ORDER BY n");
  ASSERT_EQ(many->RecordCount(), 1 << 15);
  for (std::int32_t i = 1; i < 1 << 15; ++i) {
    many->Move(1);
    ASSERT_EQ(std::get<std::int32_t>(many->Fields().Item(0).Value()), i);
  }
  EXPECT_EQ(value(*many, "t"), "row");
}

TEST_P(Server, IsBrokenOffAtAnyMoment) {
  makeTable("breaking", "t varchar(40)", "('row')");
  for (int i = 0; i < 14; ++i) server_.execute("INSERT INTO breaking SELECT t FROM breaking");
  const auto connection = server_.connected();
  for (int milliseconds = 0; milliseconds < 40; milliseconds += 2) {
    const auto recordset = opening(connection, "SELECT * FROM breaking");
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    recordset->Close();
  }
  const auto whole = opening(connection, "breaking", ADODB::adCmdTableDirect);
  waitWhile(*whole, ADODB::adStateFetching);
  EXPECT_EQ(whole->RecordCount(), 1 << 14);
}

TEST_P(Server, TellsWhatIsWrongWithAStatement) {
  const auto recordset = Factory().CreateRecordset();
  recordset->ActiveConnection(server_.connected());
  const auto open = [&](const char* source, std::int32_t options) {
    recordset->Open(source, ADODB::adOpenUnspecified, ADODB::adLockUnspecified, options);
    return errorOf([&] { waitWhile(*recordset, ADODB::adStateFetching); });
  };
  const std::string failure = open("SELECT nonsense FROM nothing", 16);
  EXPECT_THAT(failure, AllOf(HasSubstr("Cannot read 'SELECT nonsense FROM nothing'"), HasSubstr("SQLSTATE"),
                             HasSubstr("native error"), HasSubstr("nothing")));
  EXPECT_EQ(errorOf([&] { (void)recordset->State(); }), failure) << "nobody waits for it to be open";
  EXPECT_THAT(open("no such table", ADODB::adCmdTableDirect), HasSubstr("no such table"));
  recordset->Close();
  EXPECT_EQ(recordset->State(), ADODB::adStateClosed);
}

TEST_P(Server, QueriesAgainWhatWasDetached) {
  makeTable("ticker", "Name varchar(20), Price varchar(20)", "('Apple', '1'), ('Pear', '2')");
  const auto recordset = server_.opened("SELECT * FROM ticker ORDER BY Name");
  ADODB::Field& price = recordset->Fields().Item("Price");
  recordset->ActiveConnection(nullptr);
  EXPECT_THAT(errorOf([&] { recordset->Requery(-1); }),
              HasSubstr("cannot be used to perform this operation"));
  const auto again = [&] {
    const auto connection = server_.connected();
    recordset->ActiveConnection(connection);
    const auto held = recordset->RecordCount();
    recordset->Requery(-1);
    EXPECT_EQ(recordset->RecordCount(), held) << "until the new records are there";
    waitWhile(*recordset, ADODB::adStateFetching);
    recordset->ActiveConnection(nullptr);
  };

  recordset->Move(1);
  server_.execute("INSERT INTO ticker VALUES ('Plum', '3')");
  again();
  EXPECT_EQ(recordset->RecordCount(), 3);
  EXPECT_EQ(recordset->AbsolutePosition(), 1);
  recordset->MoveLast();
  EXPECT_EQ(std::get<std::string>(price.Value()), "3") << "fields stay";

  server_.execute("DROP TABLE ticker");
  EXPECT_THAT(errorOf(again), AllOf(HasSubstr("SQLSTATE"), HasSubstr("ticker")));
  EXPECT_EQ(recordset->State(), ADODB::adStateOpen);
  EXPECT_EQ(recordset->RecordCount(), 3) << "old records stand";

  makeTable("ticker", "Name varchar(20), Colour varchar(20)", "('Apple', 'red')");
  again();
  EXPECT_EQ(value(*recordset, "Colour"), "red");
  EXPECT_THAT(errorOf([&] { (void)recordset->Fields().Item("Price"); }), HasSubstr("'Price'"));
  EXPECT_THAT(errorOf([&] { recordset->AddNew(); }), HasSubstr("can only be read"));
  EXPECT_THAT(errorOf([&] { recordset->Fields().Item(0).Value(std::string("x")); }),
              HasSubstr("can only be read"));
}

struct Slow {
  TestServer& (*server)();
  const char* statement;
};
class SlowQuery : public testing::TestWithParam<Slow> {
 protected:
  TestServer& server_ = GetParam().server();
};
INSTANTIATE_TEST_SUITE_P(
    Servers, SlowQuery,
    // That driver cannot be interrupted; it stops at the next row.
    testing::Values(Slow{&sqlite,
                         "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c LIMIT "
                         "1000000000) SELECT x FROM c WHERE x % 100000 = 0"},
                    Slow{&postgres, "SELECT pg_sleep(3600)"}, Slow{&maria, "SELECT sleep(3600)"}));

TEST_P(SlowQuery, LeavesTheLoopFreeAndCanBeClosed) {
  const auto connection = server_.connected();
  const auto recordset = opening(connection, GetParam().statement);
  for (int look = 0; look < 10'000; ++look) {
    ASSERT_EQ(recordset->State(), ADODB::adStateFetching);
    ASSERT_EQ(connection->State(), ADODB::adStateOpen);
  }
  const std::string executing = "Operation cannot be performed while executing asynchronously.";
  EXPECT_EQ(errorOf([&] { (void)recordset->RecordCount(); }), executing);
  EXPECT_EQ(errorOf([&] { recordset->ActiveConnection(nullptr); }), executing);
  recordset->Close();
  EXPECT_EQ(recordset->State(), ADODB::adStateClosed);

  // The connection is free again as soon as the driver let go.
  const auto next = opening(connection, "SELECT 'free' AS x");
  waitWhile(*next, ADODB::adStateFetching);
  EXPECT_EQ(value(*next, "x"), "free");
}

TEST_P(SlowQuery, EndsWithTheCommandTimeout) {
  auto connection = Factory().CreateConnection();
  connection->ConnectionString(server_.connectionString() + ";Command Timeout=1");
  connection->Open("", "", -1);
  waitWhile(*connection, ADODB::adStateConnecting);
  EXPECT_EQ(connection->CommandTimeout(), 1);
  const auto recordset = opening(connection, GetParam().statement);
  EXPECT_THAT(errorOf([&] { waitWhile(*recordset, ADODB::adStateFetching); }),
              HasSubstr("within the 1 seconds of the command time-out"));
}

TEST_P(SlowQuery, IsDestroyedWithoutWaiting) {
  auto connection = server_.connected();
  auto recordset = opening(connection, GetParam().statement);
  connection.reset();
  EXPECT_EQ(recordset->State(), ADODB::adStateFetching) << "the recordset holds the connection";
  recordset.reset();
}

TEST(Results, OfSeveralStatementsTheFirstIsRead) {
  const auto recordset = postgres().opened("SELECT 'one' AS x; SELECT 'two' AS y");
  EXPECT_EQ(recordset->Fields().Count(), 1);
  EXPECT_EQ(value(*recordset, "x"), "one");
}

TEST(Results, OfSchemas) {
  postgres().execute("DROP SCHEMA IF EXISTS \"My shop\" CASCADE");
  postgres().execute("CREATE SCHEMA \"My shop\"");
  postgres().execute("CREATE TABLE \"My shop\".\"a.b\" AS SELECT 'deep' AS x");
  EXPECT_EQ(value(*postgres().opened("My shop.\"a.b\"", ADODB::adCmdTableDirect), "x"), "deep");
  EXPECT_EQ(value(*postgres().opened("[My shop].[a.b]", ADODB::adCmdTableDirect), "x"), "deep");
}

}  // namespace
}  // namespace ado::test
