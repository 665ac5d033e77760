// Opening, closing, and what goes wrong with connections.

#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>

#include "ado/Recordsets.h"
#include "ado/databases/Servers.h"
#include "basic/Strings.h"

namespace ado::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using Clock = std::chrono::steady_clock;

std::shared_ptr<ADODB::Connection> opening(const std::string& connectionString, const std::string& user = {},
                                           const std::string& password = {}) {
  auto connection = Factory().CreateConnection();
  connection->ConnectionString(connectionString);
  connection->Open(user, password, ADODB::adOptionUnspecified);
  return connection;
}

std::string openingError(const std::string& connectionString, const std::string& password = {}) {
  return errorOf([&] {
    const auto connection = opening(connectionString, {}, password);
    waitWhile(*connection, ADODB::adStateConnecting);
  });
}

TEST(Connection, OpensInTheBackgroundAndCloses) {
  const auto connection = opening(postgres().connectionString());
  EXPECT_EQ(connection->State(), ADODB::adStateConnecting);
  EXPECT_EQ(errorOf([&] { connection->ConnectionString("DSN=other"); }),
            "Operation is not allowed when the object is open.");
  waitWhile(*connection, ADODB::adStateConnecting);
  EXPECT_EQ(connection->State(), ADODB::adStateOpen);
  EXPECT_EQ(connection->ConnectionString(), postgres().connectionString());
  EXPECT_EQ(connection->ConnectionTimeout(), 15);
  EXPECT_EQ(connection->CommandTimeout(), 30);

  connection->Close();
  EXPECT_EQ(connection->State(), ADODB::adStateClosed);
  EXPECT_EQ(errorOf([&] { connection->Close(); }), "Operation is not allowed when the object is closed.");
  connection->Open("", "", ADODB::adOptionUnspecified);
  waitWhile(*connection, ADODB::adStateConnecting);
  EXPECT_EQ(connection->State(), ADODB::adStateOpen);
}

TEST(Connection, ThrowsItsFailureUntilItIsOpenedAgain) {
  std::string wrong = basic::Replace(postgres().connectionString(), "s3;c", "wr0ng;");
  const auto connection = opening(wrong);
  const auto failure = errorOf([&] { waitWhile(*connection, ADODB::adStateConnecting); });
  EXPECT_THAT(failure,
              AllOf(HasSubstr("SQLSTATE 08001"), HasSubstr("password authentication failed"),
                    HasSubstr("Provider=PostgreSQL"), HasSubstr("Password=***"), Not(HasSubstr("wr0ng"))));
  EXPECT_EQ(errorOf([&] { (void)connection->State(); }), failure);

  connection->ConnectionString(postgres().connectionString());
  connection->Open("lumen", PostgresPassword, ADODB::adOptionUnspecified);
  waitWhile(*connection, ADODB::adStateConnecting);
  EXPECT_EQ(connection->State(), ADODB::adStateOpen);
}

TEST(Connection, TakesThePasswordOfOpenAndNeverShowsIt) {
  const std::string bare = basic::Split(postgres().connectionString(), ';')[0] + ";" +
                           basic::Split(postgres().connectionString(), ';')[1] + ";Database=postgres;";
  const auto connection = opening(bare + "UID=nobody-at-all", "lumen", PostgresPassword);
  waitWhile(*connection, ADODB::adStateConnecting);
  EXPECT_EQ(connection->State(), ADODB::adStateOpen);
  // The driver's own words quote the name that the secret is given as here.
  EXPECT_THAT(openingError(bare + "UID=hush-hush", "hush-hush"),
              AllOf(HasSubstr("failed for user \"***\""), HasSubstr("SQLSTATE")));
}

TEST(Connection, NamesWhatIsNotThere) {
  EXPECT_THAT(openingError("Provider=SQLite;Data Source=/nowhere/stock.db"),
              AllOf(HasSubstr("/nowhere/stock.db"), HasSubstr("does not exist")));
  EXPECT_THAT(openingError("DSN=NoSuchSource"), HasSubstr("SQLSTATE IM002"));
  EXPECT_THAT(openingError("Provider=PostgreSQL;Server=/nowhere;Database=x;UID=y"),
              AllOf(HasSubstr("SQLSTATE 08001"), HasSubstr("/nowhere")));
  EXPECT_THAT(openingError("Driver=/nowhere/libmine.so;x=y"), HasSubstr("/nowhere/libmine.so"));
}

TEST(Connection, IsAbandonedWhileItIsBusyWithoutWaiting) {
  const auto recordset = Factory().CreateRecordset();
  auto connection = postgres().connected();
  recordset->ActiveConnection(connection);
  recordset->Open("SELECT pg_sleep(3600), 'abandoned' AS mark", ADODB::adOpenUnspecified,
                  ADODB::adLockUnspecified, 16);
  const auto isRunning = [] {
    return value(*postgres().opened("SELECT count(*)::text AS n FROM pg_stat_activity WHERE query LIKE "
                                    "'%''abandoned''%' AND state = 'active' AND query NOT LIKE '%activity%'"),
                 "n");
  };
  while (isRunning() == "0") std::this_thread::sleep_for(std::chrono::milliseconds(5));
  EXPECT_EQ(recordset->State(), ADODB::adStateFetching);

  connection->Close();
  EXPECT_THAT(errorOf([&] { (void)recordset->State(); }), HasSubstr("The connection was closed"));
  recordset->Close();
  EXPECT_EQ(recordset->State(), ADODB::adStateClosed);
  // The server has been told, too.
  while (isRunning() != "0") std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

/// Of this process, wherever they lead.
std::ptrdiff_t sockets() {
  std::ptrdiff_t count = 0;
  for (const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    const std::string target = std::filesystem::read_symlink(descriptor, gone).string();
    count += target.starts_with("socket:") ? 1 : 0;
  }
  return count;
}

TEST(Connection, FactoryWaitsForWorkersThatEnd) {
  const std::string server = postgres().connectionString();
  const auto before = sockets();
  {
    Factory factory;
    const auto connection = factory.CreateConnection();
    connection->ConnectionString(server);
    connection->Open("", "", -1);
    waitWhile(*connection, ADODB::adStateConnecting);
    connection->Close();
  }
  EXPECT_LE(sockets(), before);
}

TEST(Connection, SurvivesTheServer) {
  ProcessServer& server = postgresProcess();
  server.execute("DROP TABLE IF EXISTS Survivor");
  server.execute("CREATE TABLE Survivor (Name text, Times integer)");
  server.execute("INSERT INTO Survivor VALUES ('before', 1)");
  const auto recordset = server.opened("SELECT Name FROM Survivor, generate_series(1, Times)");
  const auto connection = server.connected();
  recordset->ActiveConnection(connection);

  // It goes while the rows come in, block by block.
  server.execute("UPDATE Survivor SET Times = 100000000");
  recordset->Requery(-1);
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  EXPECT_EQ(recordset->State(), ADODB::adStateFetching);
  server.stop();
  EXPECT_THAT(errorOf([&] { waitWhile(*recordset, ADODB::adStateFetching); }), HasSubstr("SQLSTATE"));
  EXPECT_EQ(recordset->State(), ADODB::adStateOpen);
  EXPECT_EQ(recordset->RecordCount(), 1);
  EXPECT_EQ(value(*recordset, "Name"), "before");
  recordset->Requery(-1);
  EXPECT_THAT(errorOf([&] { waitWhile(*recordset, ADODB::adStateFetching); }), HasSubstr("SQLSTATE"));
  EXPECT_THAT(openingError(server.connectionString()), HasSubstr("SQLSTATE 08001"));

  server.start();
  server.execute("UPDATE Survivor SET Name = 'after', Times = 1");
  connection->Close();
  recordset->ActiveConnection(server.connected());
  recordset->Requery(-1);
  waitWhile(*recordset, ADODB::adStateFetching);
  EXPECT_EQ(value(*recordset, "name"), "after");
}

/// Accepts connections and says nothing.
class SilentServer {
 public:
  SilentServer() : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (::bind(socket_, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(socket_, 64) != 0 ||
        ::getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
      throw std::runtime_error("no port");
    }
    port_ = ntohs(address.sin_port);
  }
  ~SilentServer() { ::close(socket_); }
  SilentServer(const SilentServer&) = delete;
  SilentServer& operator=(const SilentServer&) = delete;
  [[nodiscard]] std::string port() const { return std::to_string(port_); }

 private:
  int socket_;
  std::uint16_t port_ = 0;
};

std::ptrdiff_t threads() { return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {}); }

TEST(Connection, GivesUpAServerThatSaysNothing) {
  const SilentServer server;
  const auto before = threads();
  const auto start = Clock::now();
  for (const char* provider : {"PostgreSQL", "MariaDB", "SQLOLEDB"}) {
    SCOPED_TRACE(provider);
    const std::string text = std::string("Provider=") + provider + ";Server=127.0.0.1;Port=" + server.port() +
                             ";Database=x;User ID=y;Password=z;Connect Timeout=1";
    opening(text)->Close();
    EXPECT_THAT(openingError(text), HasSubstr("Cannot open the connection"));
  }
  // Without a timeout of their own the drivers would wait for minutes.
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(60));
  // Nor does a thread wait on for it, or there would be more with every try.
  while (threads() > before && Clock::now() - start < std::chrono::seconds(120)) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  EXPECT_LE(threads(), before);
}

class Catalog : public testing::TestWithParam<TestServer& (*)()> {};
INSTANTIATE_TEST_SUITE_P(Servers, Catalog, testing::Values(&sqlite, &postgres, &maria));

TEST_P(Catalog, ListsTablesAndViews) {
  const TestServer& server = GetParam()();
  server.execute("DROP VIEW IF EXISTS cheap");
  server.execute("DROP TABLE IF EXISTS " + server.quoted("Stock list"));
  server.execute("CREATE TABLE " + server.quoted("Stock list") + " (x integer)");
  server.execute("CREATE VIEW cheap AS SELECT x FROM " + server.quoted("Stock list"));
  const auto connection = opening(server.connectionString());
  waitWhile(*connection, ADODB::adStateConnecting);

  const auto tables = connection->OpenSchema(ADODB::adSchemaTables);
  waitWhile(*tables, ADODB::adStateFetching);
  std::vector<std::string> found;
  for (std::int64_t left = tables->RecordCount(); left > 0; --left, tables->Move(1)) {
    const std::string name = value(*tables, "TABLE_NAME");
    if (name != "Stock list" && name != "cheap") continue;
    found.push_back(value(*tables, "TABLE_TYPE") + " " + name + " " + value(*tables, "TABLE_SCHEMA"));
  }
  const std::string schema = &server == &postgres() ? " public" : " Null";
  EXPECT_THAT(found, testing::UnorderedElementsAre("TABLE Stock list" + schema, "VIEW cheap" + schema));

  // "_" is no pattern.
  server.execute("DROP TABLE IF EXISTS a_b");
  server.execute("DROP TABLE IF EXISTS axb");
  server.execute("CREATE TABLE a_b (" + server.quoted("Two words") + " integer, y integer)");
  server.execute("CREATE TABLE axb (z integer)");
  const auto columns = connection->OpenSchema(ADODB::adSchemaColumns, "a_b");
  waitWhile(*columns, ADODB::adStateFetching);
  std::vector<std::string> names;
  for (std::int64_t left = columns->RecordCount(); left > 0; --left, columns->Move(1)) {
    names.push_back(value(*columns, "TABLE_NAME") + " " + value(*columns, "COLUMN_NAME") + " " +
                    value(*columns, "ORDINAL_POSITION"));
  }
  EXPECT_THAT(names, testing::ElementsAre("a_b Two words 1", "a_b y 2"));

  connection->Close();
  EXPECT_THAT(errorOf([&] { (void)connection->OpenSchema(ADODB::adSchemaTables); }), HasSubstr("connection"));
}

}  // namespace
}  // namespace ado::test
