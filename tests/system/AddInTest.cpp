// The add-in's life in its host and the host's events.

#include <gtest/gtest.h>

#include "addin/Connect.h"
#include "addin/modDebug.h"
#include "addin/modErrors.h"
#include "addin/modGlobalFunctions.h"
#include "addin/modVersionSpecific.h"
#include "fakes/FakeDatabase.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"

namespace LF2000 {
namespace {

struct Entry final : AddInDesigner::AddIn {
  basic::Variant Property(std::string_view name) const override {
    if (name != "ProgId") fakes::Fail("no such property");
    return std::string("LF2000.Connect");
  }
};

struct AddInTest : testing::Test {
  fakes::Machine machine;
  std::shared_ptr<fakes::Application> host = std::make_shared<fakes::Application>();
  Connect connect;

  void Load() { connect.OnConnection(host, AddInDesigner::ConnectMode::Startup, std::make_shared<Entry>()); }
  std::string DebugLog() { return machine.files.files["/addin/lumenfold.dbg"].content; }

  /// A deck with one slide that shows the price of tea.
  std::shared_ptr<fakes::Presentation> Deck() {
    machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t3\n");
    auto deck = std::make_shared<fakes::Presentation>();
    deck->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"},
                         {"CORVANE DISPLAYTYPE", "1"}};
    fakes::Shape& shape = deck->Add().Add("p");
    shape.text = "x";
    shape.tags->items = {{"CORVANE COLUMN TYPE", "2"},
                         {"CORVANE COLUMN TAG", "001"},
                         {"CORVANE COLUMN COLUMNNAME", "Price"},
                         {"CORVANE COLUMN ROW", "1"}};
    return deck;
  }
};

TEST_F(AddInTest, LoadsAndUnloads) {
  machine.settings.info["Debug"] = "-1";
  Load();
  EXPECT_TRUE(connect.Connected());
  ASSERT_NE(connect.Application(), nullptr);
  EXPECT_NE(host->sink, nullptr);
  for (const char* line :
       {"Event        OnConnection\r\n", "Information  Corvane Lumenfold 2000\r\n", "Information  /addin\r\n",
        "Information  1.2.3\r\n", "Information  LF2000.Connect\r\n", "Information  Opening menu\r\n",
        "Variable     InstallationOK:True\r\n", "Variable     StartupFailure:False\r\n"}) {
    EXPECT_NE(DebugLog().find(line), std::string::npos) << line;
  }
  connect.OnDisconnection(AddInDesigner::RemoveMode::HostShutdown);
  EXPECT_EQ(connect.Application(), nullptr);
  EXPECT_EQ(host->sink, nullptr);
  EXPECT_TRUE(DebugLog().ends_with("Information  Program shut down.\r\n"));
}

TEST_F(AddInTest, ADebugSettingThatIsNoBooleanLeavesTheLogOff) {
  machine.settings.info["Debug"] = "maybe";
  Load();
  EXPECT_FALSE(modDebug::DebugOn);
  EXPECT_TRUE(machine.files.files.empty());
}

TEST_F(AddInTest, StaysInertInAnotherHost) {
  host->version = "10.0.1";
  Load();
  EXPECT_TRUE(modVersionSpecific::StartupFailure);
  EXPECT_EQ(connect.Application(), nullptr);
  EXPECT_EQ(host->sink, nullptr);
  EXPECT_TRUE(machine.messageBox.shown.empty());
  connect.OnDisconnection(AddInDesigner::RemoveMode::UserClosed);
  EXPECT_EQ(connect.Application(), nullptr);
}

TEST_F(AddInTest, SaysThatDataObjectsAreMissing) {
  struct NoAdo final : ADODB::Factory {
    std::shared_ptr<ADODB::Connection> CreateConnection() override { fakes::Fail("no ADO"); }
    std::shared_ptr<ADODB::Recordset> CreateRecordset() override { fakes::Fail("no ADO"); }
  } none;
  machine.UseAdo(&none);
  Load();
  ASSERT_EQ(machine.messageBox.shown.size(), 1U);
  EXPECT_EQ(machine.messageBox.shown[0].text, "Could not find Microsoft ActiveX Data Objects.");
  EXPECT_EQ(machine.messageBox.shown[0].style, 16);
  EXPECT_EQ(connect.Application(), nullptr);
}

TEST_F(AddInTest, OpeningFillsAndCountsAsSaved) {
  Load();
  const auto deck = Deck();
  deck->saved = false;
  host->sink->PresentationOpen(deck);
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "3");
  EXPECT_TRUE(deck->saved);
  EXPECT_NE(connect.Application()->Find(deck), nullptr);
  host->sink->PresentationClose(deck);
  EXPECT_EQ(connect.Application()->Find(deck), nullptr);
}

TEST_F(AddInTest, SavingStoresNoLiveValues) {
  Load();
  const auto deck = Deck();
  host->sink->PresentationSave(deck);
  EXPECT_EQ(deck->saves, 0);
  host->sink->PresentationOpen(deck);
  std::string stored;
  deck->onSave = [&] { stored = deck->slides[0]->shapes[0]->text; };
  deck->saved = false;
  host->sink->PresentationSave(deck);
  EXPECT_EQ(stored, " ");
  EXPECT_EQ(deck->saves, 1);
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "3");
  EXPECT_TRUE(deck->saved);

  modGlobalFunctions::OfflineGenerationActive = true;
  host->sink->PresentationSave(deck);
  EXPECT_EQ(deck->saves, 1);
}

TEST_F(AddInTest, AShowRestoresThePresentationAtItsEnd) {
  Load();
  const auto deck = Deck();
  host->sink->PresentationOpen(deck);
  deck->showType = PowerPoint::SlideShowType::Kiosk;
  deck->Add();
  const auto window = std::make_shared<fakes::Window>(deck);
  host->sink->SlideShowBegin(window);
  EXPECT_TRUE(modErrors::SlideShowRunning);
  EXPECT_EQ(window->pointer, PowerPoint::SlideShowPointerType::AlwaysHidden);
  ASSERT_NE(connect.Application()->Runtime(), nullptr);
  EXPECT_EQ(machine.meter.log.front(), "show Opening presentation 1");

  deck->slides[1]->transition->hidden = true;
  deck->saved = false;
  host->sink->SlideShowEnd(deck);
  EXPECT_FALSE(modErrors::SlideShowRunning);
  EXPECT_FALSE(deck->slides[1]->transition->hidden);
  EXPECT_TRUE(deck->saved);
  EXPECT_EQ(connect.Application()->Runtime(), nullptr);
  EXPECT_TRUE(machine.messageBox.shown.empty());
  host->sink->SlideShowNextSlide(window);
}

TEST_F(AddInTest, AnUnlinkedShowHasNoRuntime) {
  Load();
  const auto deck = std::make_shared<fakes::Presentation>();
  deck->Add();
  deck->showType = PowerPoint::SlideShowType::Kiosk;
  const auto window = std::make_shared<fakes::Window>(deck);
  host->sink->SlideShowBegin(window);
  EXPECT_EQ(connect.Application()->Runtime(), nullptr);
  EXPECT_EQ(window->pointer, PowerPoint::SlideShowPointerType::AutoArrow);
  host->sink->SlideShowEnd(deck);
}

TEST_F(AddInTest, ErrorsOfAShowAreOfferedAtItsEnd) {
  Load();
  const auto deck = Deck();
  for (const char* hide : {"", "1", " 1"}) {
    machine.settings.info["HideMsgBoxErrorsDuringPresentation"] = hide;
    machine.messageBox.shown.clear();
    machine.shell.executed.clear();
    const auto window = std::make_shared<fakes::Window>(deck);
    host->sink->SlideShowBegin(window);
    EXPECT_FALSE(modErrors::ErrorsOccurred);
    modErrors::WriteErrorLog("something failed");
    host->sink->SlideShowEnd(deck);
    const bool asked = std::string_view(hide) != "1";
    ASSERT_EQ(machine.messageBox.shown.size(), asked ? 1U : 0U) << hide;
    EXPECT_EQ(machine.shell.executed.size(), asked ? 1U : 0U);
    if (asked) {
      EXPECT_EQ(machine.messageBox.shown[0].text,
                "There were errors encountered during the presentation. Do you want to open the log file?");
      EXPECT_EQ(machine.messageBox.shown[0].style, 52);
    }
  }
}

}  // namespace
}  // namespace LF2000
