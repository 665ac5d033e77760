// Connection strings and statements come with decks, which may be anybody's: nothing
// that they say loads a library, writes a file or reaches a server unasked.

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "ado/Recordsets.h"
#include "ado/databases/Servers.h"
#include "basic/Strings.h"
#include "support/TemporaryFolder.h"

namespace ado::test {
namespace {

using testing::HasSubstr;

const std::string Trap = LUMENFOLD_TRAP;

class Safety : public testing::Test {
 protected:
  Safety() { ::unsetenv("LUMENFOLD_TRAP_SPRUNG"); }

  [[nodiscard]] std::string path(const std::string& name) const { return (folder_.path() / name).string(); }
  /// What the first row says, or why there is none.
  static std::string outcome(const std::string& connectionString, const std::string& statement,
                             bool isReadOnly = false) {
    std::string found;
    const std::string error = errorOf([&] {
      Factory factory;
      factory.readOnly(isReadOnly);
      const auto connection = factory.CreateConnection();
      connection->ConnectionString(connectionString);
      connection->Open("", "", ADODB::adOptionUnspecified);
      waitWhile(*connection, ADODB::adStateConnecting);
      const auto recordset = Factory().CreateRecordset();
      recordset->ActiveConnection(connection);
      recordset->Open(statement, ADODB::adOpenUnspecified, ADODB::adLockUnspecified, ADODB::adAsyncExecute);
      waitWhile(*recordset, ADODB::adStateFetching);
      found = value(*recordset, "Found");
    });
    return found.empty() ? error : found;
  }
  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& each : std::filesystem::directory_iterator(folder_.path()))
      names.push_back(each.path().filename());
    return names;
  }

  support::TemporaryFolder folder_;
};

TEST_F(Safety, NoConnectionStringLoadsALibrary) {
  const std::string fileSource = folder_.write("trap.dsn", "[ODBC]\nDRIVER=" + Trap + "\n");
  const std::string extending =
      folder_.write("extending.dsn", "[ODBC]\nDRIVER=SQLite3\nDatabase=:memory:\nLoadExt=" + Trap + "\n");
  const std::string sqlite = "Driver={SQLite3};Database=:memory:;";
  for (const std::string& text : std::vector<std::string>{
           "Driver=" + Trap, "Driver={" + Trap + "};Database=x", "driver='" + Trap + "'",
           "Provider=MSDASQL;Extended Properties=\"Driver=" + Trap + "\"", "FILEDSN=" + fileSource,
           "FILEDSN=" + extending, "Provider=MSDASQL;FILEDSN={" + fileSource + "}",
           sqlite + "LoadExt=" + Trap, "Provider=SQLite;Data Source=:memory:;LOADEXT=" + Trap,
           sqlite + "PWD={a;LoadExt=" + Trap + ";b}", sqlite + "PWD={a}};LoadExt=" + Trap + ";b}",
           "Driver={SQLite3};Database=\":memory:;LoadExt=" + Trap + "\"",
           "Driver={MariaDB Unicode};Server=127.0.0.1;Port=1;PLUGIN_DIR=" + folder_.path().string(),
           "Driver={PostgreSQL Unicode};Servername=" + folder_.path().string() + ";TranslationDLL=" + Trap}) {
    EXPECT_NE(outcome(text, "SELECT 'connected' AS Found"), "connected") << text;
    EXPECT_EQ(::getenv("LUMENFOLD_TRAP_SPRUNG"), nullptr) << text;
  }
}

TEST_F(Safety, NoStatementLoadsALibrary) {
  const std::string file = "Provider=SQLite;Data Source=" + folder_.write("empty.db", "");
  for (const std::string call : {"load_extension('%')", "{fn load_extension('%')}", "\"LOAD_extension\"('%')",
                                 "[load_extension]('%', 'sqlite3_extension_init')"}) {
    EXPECT_THAT(outcome(file, "SELECT " + basic::Replace(call, "%", Trap) + " AS Found"),
                HasSubstr("not authorized"))
        << call;
    EXPECT_EQ(::getenv("LUMENFOLD_TRAP_SPRUNG"), nullptr) << call;
  }
  EXPECT_EQ(outcome(file, "SELECT upper('works') AS Found"), "WORKS");
}

TEST_F(Safety, NoConnectionStringWritesAFile) {
  const std::string target = path("written");
  const std::string tds = "Driver={FreeTDS};Server=127.0.0.1;Port=1;";
  for (const std::string& text : std::vector<std::string>{
           "Driver={SQLite3};Database=:memory:;Tracefile=" + target,
           "Driver={SQLite3};Database=:memory:;SAVEFILE=" + target,
           "Driver={SQLite3};Database=" + target + ";NoCreat=0", tds + "DumpFile=" + target,
           tds + "PWD={x};DumpFile=" + target, tds + "PWD={x}};DumpFile=" + target + ";y}",
           tds + "PWD=\"x};DumpFile=" + target + ";y\"",
           "Driver={PostgreSQL Unicode};Servername=127.0.0.1;Port=1;Debug=1;CommLog=1;Logdir=" +
               folder_.path().string()}) {
    EXPECT_NE(outcome(text, "SELECT 'connected' AS Found"), "connected") << text;
    EXPECT_THAT(files(), testing::IsEmpty()) << text;
  }
}

TEST_F(Safety, WhereNothingIsToBeChangedNothingIs) {
  const struct {
    TestServer& server;
    const char* words;
    std::vector<std::string> more;
  } cases[] = {
      {sqlite(), "readonly", {}},
      {postgres(), "read-only", {"SELECT 1 AS \"Found\" FROM setval('seq', 9)"}},
      {maria(), "READ ONLY", {}},
  };
  postgres().execute("CREATE SEQUENCE IF NOT EXISTS seq");
  for (const auto& each : cases) {
    const std::string text = each.server.connectionString();
    const std::string found = each.server.quoted("Found");
    each.server.execute("DROP TABLE IF EXISTS kept");
    each.server.execute("CREATE TABLE kept (" + found + " VARCHAR(9))");
    each.server.execute("INSERT INTO kept VALUES ('safe')");
    std::vector<std::string> changes = {"DROP TABLE kept", "DELETE FROM kept", "CREATE TABLE other (a INT)"};
    changes.insert(changes.end(), each.more.begin(), each.more.end());
    for (const std::string& change : changes) {
      EXPECT_THAT(outcome(text, change, /*isReadOnly=*/true), HasSubstr(each.words)) << change;
    }
    EXPECT_THAT(outcome(text, "SELECT 1 AS " + found + "; DROP TABLE kept", /*isReadOnly=*/true),
                HasSubstr("several statements"));
    EXPECT_EQ(outcome(text, "SELECT * FROM kept; ", /*isReadOnly=*/true), "safe");
  }
  // Found at the second attempt, behind a failure.
  EXPECT_EQ(outcome(postgres().connectionString(), "KEPT", /*isReadOnly=*/true), "safe");
  const std::string file = sqlite().connectionString();
  for (const std::string way : {"PRAGMA query_only = 0", "PRAGMA journal_mode = DELETE"}) {
    EXPECT_THAT(outcome(file, way, /*isReadOnly=*/true), HasSubstr("not authorized")) << way;
  }
  EXPECT_THAT(outcome(file, "/* a table's name has no comment */ ATTACH '" + path("other.db") + "' AS other",
                      /*isReadOnly=*/true),
              HasSubstr("not authorized"));
  EXPECT_THAT(files(), testing::IsEmpty());
}

TEST_F(Safety, FilesAndSourcesWithBlanksInTheirNamesAreRead) {
  const std::string file = path("a (b) {c} 'd'.db");
  const std::string sample = sqlite().connectionString();
  std::filesystem::copy_file(sample.substr(sample.rfind('=') + 1), file);
  const std::string sources = folder_.write("odbc.ini", "[my shop]\nDriver=SQLite3\nDatabase=" + file + "\n");
  const std::string fileSource = folder_.write(
      "file source.dsn", "[ODBC]\n; comment\nDRIVER = {SQLite3}\nDatabase=" + file + "\nPWD=s3cret\n");
  ::setenv("ODBCINI", sources.c_str(), 1);
  for (const std::string& text : std::vector<std::string>{
           "Provider=SQLite;Data Source=" + file, "Driver={SQLite3};Database=" + file, "DSN=my shop",
           "Provider=MSDASQL;Data Source={my shop};User ID=me", "FILEDSN=" + fileSource}) {
    EXPECT_EQ(outcome(text, "SELECT name AS Found FROM sqlite_master"), "Made") << text;
  }
  ::unsetenv("ODBCINI");
}

}  // namespace
}  // namespace ado::test
