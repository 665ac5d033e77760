// Sample data: what is made up for a presentation, and how it gives way to data.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "addin/support/modGlobalFunctions.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/JobMachine.h"
#include "model/modConnections.h"
#include "model/modFieldNames.h"
#include "model/modLinkEdits.h"
#include "model/modSample.h"
#include "support/ErrorOf.h"

namespace LF2000 {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

struct SampleDataTest : testing::Test {
  fakes::JobMachine machine;
  std::shared_ptr<fakes::Application> host = std::make_shared<fakes::Application>();
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  fakes::Slide& slide = deck->Add();
  std::shared_ptr<clsPresentation> presentation = std::make_shared<clsPresentation>();

  SampleDataTest() {
    modGlobalFunctions::HostApplication = host;
    presentation->ActivePresentation(deck);
  }
  ~SampleDataTest() override { modGlobalFunctions::HostApplication.reset(); }
  SampleDataTest(const SampleDataTest&) = delete;
  SampleDataTest& operator=(const SampleDataTest&) = delete;

  void AddText(const std::string& name, const std::string& text) { slide.Add(name).text = text; }
  /// Linked to the sample data.
  fakes::Shape& AddLinked(const std::string& name, const std::string& column) {
    return slide.AddField(name, 1, std::string(modSample::Number), column);
  }
  std::string Value(const std::string& column, int row) const {
    bool noValue = false;
    return modSample::Find(*presentation)->GetValueDatabase(row, column, 1, true, noValue);
  }
  /// The number of the new connection, which has been read.
  std::string Connect(const std::string& text) {
    machine.files.Write("/decks/today.txt", text);
    const auto described = std::make_shared<clsConnection>();
    described->TagString("0\tToday\ttoday.txt\t-1\t");
    std::string number = modConnections::Add(*presentation, described);
    machine.RunJobs();
    return number;
  }
  static std::string ConnectionOf(const fakes::Shape& shape) { return (*shape.tags)["CORVANE COLUMN TAG"]; }
  std::vector<std::string> Told() const {
    std::vector<std::string> texts;
    for (const auto& shown : machine.messageBox.shown) texts.push_back(shown.text);
    return texts;
  }
};

TEST_F(SampleDataTest, RowsGoOnFromWhatTheAuthorHasWritten) {
  AddText("p1 Item", "Rye bread");
  AddText("p2 Item", "Plum cake");
  AddText("p1_Price", "€4.80");
  AddText("p2_Price", "€4.10");
  AddText("Time 1", "23:50");
  AddText("Time 2", " ");
  AddText("TextBox 7", "speaks of no column");
  AddText("Title", "Today");
  slide.AddTable("Gates", "Gate|Since/A09|2030-12-24/|");
  modSample::Begin(*presentation);
  EXPECT_THAT(modSample::Find(*presentation)->Columns(),
              ElementsAre("", "Item", "Price", "Time", "Gate", "Since"));
  EXPECT_EQ(modSample::Find(*presentation)->RecordCount(), 20);
  EXPECT_EQ(Value("Item", 2), "Plum cake");
  EXPECT_EQ(Value("Item", 3), "Rye bread");
  EXPECT_EQ(Value("Price", 3), "€5.80");
  EXPECT_EQ(Value("Price", 20), "€13.10");
  EXPECT_EQ(Value("Time", 2), "00:50");
  EXPECT_EQ(Value("Gate", 2), "A10");
  EXPECT_EQ(Value("Since", 20), "2030-12-24");
}

TEST_F(SampleDataTest, ADeckThatSpeaksOfNoColumnGetsSomeForAnything) {
  AddText("TextBox 1", "one");
  AddText("TextBox 3", "three");
  modSample::Begin(*presentation);
  EXPECT_THAT(modSample::Find(*presentation)->Columns(),
              ElementsAre("", "Name", "Text", "Number", "Price", "Time"));
  EXPECT_EQ(Value("Name", 20), "Name 20");
  EXPECT_FALSE(modFieldNames::Guess("12"));
  EXPECT_FALSE(modFieldNames::Guess("Price"));
}

TEST_F(SampleDataTest, IsStoredNowhereAndLivesOnBesideTheTags) {
  modSample::Begin(*presentation);
  const fakes::Shape& shape = AddLinked("a", "Name");
  presentation->SetConnectionTags();
  EXPECT_EQ((*deck->tags)["CORVANE CONNECTION000"], "(none)");
  EXPECT_EQ(ConnectionOf(shape), "000");
  presentation->RequeryInBackground(/*forced=*/true);
  machine.RunJobs();
  presentation->TakeUpTags();
  presentation->FillConnection(modSample::Number);
  EXPECT_EQ(shape.text, "Name 1");
  // Another version of the deck.
  const auto next = std::make_shared<clsPresentation>();
  next->ActivePresentation(deck, *presentation);
  EXPECT_EQ(modSample::Find(*next), modSample::Find(*presentation));
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(SampleDataTest, TheFirstConnectionTakesOverWhatFindsItsColumn) {
  modSample::Begin(*presentation);
  const fakes::Shape& name = AddLinked("a", "Name");
  const fakes::Shape& price = AddLinked("b", "Price");
  const fakes::Shape& time = AddLinked("c", "Time");
  slide.AddChart("chart", std::string(modSample::Number));
  EXPECT_EQ(Connect("NAME\tUnit_Price\tprice \nRye\t1\t4.80\n"), "001");
  EXPECT_EQ(ConnectionOf(name), "001");
  EXPECT_EQ((*name.tags)["CORVANE COLUMN COLUMNNAME"], "NAME");
  EXPECT_EQ(name.text, "Rye");
  EXPECT_EQ(price.text, "4.80");
  EXPECT_EQ(ConnectionOf(*slide.shapes.back()), "001");
  EXPECT_EQ(ConnectionOf(time), "000");
  EXPECT_THAT(Told(),
              ElementsAre("3 shapes show 001 Today now instead of sample data. Sample data stay where 001 "
                          "has no such column: 'Time' (1 shape)."));
  // One gesture.
  EXPECT_THAT(host->undoEntries,
              ElementsAre(Pair("Connect Today", "connect 001"), Pair("Connect Today", "connect 001")));
  // Those that are left wait for the next one, with which the sample data go.
  machine.messageBox.shown.clear();
  EXPECT_EQ(Connect("Time\n08:00\n"), "002");
  EXPECT_EQ(time.text, "08:00");
  EXPECT_EQ(modSample::Find(*presentation), nullptr);
  EXPECT_THAT(Told(), ElementsAre("1 shape shows 002 Today now instead of sample data."));
}

TEST_F(SampleDataTest, ComesBackWhereLinksAskForIt) {
  modSample::Begin(*presentation);
  fakes::Shape& shape = AddLinked("a", "Gate");
  Connect("Gate\nA1\n");
  ASSERT_EQ(modSample::Find(*presentation), nullptr);
  // Undone: the link has its old number again.
  shape.tags->Add("CORVANE COLUMN TAG", modSample::Number);
  modSample::Follow(*presentation);
  ASSERT_NE(modSample::Find(*presentation), nullptr);
  EXPECT_EQ(shape.text, "Gate 1");
  modLinkEdits::Unlink(*presentation, {slide.shapes.front()});
  EXPECT_EQ(modSample::Find(*presentation), nullptr);
}

TEST_F(SampleDataTest, NothingIsMadeOfItForOthers) {
  modSample::Begin(*presentation);
  AddLinked("a", "Name");
  presentation->SetConnectionTags();
  EXPECT_FALSE(presentation->CreateOfflinePPT("/copies/board.pptx"));
  constexpr const char* why =
      " while 1 shape shows sample data. Connect data of your own first, or remove the sample data.";
  EXPECT_NE(machine.messageBox.shown.back().text.find("An off-line copy cannot be made" + std::string(why)),
            std::string::npos);
  modSending::Options options;
  options.Folder = "/folder";
  EXPECT_EQ(support::errorOf([&] { static_cast<void>(presentation->Send(options)); }),
            "The presentation cannot be sent" + std::string(why));
  modConnections::Remove(*presentation, modSample::Number);
  EXPECT_EQ(modSample::CountLinks(*presentation), 0U);
  EXPECT_TRUE(presentation->Connections().empty());
}

TEST_F(SampleDataTest, IsOfferedOnlyWithoutData) {
  Connect("Name\nRye\n");
  EXPECT_EQ(support::errorOf([&] { modSample::Begin(*presentation); }),
            "There are data in this presentation already.");
}

}  // namespace
}  // namespace LF2000
