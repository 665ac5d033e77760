// One connection: its tag string, its answers, text files and databases.

#include <gtest/gtest.h>

#include "addin/support/modDebug.h"
#include "connections/clsConnection.h"
#include "fakes/FakeDatabase.h"
#include "fakes/FakeServices.h"
#include "support/ErrorOf.h"

namespace LF2000 {
namespace {

using support::failureOf;

constexpr const char* SalesTag = "0\tSales\tsales.txt\t-1\t";
constexpr const char* StockTag = "1\tStock\tDSN=stock\tSELECT * FROM Stock\t\t5000\t";

struct ConnectionTest : testing::Test {
  fakes::Machine machine;
  clsConnection connection;
  bool noValue = false;

  void Describe(const std::string& tag) {
    connection.ActivePresentationName("/decks/board.pptx");
    connection.ConnectionTagNumber("001");
    connection.TagString(tag);
  }
  void OpenSales(const std::string& content = "Name\tPrice\nTea\t3,50\nMilk\t\nRice\n") {
    machine.files.Write("/decks/sales.txt", content);
    Describe(SalesTag);
    connection.OpenConnection();
    connection.OpenRecordset();
  }
  std::string Value(double row, const char* column, bool markers = false) {
    noValue = false;
    return connection.GetValueDatabase(row, column, 1, markers, noValue);
  }
};

TEST_F(ConnectionTest, TagStringsRoundTrip) {
  for (const char* text :
       {SalesTag, StockTag, "2\tTargets\tbook.xls\tSheet1\t0\tA1:I10\t", "1\t\t\t\t\t0\t", "7\tOther\t"}) {
    clsConnection read;
    read.TagString(text);
    EXPECT_EQ(read.TagString(), text);
  }
  clsConnection read;
  read.TagString(" 0 \tA\tf\ttrue\textra\t");
  EXPECT_EQ(read.TagString(), "0\tA\tf\t-1\t");

  EXPECT_EQ(failureOf([&] { read.TagString("2\tName\tfile.txt"); }), "1 Error setting connection tag.");
  EXPECT_EQ(read.ConnectionType(), 2);
  EXPECT_EQ(read.ConnectionDescription(), "Name");
  EXPECT_EQ(read.ConnectionFileString(), "file.txt");
  for (const char* bad : {"", "x\tName\tf\t0\t", "0\tName\tf\tmaybe\t", "1\tN\tc\ts\tc\tfast\t"}) {
    EXPECT_EQ(failureOf([&] { read.TagString(bad); }), "1 Error setting connection tag.") << bad;
  }
}

TEST_F(ConnectionTest, ValuesAreReadByRowAndColumn) {
  OpenSales();
  EXPECT_EQ(connection.RecordCount(), 3);
  EXPECT_EQ(connection.Columns(), (std::vector<std::string>{"", "Name", "Price"}));
  EXPECT_EQ(Value(1, "price"), "3,50");
  EXPECT_FALSE(noValue);
  EXPECT_EQ(Value(3, "Name"), "Rice");
  EXPECT_EQ(Value(2, "Price"), "");
  EXPECT_TRUE(noValue);
  for (const double row : {0.0, -1.0, 4.0}) {
    EXPECT_EQ(Value(row, "Name"), "");
    EXPECT_TRUE(noValue);
  }
  EXPECT_EQ(failureOf([&] { (void)Value(1, "Colour"); }).substr(0, 60),
            "17 Error while retrieving value of column Colour of row 1.\r\n");
}

TEST_F(ConnectionTest, OtherRowsStandInForTheDataUntilItIsOpenedAnew) {
  OpenSales("Name\tPrice\nTea\t3,50\nCr\u00e8me\t4\nMilk\t12,50\n");
  connection.Preview(DataPreview::LongestTexts);
  EXPECT_EQ(Value(1, "Name"), "Cr\u00e8me");
  EXPECT_EQ(Value(3, "Price"), "12,50");
  EXPECT_EQ(connection.RecordCount(), 3);
  connection.Preview(DataPreview::NoRows);
  EXPECT_EQ(Value(1, "Name"), "");
  EXPECT_EQ(connection.RecordCount(), 0);
  EXPECT_EQ(connection.Columns(), (std::vector<std::string>{"", "Name", "Price"}));

  machine.files.Write("/decks/sales.txt", "Name\nSugar\n");
  EXPECT_TRUE(connection.Requery(false));
  EXPECT_EQ(connection.RecordCount(), 0);
  EXPECT_EQ(connection.Columns(), (std::vector<std::string>{"", "Name"}));
  connection.Preview(DataPreview::AsTheyAre);
  EXPECT_EQ(Value(1, "Name"), "Sugar");

  connection.Preview(DataPreview::NoRows);
  connection.OpenConnection();
  connection.OpenRecordset();
  EXPECT_EQ(Value(1, "Name"), "Sugar");
}

TEST_F(ConnectionTest, MarkersShowAtDesignTimeOnly) {
  OpenSales();
  EXPECT_EQ(Value(9, "Name", true), "");
  connection.DesignMode(true);
  EXPECT_EQ(Value(9, "Name", true), "[Row not available in current dataset]");
  EXPECT_TRUE(noValue);
  EXPECT_EQ(Value(3, "Price", true), "[Empty]");
  EXPECT_FALSE(noValue);
  EXPECT_EQ(Value(3, "Price", false), "");
  // What stands in for the data is seen as in a show.
  for (const DataPreview preview : {DataPreview::NoRows, DataPreview::LongestTexts}) {
    connection.Preview(preview);
    EXPECT_EQ(Value(9, "Name", true), "");
  }
}

TEST_F(ConnectionTest, ObjectNamesJoinFolderValueAndExtension) {
  OpenSales("File\nphoto\n");
  const auto name = [&](const char* folder, const char* extension) {
    return connection.GetValueObject(1, "File", folder, extension, 1, false, noValue);
  };
  EXPECT_EQ(name("C:\\pics", "jpg"), "C:\\pics\\photo.jpg");
  EXPECT_EQ(name("C:\\pics\\ ", "jpg"), "photo.jpg");
  EXPECT_EQ(name("", ""), "photo");
  EXPECT_EQ(connection.GetValueObject(5, "File", "C:\\pics", "jpg", 1, false, noValue), "");
}

TEST_F(ConnectionTest, AClosedConnectionAnswersNothing) {
  Describe(SalesTag);
  noValue = false;
  EXPECT_EQ(connection.GetValueDatabase(1, "Name", 1, true, noValue), "");
  EXPECT_FALSE(noValue);
  EXPECT_FALSE(connection.ConnectionReady());
  EXPECT_TRUE(connection.ConnectionTimedOut());
  EXPECT_EQ(connection.RecordCount(), 0);
  connection.ConnectionType(7);
  EXPECT_FALSE(connection.ConnectionReady() || connection.ConnectionTimedOut() ||
               connection.RecordsetReady() || connection.RecordsetTimedOut());
}

TEST_F(ConnectionTest, ALockedFileIsTriedThreeTimesAndOnceMore) {
  machine.files.files["/decks/sales.txt"] = {"Name\nTea\n", 46000, 2};
  Describe(SalesTag);
  connection.OpenConnection();
  EXPECT_EQ(machine.files.opens, 3);

  machine.files.files["/decks/sales.txt"].lockedAttempts = 9;
  EXPECT_EQ(failureOf([&] { connection.OpenConnection(); }),
            "3 Error while opening file Sales. \r\nPermission denied");
  EXPECT_EQ(machine.files.opens, 7);
  EXPECT_FALSE(connection.ConnectionReady());
}

TEST_F(ConnectionTest, AFileIsReadAgainOnlyWhenItChanged) {
  OpenSales();
  connection.Requery(false);
  EXPECT_EQ(machine.files.opens, 1);
  connection.Requery(true);
  EXPECT_EQ(machine.files.opens, 2);
  machine.files.Write("/decks/sales.txt", "Name\tPrice\nTea\t4\n");
  connection.Requery(false);
  EXPECT_EQ(Value(1, "Price"), "4");
}

TEST_F(ConnectionTest, AFileThatFailsLeavesTheDataAndComesBack) {
  OpenSales();
  const fakes::Files::File good = machine.files.files["/decks/sales.txt"];
  machine.files.files.clear();
  EXPECT_EQ(failureOf([&] { connection.Requery(false); }),
            "7 Error requerying file Sales. \r\nFile not found: /decks/sales.txt");
  EXPECT_EQ(Value(1, "Name"), "Tea");

  // Unreadable for a while, then back with the very same date.
  machine.files.files["/decks/sales.txt"] = good;
  machine.files.files["/decks/sales.txt"].lockedAttempts = 99;
  machine.files.files["/decks/sales.txt"].date += 1;
  EXPECT_NE(failureOf([&] { connection.Requery(false); }), "none");
  EXPECT_FALSE(connection.RecordsetReady());
  machine.files.files["/decks/sales.txt"] = good;
  connection.Requery(false);
  EXPECT_EQ(Value(1, "Name"), "Tea");

  // A bad header is reported, and the last values stand.
  machine.files.Write("/decks/sales.txt", "Name\tname\nTea\t4\n");
  EXPECT_EQ(failureOf([&] { connection.Requery(false); }).substr(0, 34),
            "7 Error requerying file Sales. \r\nE");
  EXPECT_EQ(Value(1, "Price"), "3,50");
}

TEST_F(ConnectionTest, DroppedFieldsAreSaidOnceInTheDebugLog) {
  modDebug::DebugOn = true;
  OpenSales("Name\tPrice\nTea\t1\t2\t3\nMilk\t1\t2\n");
  const std::string log = machine.files.files["/addin/lumenfold.dbg"].content;
  const std::size_t first = log.find("OpenDataFile:");
  ASSERT_NE(first, std::string::npos);
  EXPECT_EQ(log.find("OpenDataFile:", first + 1), std::string::npos);
}

struct DatabaseTest : ConnectionTest {
  fakes::Database database;
  DatabaseTest() {
    machine.UseAdo(&database);
    machine.loop.onDoEvents = [this] { database.Progress(); };
    database.rows = {{"Tea", "3"}};
  }
  void Open() {
    connection.OpenConnection();
    connection.OpenRecordset();
    connection.CloseConnection();
  }
};

TEST_F(DatabaseTest, OpensWaitsAndDetaches) {
  Describe(StockTag);
  EXPECT_TRUE(connection.ConnectionReady());
  database.ticksToOpen = 3;
  database.ticksToFetch = 5;
  Open();
  EXPECT_GE(machine.loop.doEvents, 5);
  EXPECT_EQ(database.log, (std::vector<std::string>{"open DSN=stock -1", "recordset SELECT * FROM Stock 16",
                                                    "detach", "close"}));
  EXPECT_EQ(Value(1, "Price"), "3");
}

TEST_F(DatabaseTest, OptionsFollowStatementAndProvider) {
  const struct {
    const char* string;
    const char* sql;
    const char* expected;
  } cases[] = {
      {"DSN=x", "  select * from t", "recordset   select * from t 16"},
      {"DSN=x", "Stock", "recordset Stock 512"},
      {"DSN=x", "SELECT", "recordset SELECT 512"},
      {"Provider=Microsoft.Project.OLEDB.9.0", "SELECT * FROM t", "recordset SELECT * FROM t -1"},
      {"Provider=Microsoft.Project.OLEDB.9.0", "Tasks", "recordset Tasks -1"},
  };
  for (const auto& c : cases) {
    database.log.clear();
    Describe(std::string("1\tD\t") + c.string + "\t" + c.sql + "\t\t0\t");
    Open();
    ASSERT_GE(database.log.size(), 2U);
    EXPECT_EQ(database.log[1], c.expected);
  }
}

TEST_F(DatabaseTest, RequeriesByRateAndForce) {
  Describe(StockTag);
  machine.clock.timerStart = 0;
  Open();
  const auto requeries = [&](bool forced) {
    database.log.clear();
    const bool asked = connection.Requery(forced);
    const auto count = std::count(database.log.begin(), database.log.end(), "requery -1");
    EXPECT_EQ(asked, count > 0);
    return count;
  };
  EXPECT_EQ(requeries(false), 0);
  EXPECT_EQ(requeries(true), 1);
  machine.loop.Advance(5001);
  EXPECT_EQ(requeries(false), 1);
  EXPECT_EQ(database.log,
            (std::vector<std::string>{"open DSN=stock -1", "attach", "requery -1", "detach", "close"}));
  EXPECT_EQ(requeries(false), 0);
  machine.loop.Advance(6000);
  EXPECT_EQ(requeries(true), 2);
  connection.DesignMode(true);
  machine.loop.Advance(6000);
  EXPECT_EQ(requeries(false), 0);
  EXPECT_EQ(requeries(true), 1);
}

TEST_F(DatabaseTest, AServerThatIsDownIsReportedAndRecoversByItself) {
  Describe(StockTag);
  database.down = true;
  EXPECT_EQ(failureOf([&] { connection.OpenConnection(); }),
            "4 Error while opening database Stock. \r\nserver down");
  EXPECT_FALSE(connection.RecordsetReady());
  EXPECT_TRUE(connection.ConnectionTimedOut());
  EXPECT_EQ(failureOf([&] { connection.Requery(true); }),
            "8 Error requerying database Stock. \r\nError while opening database Stock. \r\nserver down");
  database.down = false;
  connection.Requery(true);
  EXPECT_EQ(Value(1, "Name"), "Tea");
}

TEST_F(DatabaseTest, ARequeryThatFailsLeavesTheRowsAndNoOpenConnection) {
  Describe(StockTag);
  Open();
  database.tableIsGone = true;
  database.log.clear();
  EXPECT_EQ(failureOf([&] { connection.Requery(true); }),
            "8 Error requerying database Stock. \r\nno such table");
  EXPECT_EQ(database.log,
            (std::vector<std::string>{"open DSN=stock -1", "attach", "requery -1", "detach", "close"}));
  EXPECT_EQ(connection.Readings().Deliveries, 1U);
  EXPECT_EQ(Value(1, "Price"), "3");
}

TEST_F(DatabaseTest, AConnectionThatIsClosedWhileItOpensGivesUp) {
  Describe(StockTag);
  database.ticksToOpen = 1'000'000;
  machine.loop.onDoEvents = [this] { connection.CloseConnection(); };
  EXPECT_EQ(failureOf([&] { connection.OpenConnection(); }),
            "4 Error while opening database Stock. \r\nIt was closed while it was being opened.");
  machine.loop.onDoEvents = {};
  database.ticksToOpen = 0;
  database.onOpen = [this] { connection.CloseConnection(); };
  EXPECT_EQ(failureOf([&] { connection.OpenConnection(); }),
            "4 Error while opening database Stock. \r\nIt was closed while it was being opened.");
  EXPECT_FALSE(database.goneInUse);
}

TEST_F(DatabaseTest, ARecordsetThatIsClosedWhileItIsReadGivesUp) {
  Describe(StockTag);
  connection.OpenConnection();
  machine.loop.onDoEvents = [this] { connection.CloseRecordset(); };
  database.ticksToFetch = 2;
  EXPECT_EQ(failureOf([&] { connection.OpenRecordset(); }),
            "6 Error while reading database Stock. \r\nIt was closed while it was being read.");
  machine.loop.onDoEvents = {};
  database.ticksToFetch = 0;
  connection.OpenConnection();
  connection.OpenRecordset();
  machine.loop.onDoEvents = [this] { connection.CloseRecordset(); };
  database.ticksPerRequery = 2;
  EXPECT_EQ(failureOf([&] { connection.Requery(true); }),
            "8 Error requerying database Stock. \r\nIt was closed while it was being read.");
}

TEST(ColumnLettersTest, HaveTwoLettersAtMost) {
  const std::pair<std::int32_t, const char*> cases[] = {{0, "@"},   {1, "A"},    {26, "Z"},  {27, "AA"},
                                                        {52, "AZ"}, {702, "ZZ"}, {703, "[A"}};
  for (const auto& [number, letters] : cases) EXPECT_EQ(ColumnLetters(number), letters);
}

}  // namespace
}  // namespace LF2000
