#include "ado/databases/Servers.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <signal.h>
#include <sql.h>
#include <sqlext.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

#include "ado/Factory.h"
#include "basic/Strings.h"

namespace ado::test {
namespace {

[[noreturn]] void fail(const std::string& why) { throw std::runtime_error(why); }

void requireFile(const std::string& path, const std::string& package) {
  if (!std::filesystem::exists(path)) {
    fail("This test needs the package " + package + " (scripts/setup.sh --tests); there is no " + path + ".");
  }
}

std::string newestFolder(const std::string& parent, const std::string& package) {
  requireFile(parent, package);
  std::string newest;
  for (const auto& each : std::filesystem::directory_iterator(parent))
    newest = std::max(newest, each.path().string());
  return newest;
}

std::string driverPath(const std::string& library, const std::string& package) {
  for (const auto& each : std::filesystem::directory_iterator("/usr/lib")) {
    if (auto path = each.path() / "odbc" / library; std::filesystem::exists(path)) return path.string();
  }
  fail("This test needs the package " + package + " (scripts/setup.sh --tests); there is no " + library +
       ".");
}

template <typename Object>
int waitWhileState(Object& object, std::int32_t state) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(120);
  for (int looks = 1;; ++looks) {
    if (object.State() != state) return looks;
    if (std::chrono::steady_clock::now() > end)
      fail("State stayed " + std::to_string(state) + " for two minutes.");
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

}  // namespace

int waitWhile(ADODB::Connection& connection, std::int32_t state) { return waitWhileState(connection, state); }
int waitWhile(ADODB::Recordset& recordset, std::int32_t state) { return waitWhileState(recordset, state); }

std::string TestServer::quoted(std::string_view name) const {
  return quote_ + basic::Replace(name, quote_, quote_ + quote_) + quote_;
}

void TestServer::execute(const std::string& sql) const {
  SQLHENV environment = nullptr;
  SQLHDBC connection = nullptr;
  SQLHSTMT statement = nullptr;
  SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment);
  SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  SQLAllocHandle(SQL_HANDLE_DBC, environment, &connection);
  std::string text = odbcText();
  std::string statementText = sql;
  std::string failure;
  const auto diagnose = [&failure](SQLSMALLINT kind, SQLHANDLE handle) {
    SQLCHAR state[6] = {};
    SQLCHAR message[1024] = {};
    SQLGetDiagRec(kind, handle, 1, state, nullptr, message, sizeof message, nullptr);
    failure = reinterpret_cast<const char*>(message);
  };
  if (!SQL_SUCCEEDED(SQLDriverConnect(connection, nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS,
                                      nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT))) {
    diagnose(SQL_HANDLE_DBC, connection);
  } else {
    SQLAllocHandle(SQL_HANDLE_STMT, connection, &statement);
    const SQLRETURN result =
        SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(statementText.data()), SQL_NTS);
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) diagnose(SQL_HANDLE_STMT, statement);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    SQLDisconnect(connection);
  }
  SQLFreeHandle(SQL_HANDLE_DBC, connection);
  SQLFreeHandle(SQL_HANDLE_ENV, environment);
  if (!failure.empty()) fail(sql.substr(0, 200) + ": " + failure);
}

std::shared_ptr<ADODB::Connection> TestServer::connected() const {
  auto connection = Factory().CreateConnection();
  connection->ConnectionString(connectionString());
  connection->Open("", "", ADODB::adOptionUnspecified);
  waitWhile(*connection, ADODB::adStateConnecting);
  return connection;
}

std::shared_ptr<ADODB::Recordset> TestServer::opened(std::string_view source, std::int32_t options) const {
  auto recordset = Factory().CreateRecordset();
  recordset->ActiveConnection(connected());
  recordset->Open(source, ADODB::adOpenUnspecified, ADODB::adLockUnspecified, options);
  waitWhile(*recordset, ADODB::adStateFetching);
  return recordset;
}

ProcessServer::ProcessServer(std::string_view quote) : TestServer(quote) {
  if (::geteuid() != 0) return;
  const passwd* const nobody = ::getpwnam("nobody");
  if (::chown(folder_.c_str(), nobody->pw_uid, nobody->pw_gid) != 0) fail("chown " + folder_.string());
}

ProcessServer::~ProcessServer() { stop(); }

void ProcessServer::stop() {
  if (process_ < 0) return;
  ::kill(process_, stopSignal_);
  ::waitpid(process_, nullptr, 0);
  process_ = -1;
}

void ProcessServer::launch(std::vector<std::string> arguments) { process_ = spawn(std::move(arguments)); }

void ProcessServer::run(std::vector<std::string> arguments) {
  const std::string program = arguments[0];
  int status = 0;
  ::waitpid(spawn(std::move(arguments)), &status, 0);
  if (status != 0) fail(program + " failed:\n" + log());
}

pid_t ProcessServer::spawn(std::vector<std::string> arguments) const {
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  const passwd* const nobody = ::getpwnam("nobody");
  const std::string logFile = (folder_ / "log").string();
  const pid_t parent = ::getpid();
  const pid_t child = ::fork();
  if (child != 0) return child;
  const int log = ::open(logFile.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
  ::dup2(log, 1);
  ::dup2(log, 2);
  // Servers do not start as root.
  if (::geteuid() == 0 &&
      (::setgroups(0, nullptr) != 0 || ::setgid(nobody->pw_gid) != 0 || ::setuid(nobody->pw_uid) != 0)) {
    ::_exit(126);
  }
  // Nor do they outlive a test that was killed.
  ::prctl(PR_SET_PDEATHSIG, stopSignal_);
  if (::getppid() != parent) ::_exit(126);
  ::execv(argv[0], argv.data());
  ::_exit(127);
}

std::string ProcessServer::log() const {
  std::ifstream file(folder_ / "log");
  return {std::istreambuf_iterator<char>(file), {}};
}

void ProcessServer::waitForAnswers() const {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(120);
  while (true) {
    try {
      return execute("SELECT 1");
    } catch (const std::runtime_error& error) {
      if (std::chrono::steady_clock::now() > end) fail(std::string(error.what()) + "\n" + log());
      if (::waitpid(process_, nullptr, WNOHANG) != 0) fail("The server ended:\n" + log());
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
}

namespace {

class Sqlite final : public TestServer {
 public:
  Sqlite() : driver_(driverPath("libsqlite3odbc.so", "libsqliteodbc")) { execute("CREATE TABLE Made (x)"); }
  [[nodiscard]] std::string connectionString() const override {
    return "Provider=SQLite;Data Source=" + file();
  }

 private:
  [[nodiscard]] std::string odbcText() const override { return "Driver=" + driver_ + ";Database=" + file(); }
  [[nodiscard]] std::string file() const { return (folder_.path() / "stock.db").string(); }

  std::string driver_;
  support::TemporaryFolder folder_;
};

class Postgres final : public ProcessServer {
 public:
  Postgres() : driver_(driverPath("psqlodbcw.so", "odbc-postgresql")) {
    stopSignal_ = SIGINT;
    bin_ = newestFolder("/usr/lib/postgresql", "postgresql") + "/bin/";
    requireFile(bin_ + "initdb", "postgresql");
    const std::string passwordFile = (folder_ / "password").string();
    std::ofstream(passwordFile) << PostgresPassword << '\n';
    run({bin_ + "initdb", "-D", data(), "-A", "scram-sha-256", "--pwfile=" + passwordFile, "-N", "-U",
         "lumen", "--locale=C.UTF-8"});
    start();
  }
  void start() override {
    launch({bin_ + "postgres", "-D", data(), "-k", folder_.string(), "-c", "listen_addresses=", "-F", "-c",
            "shared_buffers=16MB"});
    waitForAnswers();
  }
  [[nodiscard]] std::string connectionString() const override {
    return "Provider=PostgreSQL;Data Source=" + folder_.string() +
           ";Initial Catalog=postgres;User ID=lumen;Password=\"" +
           basic::Replace(PostgresPassword, "\"", "\"\"") + "\"";
  }

 private:
  [[nodiscard]] std::string odbcText() const override {
    return "Driver=" + driver_ + ";Servername=" + folder_.string() + ";Database=postgres;UID=lumen;PWD={" +
           basic::Replace(PostgresPassword, "}", "}}") + "}";
  }
  [[nodiscard]] std::string data() const { return (folder_ / "data").string(); }

  std::string driver_;
  std::string bin_;
};

class Maria final : public ProcessServer {
 public:
  Maria() : ProcessServer("`"), driver_(driverPath("libmaodbc.so", "odbc-mariadb")) {
    requireFile("/usr/sbin/mariadbd", "mariadb-server-core");
    std::filesystem::create_directory(folder_ / "data");
    std::filesystem::permissions(folder_ / "data", std::filesystem::perms::all);
    start();
    execute("CREATE DATABASE show_data CHARACTER SET utf8mb4");
    database_ = "show_data";
  }
  void start() override {
    launch({"/usr/sbin/mariadbd", "--no-defaults", "--skip-grant-tables",
            "--datadir=" + (folder_ / "data").string(), "--socket=" + (folder_ / "s").string(),
            "--pid-file=" + (folder_ / "pid").string(), "--skip-networking",
            "--innodb-flush-log-at-trx-commit=0", "--innodb-log-file-size=4M",
            "--innodb-buffer-pool-size=16M"});
    waitForAnswers();
  }
  [[nodiscard]] std::string connectionString() const override {
    return "Provider=MariaDB;Socket=" + (folder_ / "s").string() + ";Initial Catalog=" + database_ +
           ";User ID=root";
  }

 private:
  [[nodiscard]] std::string odbcText() const override {
    return "Driver=" + driver_ + ";Socket=" + (folder_ / "s").string() + ";UID=root;CHARSET=utf8mb4" +
           (database_.empty() ? "" : ";Database=" + database_);
  }

  std::string driver_;
  std::string database_;  // once it is made
};

}  // namespace

TestServer& sqlite() {
  static Sqlite server;
  return server;
}

ProcessServer& postgresProcess() {
  static Postgres server;
  return server;
}

TestServer& postgres() { return postgresProcess(); }

TestServer& maria() {
  static Maria server;
  return server;
}

}  // namespace ado::test
