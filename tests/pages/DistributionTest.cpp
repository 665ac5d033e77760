// The dialog of a presentation's distribution, and what it stores and sends.

#include <gmock/gmock.h>

#include "fakes/FakeDistribution.h"
#include "pages/OpenDeck.h"

namespace LF2000 {
namespace {

using modPropertyPages::Page;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct DistributionTest : OpenDeck {
  DistributionTest() {
    machine.files.Write("/addin/Lumenfold.INI", "[Distribution]\r\nFolder = /srv/screens\r\n");
    deck->disk = &application->disk;
  }
  void Open() { modPropertyPages::Open(Page::Distribution, presentation); }
  fakes::Distribution distribution;
};

TEST_F(DistributionTest, StoresForWhomAndWhen) {
  Open();
  EXPECT_EQ(view.Text("lblFolder"), "/srv/screens");
  EXPECT_EQ(view.Text("lblLast"), "Not sent yet.");
  view.Set("txtComputers", " hall-1\n\nHALL-2, hall-1;hall-3\t\n");
  view.Set("txtStart", "12/1/2026 6:00 AM");
  view.Set("txtDays", "mon-fri");
  view.Set("txtHours", " 06:00-22:00 ");
  view.Click("cmdOK");
  EXPECT_TRUE(view.IsEmpty());
  EXPECT_THAT(Steps(), ElementsAre("Delivery to players"));
  EXPECT_EQ((*deck->tags)["CORVANE DISTRIBUTION COMPUTER"], "hall-1\tHALL-2\thall-3\t");
  EXPECT_EQ((*deck->tags)["CORVANE DISTRIBUTION START"], "2026-12-01 06:00:00");
  EXPECT_EQ((*deck->tags)["CORVANE DISTRIBUTION DAYS"], "mon-fri");
  EXPECT_EQ((*deck->tags)["CORVANE DISTRIBUTION HOURS"], "06:00-22:00");
  // Shown again, and not written again.
  Open();
  EXPECT_EQ(view.Text("txtComputers"), "hall-1\nHALL-2\nhall-3\n");
  EXPECT_EQ(view.Text("txtStart"), "12/1/2026 6:00:00 AM");
  EXPECT_EQ(view.Text("txtStop"), "");
  view.Click("cmdOK");
  EXPECT_THAT(Steps(), ElementsAre("Delivery to players"));
  EXPECT_THAT(distribution.sent, IsEmpty());
}

TEST_F(DistributionTest, ComplainsBesideTheField) {
  const struct {
    const char* field;
    const char* text;
    const char* at;
    const char* complaint;
  } cases[] = {{"txtStart", "someday", "txtStart", "no date and time, as in 2/3/2026 12:00:00 PM."},
               {"txtStop", "8:00 PM", "txtStop", "Give the day as well"},
               {"txtStop", "1/1/2020", "txtStop", ""},
               {"txtDays", "mon-often", "txtDays", ""},
               {"txtHours", "25:00-26:00", "txtHours", ""}};
  for (const auto& each : cases) {
    Open();
    view.Set("txtStart", "12/1/2026 6:00 AM");
    view.Set(each.field, each.text);
    view.Click("cmdOK");
    ASSERT_EQ(view.TopName(), "frmDistribution") << each.text;
    EXPECT_THAT(view.Problem(each.at), AllOf(testing::Not(IsEmpty()), HasSubstr(each.complaint)));
    view.Click("cmdCancel");
  }
  EXPECT_EQ((*deck->tags)["CORVANE DISTRIBUTION START"], "(none)");
}

TEST_F(DistributionTest, ComputersAreChosenWhereTheHostHasThem) {
  Open();
  view.Set("txtComputers", "hall-1");
  view.Click("cmdBrowse");
  EXPECT_THAT(view.Property("txtComputers", "Hint"), HasSubstr("keeps no list of computers"));
  machine.shell.browsed = host::Shell::Browsed{"HALL-2", std::nullopt};
  view.Click("cmdBrowse");
  EXPECT_EQ(view.Text("txtComputers"), "hall-1\nHALL-2\n");
}

TEST_F(DistributionTest, SendsTheWayItWentLast) {
  distribution.last = host::LastSending{host::SendingWay::Files, basic::DateFrom(2026, 2, 1, 8), false};
  Open();
  EXPECT_EQ(view.Text("lblLast"), "Sent 2/1/2026 8:00:00 AM.");
  view.Set("txtComputers", "hall-1");
  view.Click("cmdSend");
  ASSERT_EQ(distribution.sent.size(), 1U);
  EXPECT_EQ(distribution.sent[0].Way, host::SendingWay::Files);
  EXPECT_EQ(distribution.sent[0].Folder, "/srv/screens");
  EXPECT_EQ((*deck->tags)["CORVANE DISTRIBUTION COMPUTER"], "hall-1\t");
  EXPECT_THAT(machine.messageBox.shown.back().text, HasSubstr("was sent"));
}

TEST_F(DistributionTest, AsksBeforeItTakesThePresentationBack) {
  Open();
  EXPECT_EQ(view.Click("cmdWithdraw"), "Players have nothing of it from the distribution folder.");
  view.Click("cmdCancel");
  distribution.last = host::LastSending{host::SendingWay::Live, basic::DateFrom(2026, 2, 1, 8), false};
  Open();
  view.Click("cmdWithdraw");
  EXPECT_THAT(view.Text("lblWhat"), AllOf(HasSubstr("'board'"), HasSubstr("/srv/screens")));
  view.Click("cmdCancel");
  EXPECT_THAT(distribution.withdrawn, IsEmpty());

  view.Click("cmdWithdraw");
  distribution.last->IsWithdrawn = true;
  view.Click("cmdOK");
  EXPECT_THAT(distribution.withdrawn, ElementsAre("board"));
  EXPECT_THAT(machine.messageBox.shown.back().text, HasSubstr("was taken back"));
  EXPECT_EQ(view.Text("lblLast"), "Taken back 2/1/2026 8:00:00 AM.");
  EXPECT_NE(view.Click("cmdWithdraw"), "");
}

TEST_F(DistributionTest, SaysThatNoFolderIsGiven) {
  machine.files.Kill("/addin/Lumenfold.INI");
  Open();
  EXPECT_EQ(view.Text("lblFolder"), "Distribution folder not specified in Lumenfold.INI file.");
  EXPECT_EQ(view.Click("cmdSend"), "Distribution folder not specified in Lumenfold.INI file.");
  presentation->SendPresentation();
  EXPECT_EQ(machine.messageBox.shown.back().text, "Distribution folder not specified in Lumenfold.INI file.");
  // Beside the settings file.
  machine.files.Write("/home/Lumenfold.INI",
                      "; ours\n[Other]\nFolder = /wrong\n[distribution]\nFOLDER=screens\n");
  presentation->SendPresentation();
  ASSERT_EQ(distribution.sent.size(), 1U);
  EXPECT_EQ(distribution.sent[0].Folder, "/home/screens");
}

TEST_F(DistributionTest, AFailureIsToldByItsCode) {
  distribution.failure = "The drive is full.";
  presentation->SendPresentation();
  EXPECT_EQ(machine.messageBox.shown.back().text, "Error while sending presentation. \r\nThe drive is full.");
}

}  // namespace
}  // namespace LF2000
