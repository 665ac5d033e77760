// The page of the presentation: its connections, and what is done to them.

#include <gmock/gmock.h>

#include "pages/ConnectionDialogs.h"
#include "pages/frmAbout.h"
#include "pages/modPages.h"

namespace LF2000::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

struct SlideShowTest : ConnectionDialogs {
  SlideShowTest() {
    machine.files.Write("/decks/today.txt", "Item\tPrice\nRye\t4.80\n");
    machine.files.Write("/decks/other.txt", "Item\tCost\nRye\t4.80\nTart\t3.20\n");
    deck->Add().AddField("p1", 1);
    deck->slides.front()->AddField("p2", 1, "001", "Item");
    deck->Add().AddChart("chart");
  }
  void Show() {
    modPages::Open(modPropertyPages::Page::SlideShow, presentation);
    machine.RunJobs();
  }
  /// A line of the list, "|" between its cells.
  [[nodiscard]] std::string Line(std::size_t index) const {
    const Forms::Item& item = view.Get<Forms::ListBox>("lstConnections").Items().at(index);
    std::string text = item.Text;
    for (const std::string& cell : item.Cells) text += "|" + cell;
    return text;
  }
};

TEST_F(SlideShowTest, ListsConnectionsAndTestsThem) {
  Load({"0|Today|today.txt|-1|", "0|Gone|gone.txt|-1|"});
  Show();
  EXPECT_EQ(Line(0), "001|Today|Text file|today.txt|1|3 shapes on 2 slides|read");
  EXPECT_THAT(Line(1), HasSubstr("002|Gone|Text file|gone.txt||no shape|Error while opening file Gone."));
  EXPECT_EQ(view.Click("cmdTest"), "Select a connection first.");
  machine.files.Write("/decks/today.txt", "Item\tPrice\nRye\t4.80\nTart\t1\n");
  view.Click("cmdTestAll");
  EXPECT_THAT(Line(0), HasSubstr("|being tested"));
  machine.RunJobs();
  EXPECT_EQ(Line(0), "001|Today|Text file|today.txt|1|3 shapes on 2 slides|tested: 2 rows");
  EXPECT_THAT(Line(1), HasSubstr("File not found"));
  view.Select("lstConnections", {0});
  std::string shown;
  modPages::ShowUsesWith([&](const std::string& connection) { shown = connection; });
  view.Click("cmdShowUses");
  EXPECT_THAT(view.Items("lstUses"), ElementsAre("slide 1: p1", "slide 1: p2", "slide 2: chart"));
  EXPECT_EQ(shown, "001") << "the host selects them";
  modPages::Reset();
}

TEST_F(SlideShowTest, AddsEditsAndDuplicates) {
  Load({});
  Show();
  view.Click("cmdAdd");
  EXPECT_EQ(view.TopName(), "frmTextConnection");
  view.Set("txtFile", "today.txt");
  machine.RunJobs();
  view.Click("cmdOK");
  machine.RunJobs();
  EXPECT_EQ(view.TopName(), "frmSlideShow");
  machine.loop.Advance(1100);  // the list follows what is read behind it
  EXPECT_EQ(Line(0), "001|today|Text file|today.txt|1|3 shapes on 2 slides|read");
  view.Click("cmdDuplicate");
  EXPECT_EQ(Tag("002"), "0|today (copy)|today.txt|-1|");
  view.Click("cmdEdit");
  EXPECT_EQ(view.Text("txtDescription"), "today (copy)");
  view.Set("txtFile", "other.txt");
  view.Click("cmdOK");
  EXPECT_EQ(Tag("002"), "0|today (copy)|other.txt|-1|");
  EXPECT_THAT(host->undoEntries, ElementsAre(Pair("Connect today", ""), Pair("Connect today (copy)", ""),
                                             Pair("Change connection 002", "")));
  view.Click("cmdClose");
  EXPECT_TRUE(view.IsEmpty());
  machine.loop.Advance(5000);
}

TEST_F(SlideShowTest, RemovingSaysWhoLosesItsLink) {
  Load({"0|Today|today.txt|-1|", "0|Other|other.txt|-1|"});
  Show();
  view.Select("lstConnections", {0});
  view.Click("cmdRemove");
  EXPECT_EQ(view.Text("lblRemove"),
            "3 shapes on 2 slides lose their link: slide 1: p1, slide 1: p2, slide 2: chart.");
  EXPECT_NE(Tag("001"), "(none)");
  view.Click("cmdKeep");
  EXPECT_FALSE(view.Visible("cmdRemoveNow"));
  view.Click("cmdRemove");
  view.Click("cmdRemoveNow");
  EXPECT_EQ(Tag("001"), "(none)");
  EXPECT_EQ((*deck->slides[0]->shapes[0]->tags)["CORVANE COLUMN TAG"], "(none)");
  // What nobody uses goes at once.
  view.Select("lstConnections", {0});
  view.Click("cmdRemove");
  EXPECT_TRUE(presentation->Connections().empty());
  EXPECT_THAT(host->undoEntries,
              ElementsAre(Pair("Remove connection 001", ""), Pair("Remove connection 002", "")));
}

TEST_F(SlideShowTest, LinksMoveToAnotherSourceAfterAComparison) {
  Load({"0|Today|today.txt|-1|", "0|Other|other.txt|-1|", "0|Gone|gone.txt|-1|"});
  Show();
  view.Select("lstConnections", {0});
  view.Click("cmdReplace");
  EXPECT_THAT(view.Items("cmbReplacement"), ElementsAre("002 Other", "003 Gone"));
  EXPECT_FALSE(view.Visible("cmdUse"));
  view.Choose("cmbReplacement", "003 Gone");
  machine.RunJobs();
  EXPECT_THAT(view.Text("lblComparison"), HasSubstr("cannot be compared"));
  view.Choose("cmbReplacement", "002 Other");
  EXPECT_EQ(view.Text("lblComparison"),
            "It has no column 'Price' (1 shape). These shapes will show nothing.");
  EXPECT_EQ(view.Property("cmdUse", "Caption"), "&Use 002 for 3 links");
  view.Click("cmdUse");
  EXPECT_THAT(host->undoEntries, ElementsAre(Pair("Use 002 for 3 links", "")));
  const auto& tags = *deck->slides[0]->shapes[1]->tags;
  EXPECT_EQ(tags["CORVANE COLUMN TAG"] + tags["CORVANE COLUMN COLUMNNAME"] + tags["CORVANE COLUMN ROW"],
            "002Item1");
  EXPECT_EQ((*deck->slides[1]->shapes[0]->tags)["CORVANE COLUMN TAG"], "002");
  EXPECT_EQ(Line(1), "002|Other|Text file|other.txt|2|3 shapes on 2 slides|read");
}

TEST_F(SlideShowTest, TheDisplayTypeIsChosen) {
  Load({"0|Today|today.txt|-1|"});
  Show();
  // None is chosen in a deck in which nothing was linked yet.
  presentation->DisplayType(0);
  view.Click("cmdClose");
  Show();
  EXPECT_EQ(view.Text("cmbDisplayType"), "Value");
  view.Choose("cmbDisplayType", "Column - Index");
  EXPECT_EQ(presentation->DisplayType(), 5);
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "Price 1");
  EXPECT_TRUE(host->undoEntries.empty());
}

TEST_F(SlideShowTest, AboutTellsWhereThingsAre) {
  std::make_shared<frmAbout>()->Open();
  EXPECT_EQ(view.Text("lblVersion"), "1.2.3");
  EXPECT_EQ(view.Text("lblComputer"), "GATE7");
  EXPECT_EQ(view.Text("lblSettings"), "/home/settings.ini");
  EXPECT_THAT(view.Text("lblErrorsLog"), HasSubstr("errors.txt"));
  EXPECT_EQ(view.Text("lblLicences"), "a library (its licence)");
  view.Click("cmdCopy");
  EXPECT_EQ(view.Property("cmdCopy", "Caption"), "Copied");
  EXPECT_THAT(view.Property("cmdCopy", "Copies"), HasSubstr("Version: 1.2.3\r\nComputer: GATE7\r\n"));
  view.Click("cmdOK");
  EXPECT_TRUE(view.IsEmpty());
}

}  // namespace
}  // namespace LF2000::test
