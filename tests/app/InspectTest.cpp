// What a look over a deck finds in its links, and where errors go meanwhile.

#include <gmock/gmock.h>

#include "addin/support/modErrors.h"
#include "app/ShowTest.h"
#include "app/inspect/CollectedErrors.h"
#include "app/inspect/LinkCheck.h"
#include "app/inspect/LinkRepair.h"
#include "app/inspect/Standstill.h"
#include "app/wiring/LinkedShapes.h"

namespace app::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct InspectTest : ShowTest {
  /// A deck whose shapes p1, p2, ... show these {connection, column, row} of prices.txt.
  static support::DeckBuilder linked(const std::vector<std::vector<std::string>>& links) {
    support::DeckBuilder deck;
    const int slide = deck.addSlide();
    std::string shapes;
    int id = 1;
    for (const auto& link : links) {
      const std::string tags = deck.relate(slide, "tags",
                                           deck.addTags({{"CORVANE COLUMN TYPE", "2"},
                                                         {"CORVANE COLUMN TAG", link[0]},
                                                         {"CORVANE COLUMN COLUMNNAME", link[1]},
                                                         {"CORVANE COLUMN ROW", link[2]}}));
      const std::string name = "p" + std::to_string(id++);
      shapes += support::textShape(id, name, "x", support::tagsReference(tags));
    }
    deck.shapes(slide, shapes);
    deck.presentationTags(
        {{"CORVANE VERSION", "1"}, {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"}});
    return deck;
  }
  static std::vector<std::string> check(const support::DeckBuilder& deck) {
    std::vector<std::string> texts;
    for (const Finding& finding : checkLinks(*deck.presentation())) {
      const bool isBroken = finding.gravity == Finding::Gravity::Broken;
      texts.push_back((isBroken ? finding.shape : "note") + ": " + finding.text);
    }
    return texts;
  }
};

TEST_F(InspectTest, FindsLinksThatLeadNowhere) {
  machine.files.Write("/decks/prices.txt", "Price\tItem\n3\tTea\n");
  EXPECT_THAT(check(linked({{"001", "price", "1"},
                            {"001", "Cost", "1"},
                            {"001", "Item", "2"},
                            {"001", "Item", "0"},
                            {"002", "Item", "1"}})),
              ElementsAre("p2: Connection 001 (Prices) has no column 'Cost'.",
                          "p4: Row 0 is none: rows count from 1.",
                          "p5: It is linked to connection 002, which the deck does not have.",
                          "note: Connection 001 (Prices) has 1 row today; what shows row 2 of it is blank."));
}

TEST_F(InspectTest, FindsGraphsThatAreObjects) {
  support::DeckBuilder deck = linked({});
  std::string graph =
      support::graphicFrame(7, "Sales", "http://schemas.openxmlformats.org/presentationml/2006/ole",
                            R"(<p:oleObj progId="MSGraph.Chart.8" r:id="rId9"><p:embed/></p:oleObj>)");
  const std::string tags =
      deck.relate(1, "tags", deck.addTags({{"CORVANE COLUMN TYPE", "4"}, {"CORVANE COLUMN TAG", "001"}}));
  const std::string properties = "<p:nvPr/>";
  graph.replace(graph.find(properties), properties.size(),
                "<p:nvPr>" + support::tagsReference(tags) + "</p:nvPr>");
  deck.shapes(1, graph);
  EXPECT_THAT(check(deck),
              testing::Contains("Sales: An object of the kind 'MSGraph.Chart.8' cannot be refilled; a "
                                "chart of PowerPoint 2007 or later can."));
}

TEST_F(InspectTest, MendsLinksThatMissTheSameTogether) {
  const auto deck =
      linked({{"001", "Preis", "1"}, {"001", "PREIS", "2"}, {"003", "Item", "1"}, {"001", "Item", "1"}})
          .presentation();
  const std::vector<CheckedSource> sources{{"001", "Prices", {{"Item", "Price"}, {}, 2, {}, {}, {}}}};
  const std::vector<LinkRepair> repairs = repairsFor(checkLinks(*deck, sources), sources);
  ASSERT_EQ(repairs.size(), 2U);
  EXPECT_EQ(repairs[0].text(), "Column 'Preis' is gone from connection 001 (Prices). 2 shapes use it.");
  EXPECT_THAT(repairs[0].choices, ElementsAre("Price", "Item"));
  EXPECT_EQ(repairs[1].text(), "The deck has no connection 003. 1 shape uses it.");

  repair(*deck, repairs[0], "Price");
  repair(*deck, repairs[1], repairs[1].choices.front());
  EXPECT_THAT(repairsFor(checkLinks(*deck, sources), sources), testing::IsEmpty());
  EXPECT_EQ(linkedShapes(*deck, 1)[1].column, "Price");
  EXPECT_EQ(linkedShapes(*deck, 1)[2].connection, "001");
}

TEST_F(InspectTest, NotesRowsThatAreNotShownToday) {
  EXPECT_THAT(check(linked({{"001", "Cost", "9"}})), ElementsAre(HasSubstr("prices.txt")))
      << "of columns nothing is said where the source itself is missing";
  const auto deck = linked({{"001", "Price", "1"}, {"001", "Price", "2"}});
  machine.files.Write("/decks/prices.txt", "Price\n1\n2\n3\n");
  EXPECT_THAT(
      check(deck),
      ElementsAre("note: Connection 001 (Prices) has 3 rows today; the deck shows none below row 2."));
  machine.files.Write("/decks/prices.txt", "Price\n");
  EXPECT_THAT(check(deck), ElementsAre("note: Connection 001 (Prices) has 0 rows today; what shows rows 1 to "
                                       "2 of it is blank."));
}

TEST_F(InspectTest, TellsWhereALoopStandsStill) {
  // A letter for each slide: "t" has a timing, "h" is hidden, "v" neither.
  const auto standstill = [](const std::string& slides, bool loops, std::optional<double> seconds) {
    support::DeckBuilder deck;
    for (const char kind : slides) {
      const int slide = deck.addSlide();
      if (kind == 't') deck.afterCommonData(slide, "<p:transition advTm=\"5000\"/>");
      if (kind == 'h') deck.slideAttributes(slide, "show=\"0\"");
    }
    deck::SlideShowOptions options;
    options.loop = loops;
    options.seconds = seconds;
    const auto text = standstillOf(deck::ShowCourse(deck.presentation(), options)).value_or("");
    return text.substr(0, text.find(" until"));
  };
  const std::string begin = "The show loops, but ";
  EXPECT_EQ(standstill("vv", true, {}), begin + "no slide goes on by itself, so it stays on its first one");
  EXPECT_EQ(standstill("tvhv", true, {}),
            begin + "slides 2 and 4 do not go on by themselves, so it stays there");
  EXPECT_EQ(standstill("tv", true, {}), begin + "slide 2 does not go on by itself, so it stays there");
  EXPECT_EQ(standstill("tv", true, 8), "");
  EXPECT_EQ(standstill("tht", true, {}), "");
  EXPECT_EQ(standstill("vh", true, {}), "") << "one slide is enough";
  EXPECT_EQ(standstill("vv", false, {}), "") << "somebody steers it";
}

TEST_F(InspectTest, ErrorsAreCollectedBesideTheLog) {
  LF2000::modErrors::WriteErrorLog("before");
  const std::string log = errorLog();
  {
    const CollectedErrors errors;
    LF2000::modErrors::WriteErrorLog("first");
    LF2000::modErrors::WriteErrorLog("second\r\nline");
    LF2000::modErrors::WriteErrorLog("first");
    EXPECT_EQ(host::Current().messageBox->MsgBox("?", host::vbYesNo, ""), host::MsgBoxResult::No);
    EXPECT_THAT(errors.texts(), ElementsAre("first", "second line"));
  }
  EXPECT_EQ(errorLog(), log);
  EXPECT_TRUE(machine.messageBox.shown.empty());
  LF2000::modErrors::WriteErrorLog("after");
  EXPECT_THAT(errorLog(), HasSubstr("after"));
}

}  // namespace
}  // namespace app::test
