// Worksheet ranges as connections, and the Excel that the system keeps for them.

#include <gtest/gtest.h>

#include "addin/Connect.h"
#include "addin/support/modGlobalFunctions.h"
#include "connections/clsConnection.h"
#include "fakes/FakeExcel.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "fakes/Passage.h"
#include "support/ErrorOf.h"

namespace LF2000 {
namespace {

using modGlobalFunctions::ExcelState;
using modGlobalFunctions::ExcelStatus;
using support::failureOf;

struct ExcelTest : testing::Test {
  fakes::Machine machine;
  fakes::ExcelProgram excel;
  clsConnection connection;
  bool noValue = false;

  ExcelTest() {
    machine.UseExcel(&excel);
    machine.files.Write("/decks/book.xlsx", "");
    excel.sheets = {{"First", {{{"Only"}}, {{"first"}}}},
                    {"Sheet1",
                     {{{"Name"}, {""}, {"Price"}},
                      {{"Tea"}, {"green\nloose"}, {"", 2.5, "0.00"}},
                      {{" "}, {""}, {""}},
                      {{"Milk"}, {""}, {"1"}},
                      {{""}, {"  "}, {""}},
                      {{""}, {""}, {""}}}}};
  }
  void Open(const std::string& sheet = "Sheet1", bool header = true) {
    connection.ActivePresentationName("/decks/board.pptx");
    connection.TagString("2\tTargets\tbook.xlsx\t" + sheet + "\t" + (header ? "-1" : "0") + "\tB3:D9\t");
    connection.OpenConnection();
    connection.OpenRecordset();
  }
  std::string Value(double row, const char* column) {
    return connection.GetValueDatabase(row, column, 1, false, noValue);
  }
};

TEST_F(ExcelTest, ARangeBecomesARecordset) {
  Open();
  EXPECT_EQ(connection.Columns(), (std::vector<std::string>{"", "Name", "C", "Price"}));
  EXPECT_EQ(connection.RecordCount(), 3);  // trailing rows without data are gone, the one between stays
  EXPECT_EQ(Value(1, "C"), "green\r\nloose");
  EXPECT_EQ(Value(1, "Price"), "2.50");
  EXPECT_EQ(Value(2, "Name"), " ");
  EXPECT_EQ(Value(3, "Name"), "Milk");
  EXPECT_EQ(excel.opened, excel.closed);
  EXPECT_TRUE(excel.readOnly);
  EXPECT_EQ(excel.updateLinks, 3) << "references to other workbooks are updated";

  Open("Sheet1", false);
  EXPECT_EQ(connection.Columns(), (std::vector<std::string>{"", "B", "C", "D"}));
  EXPECT_EQ(connection.RecordCount(), 4);
  Open("");
  EXPECT_EQ(connection.Columns(), (std::vector<std::string>{"", "Only"}));
}

TEST_F(ExcelTest, LongTextsAreCutAndARangeWithoutDataHasNoRows) {
  excel.sheets[0].second = {{{"Text"}}, {{std::string(5000, 'x')}}};
  Open("First");
  EXPECT_EQ(Value(1, "Text").size(), 4000U);
  excel.sheets[0].second = {{{"Text"}}, {{""}}, {{" "}}};
  Open("First");
  EXPECT_EQ(connection.RecordCount(), 0);
}

TEST_F(ExcelTest, FailuresSayWhatAndWhy) {
  excel.sheets[0].second = {{{"Name"}, {"Name"}}};
  EXPECT_EQ(failureOf([&] { Open("First"); }), "30 Duplicated column name 'Name' detected.");
  EXPECT_EQ(excel.opened, excel.closed);
  EXPECT_EQ(failureOf([&] { Open("Nowhere"); }),
            "26 Error while opening excel file Targets. \r\nno sheet Nowhere");
  connection.ConnectionSheet("Sheet1");
  connection.ConnectionRange("nonsense");
  connection.OpenConnection();
  EXPECT_EQ(failureOf([&] { connection.OpenRecordset(); }),
            "27 Error while reading excel file Targets. \r\nno such range");
  EXPECT_FALSE(connection.ConnectionReady());
}

TEST_F(ExcelTest, ABookInUseIsTriedAgainAndRequeriedWhenItChanged) {
  excel.failingOpens = 3;
  Open();
  EXPECT_EQ(excel.opened, 4);
  connection.Requery(false);
  EXPECT_EQ(excel.opened, 4);
  machine.files.files["/decks/book.xlsx"].date += 1;
  excel.sheets[1].second[1][0].text = "Coffee";
  connection.Requery(false);
  EXPECT_EQ(Value(1, "Name"), "Coffee");
  machine.files.files["/decks/book.xlsx"].date += 1;
  excel.failingOpens = 4;
  EXPECT_EQ(failureOf([&] { connection.Requery(false); }),
            "28 Error requerying excel file Targets. \r\nError while opening excel file Targets. \r\nthe "
            "file is in "
            "use");
  connection.Requery(false);
  EXPECT_EQ(Value(1, "Name"), "Coffee");
}

TEST_F(ExcelTest, WithoutExcelNothingOpens) {
  excel.installed = false;
  Open();
  EXPECT_FALSE(connection.ConnectionReady());
  EXPECT_EQ(connection.RecordCount(), 0);
  EXPECT_EQ(ExcelStatus(false, false), ExcelState::Unavailable);
}

TEST_F(ExcelTest, AnExcelThatIsThereButDoesNotStartIsReported) {
  excel.mostCreated = 1;  // the one that is created to look
  const std::string failure = failureOf([&] { Open(); });
  EXPECT_EQ(failure,
            "26 Error while opening excel file Targets. \r\nWhat reads workbooks could not be started.");
  EXPECT_FALSE(connection.ConnectionReady());
  excel.mostCreated = 9;
  Open();
  EXPECT_EQ(Value(1, "Name"), "Tea");
}

TEST_F(ExcelTest, WhatACellHidesIsWrittenByItsFormat) {
  excel.sheets[0].second = {{{"Text"}, {"", "net", "0;0;0;\"(\"@\")\""}},
                            {{"", basic::DateFrom(2026, 2, 3), "yyyy/mm"}, {"", "secret", ";;;"}},
                            {{"last"}, {""}}};
  Open("First");
  EXPECT_EQ(connection.Columns(), (std::vector<std::string>{"", "Text", "(net)"}));
  EXPECT_EQ(Value(1, "Text"), "2026/02");
  EXPECT_EQ(Value(1, "(net)"), "");
}

TEST_F(ExcelTest, ABookIsClosedWithItsConnection) {
  {
    clsConnection shortLived;
    shortLived.ActivePresentationName("/decks/board.pptx");
    shortLived.TagString("2\tTargets\tbook.xlsx\tSheet1\t-1\tB3:D9\t");
    shortLived.OpenConnection();
    EXPECT_EQ(excel.closed, 0);
  }
  EXPECT_EQ(excel.closed, 1);
}

TEST_F(ExcelTest, TheSystemKeepsOneExcelAndQuitsItUnlessItIsVisible) {
  for (const bool visible : {false, true}) {
    modGlobalFunctions::Reset();
    excel.visible = visible;
    excel.quits = 0;
    excel.created = 0;
    Connect connect;
    connect.OnConnection(handed(std::make_shared<fakes::Application>()), AddInDesigner::ConnectMode::Startup,
                         handed(std::make_shared<fakes::AddIn>()));
    Open();
    Open();
    EXPECT_EQ(excel.created, 2);  // one to look, one to keep
    EXPECT_TRUE(excel.ignoresRemoteRequests);
    connect.OnDisconnection(AddInDesigner::RemoveMode::HostShutdown);
    EXPECT_EQ(excel.quits, visible ? 0 : 1);
    EXPECT_FALSE(excel.ignoresRemoteRequests);
    EXPECT_EQ(modGlobalFunctions::CurrentExcelState, ExcelState::Unknown);
  }
}

}  // namespace
}  // namespace LF2000
