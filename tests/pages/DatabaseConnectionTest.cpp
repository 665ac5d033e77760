// The dialog of databases: its two views of a connection string, its lists and its passwords.

#include <gmock/gmock.h>

#include "fakes/FakeDatabase.h"
#include "pages/ConnectionDialogs.h"

namespace LF2000::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* Stored =
    "1|Stock|Provider=PostgreSQL;Server=db1;Database=shop;User ID=pos;Password=s3cret|Prices||5000|";

struct DatabaseConnectionTest : ConnectionDialogs {
  fakes::Database database;

  DatabaseConnectionTest() {
    machine.UseAdo(&database);
    database.rows = {{"Rye", "4.80"}};
    database.tables = {{"plant", {"Line", "Rate"}}, {"stops", {"Cause"}}};
    machine.loop.onDoEvents = [this] {
      machine.loop.Advance(100);
      database.Progress();
    };
  }

  /// Everything that a view could show of the form.
  [[nodiscard]] std::string AllTexts() const {
    std::string all;
    for (const auto& control : view.Top().Controls()) {
      for (const auto& [name, value] : control->Properties()) {
        if (const auto* text = std::get_if<std::string>(&value)) all += name + "=" + *text + "\n";
      }
    }
    return all;
  }
  [[nodiscard]] std::string ConnectionStringOf(const std::string& number) const {
    return basic::Split(Tag(number), '|').at(2);
  }
};

TEST_F(DatabaseConnectionTest, ADatabaseFileIsFilledIn) {
  Load({});
  OpenNew(ConnectionKind::Database, "/decks/plant.db");
  EXPECT_EQ(view.Text("txtDescription"), "plant");
  EXPECT_EQ(view.Text("cmbProvider"), "SQLite");
  EXPECT_FALSE(view.Visible("txtServer"));
  EXPECT_FALSE(view.Visible("txtPassword"));
  EXPECT_EQ(view.focused.back(), "cmdOK");
  EXPECT_THAT(view.Items("cmbTable"), ElementsAre("plant", "stops"));
  EXPECT_EQ(view.Text("txtSQL"), "plant");
  EXPECT_EQ(view.Text("lblColumns"), "Columns: Line, Rate");
  EXPECT_THAT(view.Text("lblTest"), HasSubstr("Read 1 row, 2 columns"));
  view.Click("cmdOK");
  EXPECT_EQ(Tag("001"), "1|plant|Provider=SQLite;Data Source=plant.db|plant||1000|");
}

TEST_F(DatabaseConnectionTest, PartsAndTextAreTwoViewsOfOneValue) {
  Load({});
  database.dataSources = {"shop"};
  OpenNew(ConnectionKind::Database);
  EXPECT_THAT(view.Items("cmbProvider"), ElementsAre("Data source shop", "SQLite", "PostgreSQL",
                                                     "MariaDB and MySQL", "As the connection string says"));
  EXPECT_THAT(view.Choose("cmbProvider", "MariaDB and MySQL"), HasSubstr("does not offer"));
  view.Choose("cmbProvider", "PostgreSQL");
  view.Set("txtServer", "db};Server=evil");
  view.Set("txtPort", "5433");
  view.Set("txtDatabase", "shop");
  view.Set("txtUser", "pos");
  EXPECT_EQ(view.Text("txtConnectionString"),
            "Provider=PostgreSQL;Server={db}};Server=evil};Port={5433};Database={shop};User ID={pos}");
  view.Set("txtPort", "");
  view.Set("txtServer", "db2");
  EXPECT_EQ(view.Text("txtConnectionString"),
            "Provider=PostgreSQL;Server={db2};Database={shop};User ID={pos}");
  // The text wins, and keeps what is no part.
  view.Set("txtConnectionString", "Provider=PostgreSQL;SSLmode=require;Server=db3;UID=x");
  EXPECT_EQ(view.Text("txtServer"), "db3");
  EXPECT_EQ(view.Text("txtUser"), "x");
  view.Set("txtUser", "y");
  EXPECT_EQ(view.Text("txtConnectionString"), "Provider=PostgreSQL;SSLmode=require;Server=db3;UID={y}");
  view.Choose("cmbProvider", "Data source shop");
  EXPECT_FALSE(view.Visible("txtServer"));
  EXPECT_EQ(view.Text("txtConnectionString"), "DSN={shop};UID={y}");
  view.Set("txtConnectionString", "Driver={Some};Server=a");
  EXPECT_EQ(view.Text("cmbProvider"), "As the connection string says");
  EXPECT_FALSE(view.Visible("txtUser"));
}

TEST_F(DatabaseConnectionTest, ComplainsAboutWhatMustNotBeStored) {
  Load({});
  OpenNew(ConnectionKind::Database);
  view.Set("txtDescription", "Stock");
  struct Case {
    const char* string;
    const char* sql;
    const char* rate;
    const char* complaint;
  };
  const Case cases[] = {
      {"", "plant", "0", "txtConnectionString: Choose the kind of database, or type a connection string."},
      {"DSN=a\tb", "plant", "0", "txtConnectionString: What is stored in a presentation cannot hold a TAB."},
      {"DSN=a", " \n", "0",
       "txtSQL: Say what to read of the database: a SELECT statement, or the name of a table."},
      {"DSN=a", "SELECT\tx", "0", "txtSQL: What is stored in a presentation cannot hold a TAB."},
      {"DSN=a", "plant", "", "txtRefreshRate: The refresh rate is a number of milliseconds, 0 or more."},
      {"DSN=a", "plant", "soon", "txtRefreshRate: The refresh rate is a number of milliseconds, 0 or more."},
      {"DSN=a", "plant", "-1", "txtRefreshRate: The refresh rate is a number of milliseconds, 0 or more."},
      {"DSN=a", "plant", "1e300", "txtRefreshRate: The refresh rate is a number of milliseconds, 0 or more."},
  };
  for (const Case& each : cases) {
    view.Set("txtConnectionString", each.string);
    view.Set("txtSQL", each.sql);
    view.Set("txtRefreshRate", each.rate);
    view.Click("cmdOK");
    EXPECT_EQ(LastComplaint(), each.complaint);
  }
  EXPECT_TRUE(presentation->Connections().empty());
  view.Set("txtSQL", "SELECT\nLine FROM plant");
  view.Set("txtRefreshRate", "999");
  view.Step("udRefreshRate", 1);
  view.Click("cmdOK");
  EXPECT_EQ(Tag("001"), "1|Stock|DSN=a|SELECT Line FROM plant||1000|");
}

TEST_F(DatabaseConnectionTest, AStoredPasswordIsNeverShownAndStays) {
  Load({Stored});
  OpenExisting("001");
  EXPECT_THAT(AllTexts(), Not(HasSubstr("s3cret")));
  EXPECT_EQ(view.Text("txtConnectionString"), "Provider=PostgreSQL;Server=db1;Database=shop;User ID=pos");
  EXPECT_EQ(view.Property("txtPassword", "Placeholder"), "set");
  view.Click("cmdTest");
  machine.RunJobs();
  EXPECT_THAT(database.log, testing::Contains(HasSubstr("Password=s3cret")));
  view.Set("txtSQL", "Offers");
  view.Click("cmdOK");
  EXPECT_EQ(Tag("001"), basic::Replace(Stored, "Prices", "Offers"));

  // A longer time-out sends it nowhere else.
  OpenExisting("001");
  view.Set("txtConnectionString",
           "Provider=PostgreSQL;Server=db1;Database=shop;User ID=pos;Connect Timeout=60");
  view.Click("cmdOK");
  EXPECT_EQ(ConnectionStringOf("001"),
            "Provider=PostgreSQL;Server=db1;Database=shop;User ID=pos;Connect Timeout=60;Password=s3cret");
}

TEST_F(DatabaseConnectionTest, AStoredPasswordGoesToNoOtherPlace) {
  Load({Stored});
  const char* others[] = {"Provider=PostgreSQL;Server=evil;Database=shop;User ID=pos",
                          "Provider=PostgreSQL;Server=db1;Port=1;Database=shop;User ID=pos",
                          "Provider=PostgreSQL;Server=db1;Database=shop;User ID=pos;Host=evil",
                          "Provider=PostgreSQL;Server=db1;Database=shop;User ID=root",
                          "Provider=PostgreSQL;Server=db1;Database=other;User ID=pos",
                          "Provider=MariaDB;Server=db1;Database=shop;User ID=pos",
                          "Provider=PostgreSQL;Server=db1;Database=shop;User ID=pos;SSLmode=disable",
                          ""};
  for (const char* other : others) {
    OpenExisting("001");
    database.log.clear();
    view.complaints.clear();
    view.Set("txtConnectionString", other);
    for (const char* button : {"cmdTest", "cmdOK"}) {
      SCOPED_TRACE(std::string(other) + " " + button);
      view.complaints.clear();
      view.Click(button);
      machine.RunJobs();
      const bool isGone = *other == '\0';
      EXPECT_EQ(LastComplaint(),
                isGone ? "txtConnectionString: Choose the kind of database, or type a connection string."
                       : "txtPassword: Enter the password for the new server.");
    }
    view.DropDown("cmbTable");
    machine.RunJobs();
    EXPECT_THAT(database.log, Not(testing::Contains(HasSubstr("s3cret"))));
    while (!view.IsEmpty()) view.Click("cmdCancel");
  }
  EXPECT_EQ(Tag("001"), Stored);

  OpenExisting("001");
  view.Set("txtServer", "db2");
  view.Click("cmdOK");
  view.Set("txtPassword", "n}ew");
  view.Click("cmdOK");
  EXPECT_EQ(ConnectionStringOf("001"),
            "Provider=PostgreSQL;Server={db2};Database=shop;User ID=pos;Password={n}}ew}");
}

TEST_F(DatabaseConnectionTest, APasswordIsReplacedRemovedOrKept) {
  Load({Stored});
  const std::string rest = "Provider=PostgreSQL;Server=db1;Database=shop;User ID=pos";
  OpenExisting("001");
  EXPECT_THAT(view.Set("txtPassword", "x"), HasSubstr("Press Replace"));
  view.Click("cmdReplacePassword");
  view.Set("txtPassword", "x");
  view.Click("cmdReplacePassword");  // keeps the one that is set
  view.Click("cmdOK");
  EXPECT_EQ(ConnectionStringOf("001"), rest + ";Password=s3cret");
  OpenExisting("001");
  view.Click("cmdReplacePassword");
  view.Set("txtPassword", "new");
  view.Click("cmdOK");
  EXPECT_EQ(ConnectionStringOf("001"), rest + ";Password={new}");
  OpenExisting("001");
  view.Click("cmdReplacePassword");
  view.Click("cmdOK");
  EXPECT_EQ(LastComplaint(), "txtPassword: Enter the new password, or press Remove.");
  view.Click("cmdRemovePassword");
  view.Click("cmdOK");
  EXPECT_EQ(ConnectionStringOf("001"), rest);

  // Typed into the text it leaves the text with the cursor.
  OpenExisting("001");
  view.Set("txtConnectionString", rest + ";Password=typed");
  view.Leave("txtConnectionString");
  EXPECT_EQ(view.Text("txtConnectionString"), rest);
  EXPECT_THAT(AllTexts(), Not(HasSubstr("typed")));
  view.Click("cmdOK");
  EXPECT_EQ(ConnectionStringOf("001"), rest + ";Password=typed");
}

TEST_F(DatabaseConnectionTest, WhatCannotBeReadForCertainIsWithheldWhole) {
  for (const char* string : {"Provider=X;Data Source=a;Extended Properties=\"UID=u;PWD=s3cret\"",
                             "Server=a;Password=\"s3cret;Database=x"}) {
    Load({"1|Stock|" + std::string(string) + "|Prices||5000|"});
    OpenExisting("001");
    EXPECT_EQ(view.Text("txtConnectionString"), "");
    EXPECT_THAT(AllTexts(), Not(HasSubstr("s3cret")));
    view.Set("txtSQL", "Offers");
    view.Click("cmdOK");
    EXPECT_EQ(ConnectionStringOf("001"), string);
    OpenExisting("001");
    view.Set("txtConnectionString", "DSN=other");
    view.Click("cmdOK");
    EXPECT_EQ(LastComplaint(), "txtPassword: Enter the password for the new server.");
    view.Click("cmdCancel");
  }
}

TEST_F(DatabaseConnectionTest, AnAnswerForOtherSettingsIsNotHeard) {
  Load({});
  OpenNew(ConnectionKind::Database);
  view.Set("txtConnectionString", "DSN=a");
  view.DropDown("cmbTable");
  view.Set("txtConnectionString", "DSN=b");
  machine.RunJobs();
  EXPECT_TRUE(view.Items("cmbTable").empty());
  view.DropDown("cmbTable");
  machine.RunJobs();
  EXPECT_THAT(view.Items("cmbTable"), ElementsAre("plant", "stops"));
  view.Choose("cmbTable", "stops");
  machine.RunJobs();
  EXPECT_EQ(view.Text("txtSQL"), "stops");
  EXPECT_EQ(view.Text("lblColumns"), "Columns: Cause");
  database.down = true;
  view.Set("txtConnectionString", "DSN=c");
  view.DropDown("cmbTable");
  machine.RunJobs();
  EXPECT_EQ(view.Property("cmbTable", "ListProblem"), "server down");
}

TEST_F(DatabaseConnectionTest, ATestTellsTheTimeAndGivesUp) {
  Load({Stored});
  OpenExisting("001");
  database.ticksToOpen = 1000000;
  std::vector<std::string> told;
  machine.loop.onDoEvents = [&] {
    machine.loop.Advance(100);
    if (told.empty() || told.back() != view.Text("lblTest")) told.push_back(view.Text("lblTest"));
  };
  view.Click("cmdTest");
  machine.RunJobs();
  EXPECT_THAT(told, testing::Contains("Connecting to Stock\u2026 0:07, gives up at 0:15"));
  EXPECT_EQ(view.Text("lblTest"), "There was no answer within 15 seconds.");

  machine.loop.onDoEvents = [&] {
    machine.loop.Advance(100);
    if (view.Property("cmdTest", "Caption") == "Cancel") view.Click("cmdTest");
  };
  view.Click("cmdTest");
  machine.RunJobs();
  EXPECT_EQ(view.Text("lblTest"), "Cancelled.");
}

}  // namespace
}  // namespace LF2000::test
