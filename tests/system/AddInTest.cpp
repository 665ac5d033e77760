// The add-in's life in its host and the host's events.

#include <gtest/gtest.h>

#include <algorithm>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Strings.h"
#include "fakes/Entry.h"
#include "fakes/FakeDatabase.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"

namespace LF2000 {
namespace {

struct AddInTest : testing::Test {
  fakes::Machine machine;
  std::shared_ptr<fakes::Application> host = std::make_shared<fakes::Application>();
  std::shared_ptr<AddInDesigner::IDTExtensibility2> addIn;

  void Load() { fakes::load(addIn, host); }
  void Unload(AddInDesigner::RemoveMode mode) { addIn->OnDisconnection(mode); }
  /// Whether it runs: it hears the host's events.
  bool Runs() const { return host->sink != nullptr; }
  bool ShowRuns() const { return machine.loop.HasTimers(); }
  /// Whether it knows the presentation: it saves it then.
  bool Knows(const std::shared_ptr<fakes::Presentation>& presentation) const {
    const int before = presentation->saves;
    host->sink->PresentationSave(presentation);
    return presentation->saves > before;
  }
  std::string DebugLog() { return machine.files.files["/addin/lumenfold.dbg"].content; }

  /// A deck with one slide that shows the price of tea.
  std::shared_ptr<fakes::Presentation> Deck() {
    machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t3\n");
    auto deck = std::make_shared<fakes::Presentation>();
    deck->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"},
                         {"CORVANE DISPLAYTYPE", "1"}};
    deck->Add().AddField("p", 1).text = "x";
    return deck;
  }
};

TEST_F(AddInTest, LoadsAndUnloads) {
  machine.settings.info["Debug"] = "-1";
  Load();
  EXPECT_TRUE(Runs());
  addIn->OnStartupComplete();
  addIn->OnAddInsUpdate();
  addIn->OnBeginShutdown();
  Unload(AddInDesigner::RemoveMode::HostShutdown);
  EXPECT_FALSE(Runs());
  EXPECT_EQ(basic::Replace(DebugLog(), "2/3/2026 12:00:00 PM.000 ", ""),
            "Event        OnConnection\r\n"
            "Information  Corvane Lumenfold 2000\r\n"
            "Information  lumenfold\r\n"
            "Information  /addin\r\n"
            "Information  1.2.3\r\n"
            "Information  LF2000.Connect\r\n"
            "Information  InitHandler\r\n"
            "Information  InstallationOK\r\n"
            "Variable     InstallationOK:True\r\n"
            "Variable     StartupFailure:False\r\n"
            "Information  Opening menu\r\n"
            "Event        OnStartupComplete\r\n"
            "Event        OnAddInsUpdate\r\n"
            "Event        OnBeginShutdown\r\n"
            "Event        OnDisconnection\r\n"
            "Information  UnInitHandler\r\n"
            "Information  ExcelStatus:FalseFalse\r\n"
            "Information  unknown\r\n"
            "Information  excelunavailable\r\n"
            "Information  Program shut down.\r\n");
}

TEST_F(AddInTest, ADebugSettingThatIsNoBooleanLeavesTheLogOff) {
  machine.settings.info["Debug"] = "maybe";
  Load();
  EXPECT_TRUE(machine.files.files.empty());
}

TEST_F(AddInTest, StaysInertInAnotherHost) {
  for (const char* version : {"10.0.1", "90.1", "8", ""}) {
    host->version = version;
    Load();
    EXPECT_FALSE(Runs()) << version;
    EXPECT_TRUE(machine.messageBox.shown.empty());
    Unload(AddInDesigner::RemoveMode::UserClosed);
    EXPECT_FALSE(Runs()) << version;
  }
  host->version = "9";
  Load();
  EXPECT_TRUE(Runs());
}

TEST_F(AddInTest, RunsInVersionsThatTheUserAccepts) {
  const auto runs = [this](const char* version, const char* accepted) {
    host->version = version;
    machine.settings.info["AcceptedVersions"] = accepted;
    Load();
    const bool isThere = Runs();
    Unload(AddInDesigner::RemoveMode::UserClosed);
    return isThere;
  };
  EXPECT_TRUE(runs("16.0.1", "16"));
  EXPECT_TRUE(runs("14.0", "12, 14 ,16"));
  EXPECT_TRUE(runs("9.0", "16")) << "the list adds to it";
  EXPECT_FALSE(runs("15.0", "14,16"));
  EXPECT_FALSE(runs("1.0", "16"));
  EXPECT_FALSE(runs("16.0", " "));
  EXPECT_FALSE(runs("", ",")) << "no version at all is none of them";
}

TEST_F(AddInTest, SaysThatDataObjectsAreMissing) {
  struct NoAdo final : ADODB::Factory {
    std::vector<ADODB::Provider> Providers() const override { return {}; }
    std::vector<std::string> DataSources() const override { return {}; }
    std::shared_ptr<ADODB::Connection> CreateConnection() override { fakes::Fail("no ADO"); }
    std::shared_ptr<ADODB::Recordset> CreateRecordset() override { fakes::Fail("no ADO"); }
  } none;
  machine.UseAdo(&none);
  Load();
  ASSERT_EQ(machine.messageBox.shown.size(), 1U);
  EXPECT_EQ(machine.messageBox.shown[0].text, "Could not find Microsoft ActiveX Data Objects.");
  EXPECT_EQ(machine.messageBox.shown[0].style, 16);
  EXPECT_FALSE(Runs());
}

TEST_F(AddInTest, OpeningFillsAndCountsAsSaved) {
  Load();
  const auto deck = Deck();
  deck->saved = false;
  host->sink->PresentationOpen(deck);
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "3");
  EXPECT_TRUE(deck->saved);
  EXPECT_TRUE(Knows(deck));
  host->sink->PresentationClose(deck);
  EXPECT_FALSE(Knows(deck));
}

TEST_F(AddInTest, ANewPresentationIsKeptAndTheOnlyOneStartsTheListAfresh) {
  Load();
  const auto first = Deck();
  const auto second = Deck();
  const auto third = Deck();
  host->sink->PresentationOpen(first);
  host->openCount = 2;
  host->sink->NewPresentation(second);
  EXPECT_EQ(machine.loop.doEvents, 2);
  EXPECT_EQ(second->slides[0]->shapes[0]->text, "3");
  EXPECT_TRUE(Knows(first));
  EXPECT_TRUE(Knows(second));
  host->openCount = 1;
  host->sink->NewPresentation(third);
  EXPECT_FALSE(Knows(first));
  EXPECT_FALSE(Knows(second));
  EXPECT_TRUE(Knows(third));
}

TEST_F(AddInTest, WhatOffLineGenerationOpensIsLeftAlone) {
  machine.settings.info["Debug"] = "True";
  Load();
  const auto before = Deck();
  host->sink->PresentationOpen(before);
  ASSERT_NE(fakes::inside(*addIn)->Find(handed(before)), nullptr);
  modGlobalFunctions::OfflineGenerationActive = true;
  const auto deck = Deck();
  deck->saved = false;
  host->sink->PresentationOpen(deck);
  host->sink->NewPresentation(deck);
  EXPECT_EQ(fakes::inside(*addIn)->Find(handed(deck)), nullptr);
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "x");
  EXPECT_FALSE(deck->saved);
  EXPECT_TRUE(DebugLog().ends_with("Information  New presentation due to offline generation\r\n"));
  EXPECT_FALSE(Knows(before)) << "nor saved";
}

TEST_F(AddInTest, SavingStoresTheDisplayTypeAndNoLiveValues) {
  Load();
  const auto deck = Deck();
  EXPECT_FALSE(Knows(deck));
  deck->tags->items.back().second = "3";
  host->sink->PresentationOpen(deck);
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "Price");
  deck->tags->items.pop_back();  // the system knows it by now
  std::string stored;
  deck->onSave = [&] { stored = (*deck->tags)["CORVANE DISPLAYTYPE"] + deck->slides[0]->shapes[0]->text; };
  deck->saved = false;
  host->sink->PresentationSave(deck);
  EXPECT_EQ(stored, "3 ");
  EXPECT_EQ(deck->saves, 1);
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "Price");
  EXPECT_TRUE(deck->saved);
}

TEST_F(AddInTest, AShowRestoresThePresentationAtItsEnd) {
  Load();
  const auto deck = Deck();
  host->sink->PresentationOpen(deck);
  deck->Add();
  const auto window = std::make_shared<fakes::Window>(deck);
  for (const bool saved : {true, false}) {
    deck->saved = saved;
    host->sink->SlideShowBegin(window);
    ASSERT_TRUE(ShowRuns());

    deck->slides[1]->transition->hidden = true;
    deck->saved = !saved;
    host->sink->SlideShowEnd(deck);
    EXPECT_FALSE(ShowRuns());
    EXPECT_FALSE(deck->slides[1]->transition->hidden);
    EXPECT_EQ(deck->saved, saved);
    EXPECT_TRUE(machine.messageBox.shown.empty());
    host->sink->SlideShowNextSlide(window);
  }
}

TEST_F(AddInTest, OnlyAKioskShowHidesThePointer) {
  Load();
  const auto deck = Deck();
  using PowerPoint::SlideShowPointerType;
  for (const auto& [type, pointer] :
       {std::pair{PowerPoint::SlideShowType::Kiosk, SlideShowPointerType::AlwaysHidden},
        std::pair{PowerPoint::SlideShowType::Speaker, SlideShowPointerType::AutoArrow},
        std::pair{PowerPoint::SlideShowType::Window, SlideShowPointerType::AutoArrow}}) {
    deck->showType = type;
    const auto window = std::make_shared<fakes::Window>(deck);
    host->sink->SlideShowBegin(window);
    EXPECT_EQ(window->pointer, pointer) << static_cast<int>(type);
    host->sink->SlideShowEnd(deck);
  }
}

TEST_F(AddInTest, TheMeterOfAShowIsHiddenByExactlyOne) {
  Load();
  const auto deck = Deck();
  for (const char* hide : {"", "1", " 1", "True"}) {
    machine.settings.info["HideProgressMeterOpen"] = hide;
    machine.meter.log.clear();
    host->sink->SlideShowBegin(std::make_shared<fakes::Window>(deck));
    host->sink->SlideShowEnd(deck);
    if (std::string_view(hide) == "1") {
      EXPECT_TRUE(machine.meter.log.empty());
    } else {
      EXPECT_EQ(machine.meter.log, (std::vector<std::string>{"show Opening presentation 1",
                                                             "Opening connection Prices", "step", "close"}))
          << hide;
    }
  }
}

TEST_F(AddInTest, TheEndOfAShowBreaksOffWhatIsBeingRead) {
  fakes::Database database;
  machine.UseAdo(&database);
  Load();
  const auto deck = Deck();
  deck->tags->items[1].second = "1\tStock\tDSN=stock\tStock\t\t100\t";
  database.rows = {{"Tea", "3"}};
  host->sink->SlideShowBegin(std::make_shared<fakes::Window>(deck));
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "3");

  database.ticksToOpen = 1;  // a server that does not answer
  int turns = 0;
  machine.loop.onDoEvents = [&] {
    if (++turns == 1) host->sink->SlideShowEnd(deck);
    if (turns == 100) database.ticksToOpen = 0;
  };
  machine.loop.Advance(1000);
  EXPECT_LT(turns, 100);
  EXPECT_GT(turns, 0);
  EXPECT_FALSE(ShowRuns());
}

TEST_F(AddInTest, AShowMayEndWhileItBegins) {
  Load();
  fakes::Database database;
  machine.UseAdo(&database);
  const auto deck = Deck();
  for (const char* number : {"001", "002"}) {
    deck->tags->Add("CORVANE CONNECTION" + std::string(number), "1\tStock\tDSN=x\tt\t\t1000\t");
  }
  database.ticksToOpen = 1'000'000;
  machine.loop.onDoEvents = [&] { host->sink->SlideShowEnd(deck); };
  host->sink->SlideShowBegin(std::make_shared<fakes::Window>(deck));
  EXPECT_FALSE(ShowRuns());
  EXPECT_TRUE(machine.messageBox.shown.empty()) << "what the end breaks off is no failure";
  EXPECT_EQ(std::ranges::count_if(database.log, [](const auto& line) { return line.starts_with("open"); }), 1)
      << "nothing more is opened";
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "x");
}

TEST_F(AddInTest, ARunningShowEndsWithTheAddIn) {
  Load();
  const auto deck = Deck();
  fakes::Slide& empty = deck->Add();
  empty.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  empty.AddField("q", 9);
  host->sink->SlideShowBegin(std::make_shared<fakes::Window>(deck));
  ASSERT_TRUE(ShowRuns());
  ASSERT_TRUE(empty.transition->hidden);
  deck->saved = false;
  Unload(AddInDesigner::RemoveMode::UserClosed);
  EXPECT_FALSE(ShowRuns());
  EXPECT_FALSE(empty.transition->hidden) << "nobody would bring it back";
  EXPECT_TRUE(deck->saved);
  EXPECT_FALSE(Runs());
  machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t4\n");
  machine.loop.Advance(10'000);
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "3");
  Unload(AddInDesigner::RemoveMode::HostShutdown);
}

TEST_F(AddInTest, AnUnlinkedShowHasNoRuntime) {
  Load();
  const auto deck = std::make_shared<fakes::Presentation>();
  deck->Add();
  deck->showType = PowerPoint::SlideShowType::Kiosk;
  const auto window = std::make_shared<fakes::Window>(deck);
  host->sink->SlideShowBegin(window);
  EXPECT_FALSE(ShowRuns());
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
    auto prices = machine.files.files.extract("/decks/prices.txt");
    machine.loop.Advance(1000);
    machine.files.files.insert(std::move(prices));
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
  machine.messageBox.shown.clear();
  host->sink->SlideShowBegin(std::make_shared<fakes::Window>(deck));
  host->sink->SlideShowEnd(deck);
  EXPECT_TRUE(machine.messageBox.shown.empty()) << "those of the show before";
}

}  // namespace
}  // namespace LF2000
