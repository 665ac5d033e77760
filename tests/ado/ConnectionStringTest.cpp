#include "ado/ConnectionString.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "ado/Factory.h"
#include "ado/Providers.h"
#include "ado/Recordsets.h"
#include "ado/TableName.h"
#include "basic/ConnectionString.h"
#include "host/drives.h"

namespace ado::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// The driver manager asks for it once.
const int registered = ::setenv("ODBCSYSINI", TEST_DRIVERS, 1) + ::unsetenv("ODBCINI");

/// What is given, and what is expected of it.
using Texts = std::vector<std::pair<const char*, const char*>>;

std::string parsed(const std::string& text) {
  const ConnectionString string(text);
  std::string all;
  for (const auto& [key, value] : string.settings()) all += "<" + key + "|" + value + ">";
  return all;
}

TEST(ConnectionString, IsReadByTheRulesOfQuoting) {
  for (const auto& [text, expected] : Texts{
           {"", ""},
           {" ;; ", ""},
           {"A=1;B=2", "<A|1><B|2>"},
           {" User ID = sa ; Password = ;", "<User ID|sa><Password|>"},
           {"PWD={a;b}}c=\"'};X=1", "<PWD|a;b}c=\"'><X|1>"},
           {"Password=\"a;b\"\"c\"", "<Password|a;b\"c>"},
           {"Password='it''s' ; X=1", "<Password|it's><X|1>"},
           {"Data Source=C:\\it's here.mdb", "<Data Source|C:\\it's here.mdb>"},
           {"a==b=c=d", "<a=b|c=d>"},
           {"PWD= {}", "<PWD|>"},
           {"Extended Properties=\"Excel 8.0;HDR=YES\"", "<Extended Properties|Excel 8.0;HDR=YES>"},
       }) {
    EXPECT_EQ(parsed(text), expected) << text;
  }
  for (const char* bad : {"Password=s3;cret", "PWD={s3cret", "PWD=\"s3cret", "PWD={s3}cret", "s3cret"}) {
    EXPECT_THAT(errorOf([&] { (void)parsed(bad); }),
                AllOf(StartsWith("The connection string cannot be read"), Not(HasSubstr("cret"))))
        << bad;
  }
}

TEST(ConnectionString, IsWrittenSoThatItIsReadAgain) {
  for (const std::string value : {"", "plain", " blank ", "a;b", "}", "{", "{}", "a}};b=\"'", "\"quoted\""}) {
    ConnectionString string;
    string.set("PWD", value);
    string.set("X", "1");
    EXPECT_EQ(parsed(string.odbcText(Braces::Doubled)), "<PWD|" + value + "><X|1>");
  }
}

TEST(ConnectionString, IsShownWithoutSecrets) {
  for (const char* text :
       {"DSN=x;PWD=s3cret", "DSN=x;pwd={s3;cret}", "Provider=P;Password=\"s3cret\";X=1",
        "Jet OLEDB:Database Password=s3cret", "Provider=MSDASQL;Extended Properties=\"DSN=x;PWD=s3cret\"",
        "PWD=s3cret\";X=1", "PWD={s3cret;X=1", "AccessToken=s3cret", "Password=s3;cret",
        "Driver={SQL Server;UID=sa;PWD=s3cret};X=1",
        "Provider=MSDASQL;Extended Properties='Driver={x;PWD=s3cret}'"}) {
    const std::string masked = basic::MaskedConnectionString(text);
    EXPECT_THAT(masked, AllOf(HasSubstr("***"), Not(HasSubstr("s3")), Not(HasSubstr("cret"))));
    EXPECT_THAT(errorOf([&, text = text] { (void)targetOf(text); }),
                AllOf(Not(HasSubstr("s3")), Not(HasSubstr("cret"))));
  }
  EXPECT_EQ(basic::MaskedConnectionString(
                "Driver={A;B};Data Source=C:\\it's.db;Pwd=\"se;cret\"; password = y ;X=1"),
            "Driver={A;B};Data Source=C:\\it's.db;Pwd=***; password = *** ;X=1");
}

TEST(Providers, AreServedByTheDriversHere) {
  for (const auto& [text, parts] : std::vector<std::pair<const char*, std::vector<std::string>>>{
           {"Provider=SQLite;Data Source=:memory:;Mode=Read;Prompt=4;OLE DB Services=-1;Location=x",
            {"Driver={SQLite3};", "Database=:memory:;", "NoCreat=1;"}},
           {"Provider=PostgreSQL OLE DB Provider;Data Source=db1;location=shop;User "
            "ID=me;Password=a;timeout=5",
            {"Driver={PostgreSQL Unicode};", "Servername=db1;", "Database=shop;", "UID=me;", "PWD=a;"}},
           {"Provider=PGNP.1;Data Source=db1;Initial Catalog=shop;Extended "
            "Properties=\"PORT=5433;SSLMODE=require\"",
            {"Servername=db1;", "Database=shop;", "Port=5433;", "SSLmode=require;"}},
           {"Provider=MySQL;Server=db1;Database=shop;User=me;Password=a",
            {"Driver={MariaDB Unicode};", "Server=db1;", "Database=shop;", "UID=me;", "PWD=a;"}},
           {"Provider=SQLOLEDB.1;Persist Security Info=False;Data Source=db1,1444;Initial Catalog=shop;User "
            "ID=sa;Password={x;y}",
            {"Driver={FreeTDS};", "Server=db1;", "Port=1444;", "Database=shop;", "UID=sa;", "PWD={x;y};",
             "ClientCharset=UTF-8;"}},
           {"Provider=MSOLEDBSQL19;Server=tcp:db1;Database=shop;UID=sa;PWD=a", {"Server=db1;", "Port=1433;"}},
           {"Provider=SQLNCLI11;Server=db1\\EXPRESS;Database=shop;UID=sa;PWD=a", {"Server=db1\\EXPRESS;"}},
           {"Driver={SQL Server};Server=(local);Database=shop;Uid=sa;Pwd=a",
            {"Driver={FreeTDS};", "Server=localhost;", "UID=sa;"}},
           {"driver={ODBC Driver 17 for SQL Server};Server=db1", {"Driver={FreeTDS};"}},
           {"Driver={MySQL ODBC 8.0 Unicode Driver};Server=db1", {"Driver={MariaDB Unicode};"}},
           {"Driver={PostgreSQL Unicode(x64)};Server=db1", {"Driver={PostgreSQL Unicode};", "Server=db1;"}},
           {"Driver={Microsoft Access Driver (*.mdb, *.accdb)};DBQ=/srv/shop.mdb",
            {"Driver={MDBTools};", "DBQ=/srv/shop.mdb;"}},
           {"PWD=a;UID=me;DSN=my shop", {"DSN=my shop;UID=me;PWD=a;"}},
           {"DSN=shop;PWD='a;b'", {"DSN=shop;PWD={a;b};"}},
           {"Driver={FreeTDS};Server=db1;Encrypt=yes;TrustServerCertificate=no;Persist Security Info=False",
            {"Encryption=require;"}},
           {"Driver={MySQL ODBC 3.51 Driver};Server=db1;User=me;Password={a;}}b};Option=3",
            {"UID=me;", "PWD={a;}}b};"}},
           {"Provider=MSDASQL.1;Data Source=shop;User ID=me;Password=a;Persist Security Info=True",
            {"DSN=shop;", "UID=me;", "PWD=a;"}},
           {"Provider=MSDASQL;Extended Properties=\"Driver={SQLite3};Database=/srv/a b.db\"",
            {"Driver={SQLite3};", "Database=/srv/a b.db;"}},
       }) {
    SCOPED_TRACE(text);
    const std::string odbc = targetOf(text).odbcText;
    for (const std::string& part : parts) EXPECT_THAT(odbc, HasSubstr(part));
    for (const char* oleDb : {"Provider", "Persist", "Initial", "Data Source", "Extended"}) {
      EXPECT_THAT(odbc, Not(HasSubstr(oleDb)));
    }
  }
}

TEST(Providers, SayWhatTheyDoNotServe) {
  for (const auto& [text, why] : Texts{
           {"Provider=MSDAORA;Data Source=x;Password=s3cret", "'MSDAORA'"},
           {"Provider=MSDAORA", "odbc-mdbtools"},
           {"Provider=MSDAORA", "libsqliteodbc"},
           {"Driver={Oracle in XE};DBQ=x;PWD=s3cret", "No ODBC driver is registered as 'Oracle in XE'"},
           {"Provider=SQLOLEDB;Data Source=x;Integrated Security=SSPI", "Windows account"},
           {"Driver={SQL Server};Server=x;Trusted_Connection=yes", "Windows account"},
           {"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=x.xlsx;Extended Properties=\"Excel 12.0;HDR=YES\"",
            "worksheets"},
           {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/nowhere.mdb;Jet OLEDB:Database Password=s3cret",
            "/nowhere.mdb does not exist"},
           {"Provider=SQLite;Data Source=/", "is not a file"},
           {"Provider=SQLite", "Data Source"},
           {"Server=x;Database=y;PWD=s3cret", "names no Provider, Driver, DSN or FILEDSN"},
           {"DSN=x;Connect Timeout=soon", "'soon'"},
           // Values that the driver would split.
           {"Driver={SQLite3};Database=x;PWD={s3;LoadExt=s3cret}", "'PWD'"},
           {"Provider=SQLite;Data Source=:memory:;Password={{s3cret}", "'PWD'"},
           {"Driver={MDBTools};DBQ='x;y'", "'DBQ'"},
           {"Driver={FreeTDS};Server=x;PWD='s3};DumpFile=s3cret'", "'PWD'"},
           {"DSN={x;Driver=y}", "'DSN'"},
           {"DSN=unknown;PWD='s3;Server=s3cret'", "'PWD'"},
       }) {
    EXPECT_THAT(errorOf([&, text = text] { (void)targetOf(text); }),
                AllOf(HasSubstr(why), Not(HasSubstr("s3cret"))))
        << text;
  }
}

TEST(Providers, TakeOnlyWhatTheyKnowToBeHarmless) {
  const std::string sqlite = "Driver={SQLite3};Database=x.db;";
  const std::string tds = "Provider=SQLOLEDB;Data Source=x;";
  const std::string postgres = "Provider=PostgreSQL;Server=x;";
  const std::string maria = "Driver={MariaDB Unicode};Server=x;";
  for (const auto& [text, named] : std::vector<std::pair<std::string, const char*>>{
           {"Driver=/tmp/x.so", "'/tmp/x.so'"},
           {"Provider=MSDASQL;Extended Properties='Driver=x.so'", "'x.so'"},
           {sqlite + "LoadExt=/tmp/x.so", "'LoadExt'"},
           {sqlite + "tracefile=/tmp/x", "'tracefile'"},
           {sqlite + "SAVEFILE=/tmp/x", "'SAVEFILE'"},
           {sqlite + "JournalMode=OFF", "'JournalMode'"},
           {sqlite + "DSN=x", "both a Driver and a DSN"},
           {sqlite + "a==b=c", "'a=b'"},
           {"Driver={SQLite3};Database=FILE:/srv/x.db?mode=rwc", "not an address"},
           {"DSN=x;Database=file:x.db", "not an address"},
           {"Provider=SQLite;Data Source=:memory:;FILEDSN=x", "'FILEDSN'"},
           {tds + "DumpFile=/tmp/x", "'DumpFile'"},
           {tds + "AttachDbFilename=x", "'AttachDbFilename'"},
           {tds + "ClientCharset=../../tmp/x", "'../../tmp/x'"},
           {tds + "Extended Properties='DebugFlags=1'", "'DebugFlags'"},
           {postgres + "pqopt={sslkey=/tmp/x}", "'pqopt'"},
           {postgres + "ConnSettings=DROP", "'ConnSettings'"},
           {postgres + "Logdir=/tmp", "'Logdir'"},
           {maria + "INITSTMT={DROP TABLE x}", "'INITSTMT'"},
           {maria + "PLUGIN_DIR=/tmp", "'PLUGIN_DIR'"},
           {maria + "SSLKEY=/tmp/x", "'SSLKEY'"},
           {maria + "USE_MYCNF=1", "'USE_MYCNF'"},
           {"DSN=x;Servername=evil", "'Servername'"},
           {"DSN=x;Server=evil", "'Server'"},
           {"DSN=x;Port=1", "'Port'"},
           {"DSN=x;DMConnAttr=[106]={/tmp/x.so}", "'DMConnAttr'"},
           {"FILEDSN=/nowhere/x", "/nowhere/x.dsn"},
       }) {
    EXPECT_THAT(errorOf([&, text = text] { (void)targetOf(text); }), HasSubstr(named)) << text;
  }
}

TEST(Providers, HaveTheirFilesTranslated) {
  const auto translate = [](std::string_view path) { return "/proc/self/" + std::string(path.substr(3)); };
  for (const auto& [text, part] : Texts{
           {"Provider=SQLite;Data Source=C:\\status", "Database=/proc/self/status;"},
           {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\status", "DBQ=/proc/self/status;"},
           {"Driver={SQLite3};Database=C:\\no", "Database=/proc/self/no;"},
           {"Driver={Microsoft Access Driver (*.mdb)};DBQ=C:\\x.mdb", "DBQ=/proc/self/x.mdb;"},
           {"Provider=SQLite;Data Source=:memory:", "Database=:memory:;"},
           {"Provider=PostgreSQL;Server=C:\\x;Database=C:\\y", "Database=C:\\y;"},
       }) {
    EXPECT_THAT(targetOf(text, translate).odbcText, HasSubstr(part)) << text;
  }
}

/// Of whose drives nothing answers.
class SilentDrives final : public host::Drives {
 public:
  [[nodiscard]] bool IsLocal(const std::string& path) const override { return !path.starts_with("/far/"); }
  void Ask(const std::string& path, Work) override {
    throw basic::Error(basic::AdapterError, "drives", path + " does not answer");
  }
  [[nodiscard]] bool AskBriefly(const std::string&, std::shared_ptr<void>&, Work) override { return false; }
};

TEST(Providers, AskForFilesByWayOfTheirDrives) {
  SilentDrives drives;
  host::Services services;
  services.drives = &drives;
  host::Use(services);
  for (const auto& [text, file] :
       Texts{{"Provider=SQLite;Data Source=/far/stock.db", "/far/stock.db"},
             {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/far/stock.mdb", "/far/stock.mdb"},
             {"FILEDSN=/far/stock", "/far/stock.dsn"}}) {
    EXPECT_EQ(errorOf([&, text = text] { (void)targetOf(text); }), file + std::string(" does not answer"));
  }
  host::Use({});
}

TEST(Providers, TakeTimeoutsAndCredentials) {
  const Target target = targetOf(
      "Driver={MariaDB Unicode};UID=me;PWD=a;Connect Timeout=3;Command Timeout=0;Extended Properties='PWD=c'",
      {}, "you", "b;");
  EXPECT_EQ(target.connectTimeout.count(), 3);
  EXPECT_EQ(target.commandTimeout.count(), 0);
  EXPECT_THAT(target.odbcText,
              AllOf(HasSubstr("UID=you;"), HasSubstr("PWD={b;};"), Not(HasSubstr("imeout"))));
  EXPECT_THAT(target.secrets, testing::UnorderedElementsAre("a", "b;", "c", "PWD=c"));
}

TEST(TableName, IsQuotedPartByPart) {
  for (const auto& [name, quoted] : Texts{{"Stock", "\"Stock\""},
                                          {" my stock ", "\"my stock\""},
                                          {"dbo.Stock", "\"dbo\".\"Stock\""},
                                          {"[my shop].[a.b]", "\"my shop\".\"a.b\""},
                                          {"`a``b`.c", "\"a`b\".\"c\""},
                                          {"\"a\"\"b\"", "\"a\"\"b\""},
                                          {"we\"ird", "\"we\"\"ird\""},
                                          {"\"a\" b", "\"\"\"a\"\" b\""},
                                          {"x; DROP TABLE y", "\"x; DROP TABLE y\""}}) {
    EXPECT_EQ(quotedTableName(name, "\""), quoted);
  }
  EXPECT_EQ(quotedTableName("a b", ""), "a b");
}

TEST(TableName, IsNoStatement) {
  for (const char* statement :
       {"SELECT 1", "  select\n*", "(SELECT 1)", "WITH a AS (SELECT 1) SELECT * FROM a", "EXEC dbo.list",
        "{call list}", "-- all\nSELECT 1", "SELECT(1)", "PRAGMA table_list"}) {
    EXPECT_TRUE(isStatement(statement)) << statement;
  }
  for (const char* name : {"", "Stock", "select", "Selection list", "values.x", "update_log", "my stock"}) {
    EXPECT_FALSE(isStatement(name)) << name;
  }
}

TEST(Factory, TellsWhatThisMachineOpens) {
  std::string found;
  for (const ADODB::Provider& provider : Factory().Providers()) {
    EXPECT_EQ(provider.Missing, "") << provider.Name;
    found += provider.Name + (provider.IsFile ? " (file)" : "") + "; ";
    // What it offers is what is taken.
    if (provider.IsFile) continue;
    EXPECT_NO_THROW((void)targetOf("Provider=" + provider.Name + ";Data Source=x")) << provider.Name;
  }
  EXPECT_EQ(found, "SQLite (file); PostgreSQL; MariaDB; MSOLEDBSQL; Microsoft.ACE.OLEDB.12.0 (file); ");
  EXPECT_THAT(Factory().DataSources(), testing::ElementsAre("shop"));
}

}  // namespace
}  // namespace ado::test
