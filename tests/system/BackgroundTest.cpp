// Connections that are opened and read anew by jobs, behind the handlers that ask for it.

#include <gtest/gtest.h>

#include "addin/Application.h"
#include "fakes/FakeDatabase.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/JobMachine.h"
#include "fakes/Passage.h"
#include "model/clsPresentation.h"
#include "model/modCommandState.h"
#include "runtime/clsRuntime.h"

namespace LF2000 {
namespace {

using Texts = std::vector<std::string>;

struct BackgroundTest : testing::Test {
  fakes::JobMachine machine;
  fakes::Database database;
  std::shared_ptr<fakes::Presentation> host = std::make_shared<fakes::Presentation>();
  fakes::Slide& slide = host->Add();
  std::shared_ptr<clsPresentation> presentation = std::make_shared<clsPresentation>();
  int changes = 0;

  BackgroundTest() {
    machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t3\n");
    machine.UseAdo(&database);
    database.rows = {{"Milk", "7"}};
    host->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE CONNECTION001", "1\tStock\tDSN=stock\tStock\t\t0\t"},
                         {"CORVANE CONNECTION002", "0\tPrices\tprices.txt\t-1\t"},
                         {"CORVANE DISPLAYTYPE", "1"}};
    Add("stock", "001");
    Add("price", "002");
    modCommandState::ToldTo({nullptr, [this] { ++changes; }});
  }
  ~BackgroundTest() override { modCommandState::ToldTo({}); }

  fakes::Shape& Add(const std::string& name, const std::string& connection) {
    fakes::Shape& shape = slide.AddField(name, 1, connection);
    shape.text = "author's";
    return shape;
  }
  void Load() {
    presentation->ActivePresentation(handed(host));
    machine.RunJobs();
  }
  Texts Shown() const {
    Texts texts;
    for (const auto& shape : slide.shapes) texts.push_back(shape->text);
    return texts;
  }
  const clsConnection& Connection(const char* number) { return *presentation->FindConnection(number); }
  /// Some time later, what is due is read.
  int RequeryAfter(std::int64_t milliseconds) {
    machine.loop.Advance(milliseconds);
    presentation->RequeryInBackground(false);
    return machine.RunJobs();
  }
};

TEST_F(BackgroundTest, AShowBeginsWithoutADatabaseAndTakesItsDataWhenTheyAreThere) {
  presentation->ActivePresentation(host);
  presentation->IsShown(true);
  clsRuntime runtime;
  runtime.ActivePresentation(host);
  runtime.ReadBy(presentation);
  runtime.StartTimers(std::make_shared<fakes::Window>(host));
  ASSERT_NE(runtime.Form(), nullptr);
  const auto look = [&] {
    runtime.Form()->RefreshData();
    runtime.Form()->RefreshSlide(1);
  };
  look();
  EXPECT_TRUE(database.log.empty());
  EXPECT_EQ(Shown(), (Texts{"author's", "3"}));

  machine.RunJobs();
  EXPECT_EQ(Shown(), (Texts{"author's", "3"})) << "the show writes into its shapes, nobody else";
  const auto asked = database.log;
  look();
  EXPECT_EQ(Shown(), (Texts{"7", "3"}));
  EXPECT_EQ(database.log, asked);
  database.rows = {{"Milk", "8"}};
  machine.loop.Advance(1000);
  look();
  EXPECT_EQ(Shown(), (Texts{"8", "3"})) << "from here on it asks for itself";
}

TEST_F(BackgroundTest, WhatItsReaderCouldNotReadAShowAsksForItself) {
  database.down = true;
  presentation->ActivePresentation(host);
  clsRuntime runtime;
  runtime.ActivePresentation(host);
  runtime.ReadBy(presentation);
  machine.RunJobs();
  runtime.StartTimers(std::make_shared<fakes::Window>(host));
  EXPECT_TRUE(runtime.Form()->Connections().at("001")->Readings().IsFailing);
  database.down = false;
  machine.loop.Advance(1000);
  runtime.Form()->RefreshData();
  runtime.Form()->RefreshSlide(1);
  EXPECT_EQ(Shown().front(), "7");
}

TEST_F(BackgroundTest, LoadingOpensNothingInTheHandlerAndFilesFirst) {
  fakes::Shape& clock = slide.AddClock("hh:nn");
  host->saved = true;
  presentation->ActivePresentation(handed(host));
  EXPECT_EQ(Shown(), (Texts{"author's", "author's", "12:00"}));
  EXPECT_TRUE(database.log.empty());
  EXPECT_EQ(machine.files.opens, 0);
  EXPECT_TRUE(machine.meter.log.empty());
  EXPECT_EQ(presentation->DisplayType(), 1);
  EXPECT_EQ(machine.Captions(), (Texts{"Opening connection Prices", "Opening connection Stock"}));
  EXPECT_NE(presentation->ReadingJob(Connection("001")), nullptr);

  database.ticksToOpen = 5;
  machine.loop.onDoEvents = [&] {
    EXPECT_EQ(Shown(), (Texts{"author's", "3", "12:00"})) << "each connection when it is open";
    database.Progress();
  };
  machine.RunJobs();
  EXPECT_EQ(Shown(), (Texts{"7", "3", "12:00"}));
  EXPECT_EQ(presentation->ReadingJob(Connection("001")), nullptr);
  EXPECT_EQ(changes, 2);
  EXPECT_TRUE(host->saved) << "live values are no change";
  EXPECT_TRUE(machine.messageBox.shown.empty());
  EXPECT_EQ(clock.writes, 1);
}

TEST_F(BackgroundTest, AFailureIsToldAndNotedAndHoldsUpNoOther) {
  database.down = true;
  host->tags->Add("CORVANE CONNECTION003", "no record");
  Load();
  EXPECT_EQ(Shown(), (Texts{"author's", "3"}));
  ASSERT_EQ(machine.messageBox.shown.size(), 2U);
  EXPECT_EQ(machine.messageBox.shown[0].text.find("Error while opening presentation."), 0U);
  EXPECT_EQ(machine.messageBox.shown[1].text,
            "Error while opening presentation. \r\nError while opening database Stock. \r\nserver down");
  EXPECT_TRUE(Connection("001").Readings().IsFailing);
  EXPECT_EQ(Connection("001").Readings().LastError, "Error while opening database Stock. \r\nserver down");
  // It is tried again now and then, and whoever asks is told.
  EXPECT_EQ(RequeryAfter(20'000), 0);
  EXPECT_EQ(RequeryAfter(40'000), 1);
  EXPECT_EQ(machine.messageBox.shown.size(), 2U) << "no news";
  presentation->RequeryInBackground(true);
  machine.RunJobs();
  EXPECT_EQ(machine.messageBox.shown.size(), 3U);
  database.down = false;
  EXPECT_EQ(RequeryAfter(60'000), 1);
  EXPECT_FALSE(Connection("001").Readings().IsFailing);
  EXPECT_EQ(Shown(), (Texts{"7", "3"}));
}

TEST_F(BackgroundTest, AnOpeningThatIsCancelledIsNotedAndNotReported) {
  database.ticksToOpen = 1'000'000;
  machine.loop.onDoEvents = [&] {
    machine.loop.Advance(10);
    if (machine.loop.Now() == 3000) presentation->ReadingJob(Connection("001"))->Cancel();
  };
  host::JobEnd heard;
  presentation->ActivePresentation(handed(host));
  presentation->OpenInBackground(presentation->FindConnection("001"),
                                 [&](const host::JobEnd& end) { heard = end; });
  EXPECT_EQ(machine.jobs.current().size(), 2U) << "in place of the one that waited";
  machine.RunJobs();
  EXPECT_EQ(heard.How, host::JobEnd::Kind::Cancelled);
  EXPECT_EQ(machine.loop.Now(), 3000);
  EXPECT_TRUE(machine.messageBox.shown.empty());
  EXPECT_EQ(Connection("001").Readings().LastError,
            "Error while opening database Stock. \r\nIt was given up before an answer came.");
  // Nothing of it is left that would keep another reading from beginning anew.
  database.ticksToOpen = 0;
  database.ticksToFetch = 1'000'000;
  presentation->RequeryInBackground(true);
  machine.loop.onDoEvents = [&] { presentation->ReadingJob(Connection("001"))->Cancel(); };
  machine.RunJobs();
  EXPECT_EQ(Shown(), (Texts{"author's", "3"}));
  database.ticksToFetch = 0;
  presentation->RequeryInBackground(true);
  machine.RunJobs();
  EXPECT_EQ(Shown(), (Texts{"7", "3"}));
}

TEST_F(BackgroundTest, WhatIsDueIsReadAndNothingElse) {
  Load();
  const int opens = machine.files.opens;
  EXPECT_EQ(RequeryAfter(1000), 0);
  EXPECT_EQ(machine.files.opens, opens);
  machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t4\n");
  database.rows = {{"Milk", "8"}};
  EXPECT_EQ(RequeryAfter(1000), 1);
  EXPECT_EQ(Shown(), (Texts{"7", "4"}));
  EXPECT_EQ(RequeryAfter(8000), 1) << "a database whose rate is 0 is asked every ten seconds";
  EXPECT_EQ(Shown(), (Texts{"8", "4"}));

  // Of a file that has gone, and comes back as it was, both are noticed, and told once.
  const auto file = machine.files.files.extract("/decks/prices.txt");
  auto back = fakes::Files::File(file.mapped());
  EXPECT_EQ(RequeryAfter(1000), 1);
  EXPECT_EQ(RequeryAfter(1000), 0);
  ASSERT_EQ(machine.messageBox.shown.size(), 1U);
  EXPECT_EQ(machine.messageBox.shown[0].text,
            "Error while requerying data. \r\nError requerying file Prices. \r\nFile not found: "
            "/decks/prices.txt");
  EXPECT_EQ(Shown(), (Texts{"8", "4"}));
  machine.files.files["/decks/prices.txt"] = back;
  EXPECT_EQ(RequeryAfter(1000), 1);
  EXPECT_FALSE(Connection("002").Readings().IsFailing);

  presentation->FindConnection("001")->RecordsetRefreshRate(30'000);
  EXPECT_EQ(RequeryAfter(20'000), 0);
  EXPECT_EQ(RequeryAfter(10'000), 1);
}

TEST_F(BackgroundTest, NobodyWaitsForAReadingThatIsUnderWay) {
  Load();
  database.ticksPerRequery = 3;
  database.rows = {{"Milk", "9"}};
  presentation->RequeryInBackground(true);
  fakes::Shape* late = nullptr;
  machine.loop.onDoEvents = [&] {
    if (late == nullptr) {
      late = &Add("late", "001");
      presentation->FillShape(slide, slide.shapes.back());
      EXPECT_EQ(late->text, "author's");
      presentation->RequeryInBackground(true);
    }
    database.Progress();
  };
  machine.RunJobs();
  ASSERT_NE(late, nullptr);
  EXPECT_EQ(late->text, "9") << "it is filled when there are data";
  EXPECT_EQ(std::count(database.log.begin(), database.log.end(), "requery -1"), 1)
      << "what is read is not asked";
}

TEST_F(BackgroundTest, AShapeIsFilledFromWhatIsHeld) {
  Load();
  const auto opens = machine.files.opens;
  fakes::Shape& added = Add("added", "002");
  presentation->FillShape(slide, slide.shapes.back());
  EXPECT_EQ(added.text, "3");
  fakes::Shape& unlinked = slide.Add("unlinked");
  unlinked.text = "Menu";
  presentation->FillShape(slide, slide.shapes.back());
  EXPECT_EQ(unlinked.text, "Menu");
  added.text = "changed";
  slide.shapes[0]->text = "changed";
  presentation->FillConnection("002");
  EXPECT_EQ(Shown(), (Texts{"changed", "3", "3", "Menu"}));
  EXPECT_EQ(machine.files.opens, opens);
}

TEST_F(BackgroundTest, TagsThatHaveChangedAreTakenUp) {
  machine.files.Write("/decks/other.txt", "Item\tPrice\nTea\t5\n");
  Load();
  presentation->DisplayType(3);
  const auto before = presentation->FindConnection("001");
  const std::size_t asked = database.log.size();
  host->tags->Add("CORVANE CONNECTION002", "0\tOther\tother.txt\t-1\t");
  host->tags->Add("CORVANE CONNECTION003", "0\tMore\tprices.txt\t-1\t");
  presentation->TakeUpTags();
  EXPECT_EQ(presentation->FindConnection("001"), before);
  EXPECT_EQ(machine.Captions(), (Texts{"Opening connection Other", "Opening connection More"}));
  EXPECT_EQ(presentation->DisplayType(), 3) << "the tag says what it said";
  machine.RunJobs();
  EXPECT_EQ(database.log.size(), asked);
  EXPECT_EQ(slide.shapes[1]->text, "Price");

  host->tags->Add("CORVANE DISPLAYTYPE", "2");
  host->tags->Delete("CORVANE CONNECTION003");
  presentation->TakeUpTags();
  EXPECT_EQ(presentation->Connections().size(), 2U);
  EXPECT_EQ(presentation->DisplayType(), 2);
  EXPECT_EQ(machine.RunJobs(), 0);

  host->tags->items.clear();
  presentation->TakeUpTags();
  EXPECT_TRUE(presentation->Connections().empty());
  EXPECT_EQ(presentation->DisplayType(), 2);
}

TEST_F(BackgroundTest, AnotherVersionTakesOverWhatIsDescribedAlike) {
  const auto application = std::make_shared<fakes::Application>();
  Application system;
  system.InitHandler(handed(application), "LF2000.Connect");
  application->sink->PresentationOpen(host);
  machine.RunJobs();
  system.Find(handed(host))->DisplayType(3);
  const auto stock = system.Find(handed(host))->FindConnection("001");
  const std::size_t asked = database.log.size();
  const int opens = machine.files.opens;
  system.Find(handed(host))->OpenInBackground(system.Find(handed(host))->FindConnection("002"));

  const auto newer = std::make_shared<fakes::Presentation>();
  newer->tags->items = host->tags->items;
  newer->tags->Add("CORVANE CONNECTION003", "0\tMore\tprices.txt\t-1\t");
  fakes::Shape& shape = newer->Add().AddField("stock", 1);
  application->sink->PresentationOpen(newer);
  EXPECT_EQ(shape.text, "Price") << "at once, as the author looked at it before";
  EXPECT_EQ(system.Find(handed(newer))->FindConnection("001"), stock);
  application->sink->PresentationClose(host);
  EXPECT_EQ(machine.Captions(), (Texts{"Opening connection Prices", "Opening connection More"}))
      << "what was still to be opened is opened for the newer one";
  machine.RunJobs();
  EXPECT_EQ(database.log.size(), asked);
  EXPECT_EQ(machine.files.opens, opens + 2);
  system.Find(handed(newer))->RequeryInBackground(false);
  EXPECT_EQ(machine.RunJobs(), 0);
  // A host without jobs loads each version by itself.
  machine.UseJobs(nullptr);
  application->sink->PresentationOpen(newer);
  EXPECT_GT(database.log.size(), asked);
}

TEST_F(BackgroundTest, APresentationThatIsClosedGivesUpWhatItWaitsFor) {
  database.ticksToOpen = 1'000'000;
  int turns = 0;
  machine.loop.onDoEvents = [&] {
    ASSERT_LT(++turns, 100);
    presentation.reset();
  };
  Load();
  EXPECT_EQ(turns, 1);
  EXPECT_TRUE(machine.jobs.current().empty());
  EXPECT_EQ(Shown()[1], "3");
  EXPECT_TRUE(machine.messageBox.shown.empty());
}

}  // namespace
}  // namespace LF2000
