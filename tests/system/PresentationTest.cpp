// A linked presentation: loading, filling, saving and its tag writers.

#include <gtest/gtest.h>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "fakes/Passage.h"
#include "model/clsPresentation.h"
#include "model/modTags.h"

namespace LF2000 {
namespace {

struct PresentationTest : testing::Test {
  fakes::Machine machine;
  std::shared_ptr<fakes::Presentation> host = std::make_shared<fakes::Presentation>();
  clsPresentation presentation;

  PresentationTest() { machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t3\nMilk\n"); }

  void Link(int displayType = 1) {
    host->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"},
                         {"CORVANE DISPLAYTYPE", std::to_string(displayType)}};
  }
  fakes::Shape& AddField(fakes::Slide& slide, const std::string& name, const std::string& column, int row,
                         const std::string& connection = "001") {
    fakes::Shape& shape = slide.AddField(name, row, connection, column);
    shape.text = "sample";
    return shape;
  }
};

TEST_F(PresentationTest, ClocksThatShowAnotherTextAreWritten) {
  Link();
  fakes::Slide& slide = host->Add();
  fakes::Shape& minutes = slide.AddClock("hh:nn");
  fakes::Shape& seconds = slide.AddClock("hh:nn:ss");
  slide.AddClock("hh:nn").hasTextFrame = false;
  presentation.ActivePresentation(handed(host));
  const int before = minutes.writes;
  machine.messageBox.shown.clear();
  machine.loop.Pass(5000);
  presentation.FillClocks(slide);
  EXPECT_EQ(seconds.text, "12:00:05");
  EXPECT_EQ(minutes.writes, before);
  machine.loop.Pass(60000);
  presentation.FillClocks(slide);
  EXPECT_EQ(minutes.text, "12:01");
  EXPECT_TRUE(machine.messageBox.shown.empty()) << "what cannot be filled was told";
}

TEST_F(PresentationTest, WithoutTheVersionTagNothingIsLoaded) {
  Link();
  host->tags->items.erase(host->tags->items.begin());
  fakes::Slide& slide = host->Add();
  fakes::Shape& field = AddField(slide, "p", "Price", 1);
  fakes::Shape& clock = slide.AddClock("hh:nn");
  clock.text = "sample";
  presentation.ActivePresentation(handed(host));
  EXPECT_TRUE(presentation.Connections().empty());
  EXPECT_EQ(presentation.DisplayType(), 0);
  // Nor is it filled or blanked, whatever is asked.
  presentation.DisplayType(1);
  presentation.PrepareSave();
  EXPECT_EQ(field.text + clock.text, "samplesample");
  presentation.FillValues(true);
  EXPECT_EQ(field.text + clock.text, "samplesample");
  host->tags->Add("CORVANE VERSION2", "1");
  EXPECT_TRUE(modTags::HasVersionTag(*host));
}

TEST_F(PresentationTest, AnotherPresentationStartsAfresh) {
  Link(4);
  presentation.ActivePresentation(handed(host));
  presentation.SetDistributionListTags(basic::DateFrom(2026, 1, 2), basic::DateFrom(2026, 3, 4), {"GATE1"});
  const auto other = std::make_shared<fakes::Presentation>();
  presentation.ActivePresentation(handed(other));
  EXPECT_EQ(presentation.DisplayType(), 0);
  EXPECT_EQ(modGlobalFunctions::CurrentDisplayType, 4) << "what is not linked changes no display";
  other->tags->Add("CORVANE VERSION", "1");
  presentation.ActivePresentation(handed(other));
  EXPECT_EQ(modGlobalFunctions::CurrentDisplayType, 0);
  EXPECT_TRUE(presentation.DistributionList().empty());
  EXPECT_EQ(presentation.DistributionStart(), basic::Date{});
  EXPECT_EQ(presentation.DistributionStop(), basic::Date{});
}

TEST_F(PresentationTest, ALoadThatFailsStopsButLosesNothing) {
  Link(3);
  host->tags->Add("CORVANE CONNECTION002", "0\tGone\tgone.txt\t-1\t");
  host->tags->Add("CORVANE CONNECTION003", "0\tLater\tprices.txt\t-1\t");
  fakes::Slide& slide = host->Add();
  fakes::Shape& field = AddField(slide, "p", "Price", 1);
  fakes::Shape& later = AddField(slide, "q", "Price", 1, "003");
  presentation.ActivePresentation(handed(host));
  ASSERT_EQ(machine.messageBox.shown.size(), 1U);
  EXPECT_EQ(machine.messageBox.shown[0].text,
            "Error while opening presentation. \r\nError while opening file Gone. \r\nFile not found: "
            "/decks/gone.txt");
  EXPECT_EQ(field.text, "sample");
  EXPECT_EQ(presentation.DisplayType(), 3);
  EXPECT_FALSE(presentation.FindConnection("003")->ConnectionReady());
  presentation.FillValues(false);
  EXPECT_EQ(field.text, "Price");
  EXPECT_EQ(later.text, "sample") << "of a connection that is not open nothing is known";
  presentation.SetConnectionTags();
  EXPECT_EQ((*host->tags)["CORVANE CONNECTION003"], "0\tLater\tprices.txt\t-1\t");
}

TEST_F(PresentationTest, AShapeWhoseSourceFailsShowsAfterASaveWhatItShowedBefore) {
  Link();
  fakes::Slide& slide = host->Add();
  fakes::Shape& field = AddField(slide, "p", "Price", 1);
  fakes::Shape& other = AddField(host->Add(), "p", "Item", 1);
  presentation.ActivePresentation(handed(host));
  constexpr int EveryAttempt = 4;
  machine.files.files["/decks/prices.txt"].lockedAttempts = EveryAttempt;
  EXPECT_THROW(presentation.Connections()[0]->Requery(true), basic::Error);
  for (int save = 0; save < 2; ++save) {
    presentation.PrepareSave();
    EXPECT_EQ(field.text + other.text, "  ");
  }
  presentation.FillValues(false);
  EXPECT_EQ(field.text, "3");
  EXPECT_EQ(other.text, "Tea");
  // Once: what shapes show later is their own affair.
  field.text = "by hand";
  presentation.FillValues(false);
  EXPECT_EQ(field.text, "by hand");
}

TEST_F(PresentationTest, ChartsAreRestoredBeforeASave) {
  Link();
  const fakes::Chart& chart = host->Add().AddChart("chart");
  presentation.ActivePresentation(handed(host));
  presentation.PrepareSave();
  EXPECT_EQ(chart.restored, 1);
}

TEST_F(PresentationTest, ConnectionNumbersFollowTheLargest) {
  const std::pair<std::vector<const char*>, const char*> cases[] = {
      {{}, "001"}, {{"001", "004"}, "005"}, {{"999"}, "1000"}};
  for (const auto& [numbers, expected] : cases) {
    presentation.Connections().clear();
    for (const char* number : numbers) {
      presentation.Connections().push_back(std::make_shared<clsConnection>());
      presentation.Connections().back()->ConnectionTagNumber(number);
    }
    EXPECT_EQ(presentation.NewConnectionTagNumber(), expected);
  }
  EXPECT_TRUE(machine.messageBox.shown.empty());
  presentation.Connections().back()->ConnectionTagNumber("7abc");
  EXPECT_EQ(presentation.NewConnectionTagNumber(), "");
  ASSERT_EQ(machine.messageBox.shown.size(), 1U);
  EXPECT_EQ(machine.messageBox.shown[0].text,
            "Error while saving connection tags. \r\nThe connection '7abc' does not end in a number.");
}

TEST_F(PresentationTest, QuestionsReportWhatKeepsThemFromAnAnswer) {
  Link();
  fakes::Slide& slide = host->Add();
  presentation.ActivePresentation(handed(host));
  host->tags->failOnRead = true;
  slide.isDeleted = true;
  EXPECT_EQ(presentation.LumenfoldVersion(), "");
  EXPECT_FALSE(presentation.SlideHasConnections(slide));
  ASSERT_EQ(machine.messageBox.shown.size(), 2U);
  EXPECT_EQ(machine.messageBox.shown[0].text, "the tags cannot be read");
  EXPECT_EQ(machine.messageBox.shown[1].text, "the slide has been deleted");
}

TEST_F(PresentationTest, RemovingAConnectionUnlinksItsShapes) {
  Link();
  fakes::Slide& slide = host->Add();
  fakes::Shape& kept = AddField(slide, "kept", "Price", 1, "001");
  fakes::Shape& orphan = AddField(slide, "orphan", "Price", 1, "002");
  presentation.ActivePresentation(handed(host));
  EXPECT_TRUE(presentation.SlideHasConnections(slide));
  presentation.SetConnectionTags();
  EXPECT_EQ(kept.tags->Count(), 4);
  EXPECT_EQ(orphan.tags->Count(), 0);
  presentation.Connections().clear();
  presentation.SetConnectionTags();
  EXPECT_EQ(kept.tags->Count(), 0);
  EXPECT_FALSE(presentation.SlideHasConnections(slide));
}

TEST_F(PresentationTest, WritersAndRemoversTouchTheirOwnTags) {
  host->tags->Add("OTHER", "kept");
  fakes::Slide& slide = host->Add();
  presentation.ActivePresentation(handed(host));
  clsSlide properties;
  properties.HideWhenNoData(true);
  properties.AddScrollInfo("2", "True\t1\t500");
  properties.AddScrollInfo("3", "True\t1\t0");
  presentation.SetSlideTags(properties, 1);
  EXPECT_EQ(slide.tags->items,
            (std::vector<std::pair<std::string, std::string>>{{"CORVANE SLIDE PROPERTIES", "-1\t0\t"},
                                                              {"CORVANE SCROLLSTEP2", "True\t1\t500"}}));
  EXPECT_EQ(presentation.LumenfoldVersion(), "1");

  presentation.SetDistributionListTags(basic::DateFrom(2026, 1, 2, 3, 4, 5), basic::DateFrom(2026, 12, 31),
                                       {"GATE1", "GATE2"});
  EXPECT_EQ((*host->tags)["CORVANE DISTRIBUTION START"], "2026-01-02 03:04:05");
  EXPECT_EQ((*host->tags)["CORVANE DISTRIBUTION COMPUTER"], "GATE1\tGATE2\t");
  clsPresentation reread;
  reread.ActivePresentation(handed(host));
  EXPECT_EQ(reread.DistributionList(), (std::vector<std::string>{"GATE1", "GATE2"}));
  EXPECT_EQ(reread.DistributionStart(), basic::DateFrom(2026, 1, 2, 3, 4, 5));
  reread.SetDistributionListTags({}, {}, {});
  EXPECT_EQ((*host->tags)["CORVANE DISTRIBUTION COMPUTER"], "(none)");

  presentation.DisplayType(4);
  presentation.SetDisplayType();
  EXPECT_EQ((*host->tags)["CORVANE DISPLAYTYPE"], "4");

  presentation.RemoveLumenfold();
  EXPECT_EQ(host->tags->items, (std::vector<std::pair<std::string, std::string>>{{"OTHER", "kept"}}));
  EXPECT_EQ(slide.tags->Count(), 0);
}

}  // namespace
}  // namespace LF2000
