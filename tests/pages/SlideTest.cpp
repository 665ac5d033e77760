// The page of a slide: its switches, its scroll entries, and what is said about them.

#include <gmock/gmock.h>

#include "pages/OpenDeck.h"
#include "pages/ScrollPlay.h"

namespace LF2000 {
namespace {

using modPropertyPages::Page;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

using SlideTest = OpenDeck;

TEST_F(SlideTest, NothingSelectedShowsTheSlideWithItsSwitches) {
  Dock({});
  ASSERT_EQ(view.TopName(), "frmSlide");
  EXPECT_THAT(view.Text("lblHides"), HasSubstr("Nothing on this slide is linked"));
  AddField("a", 1);
  AddField("b", 1, "Name", "002");
  view.Check("chkHideWhenNoData", true);
  EXPECT_EQ((*slide.tags)["CORVANE SLIDE PROPERTIES"], "-1\t0\t");
  EXPECT_EQ(view.Text("lblHides"), "now: 2 of 2 connections have rows, the slide shows");
  view.Check("chkRefreshLinkedObjects", true);
  EXPECT_EQ((*slide.tags)["CORVANE SLIDE PROPERTIES"], "-1\t-1\t");
  EXPECT_THAT(Steps(), ElementsAre("Slide properties", "Slide properties"));

  machine.files.Write("/decks/today.txt", "Item\tPrice\n");
  machine.files.Write("/decks/offer.txt", "Name\tPRICE\n");
  for (const auto& connection : presentation->Connections()) connection->Requery(true);
  modPages::Refresh(presentation);
  EXPECT_EQ(view.Text("lblHides"), "now: 0 of 2 connections have rows, the slide hides");
  view.Check("chkHideWhenNoData", false);
  EXPECT_EQ(view.Text("lblHides"), "now: 0 of 2 connections have rows, the slide shows");
  slide.shapes[0]->tags->items[1].second = "009";
  view.Check("chkHideWhenNoData", true);
  EXPECT_EQ(view.Text("lblHides"), "now: 0 of 2 connections have rows, the slide shows (no answer yet: 009)");
}

TEST_F(SlideTest, ForetellsByValuesAsAShowJudges) {
  Dock({});
  AddField("a", 9);
  view.Check("chkHideWhenNoData", true);
  EXPECT_EQ(view.Text("lblHides"),
            "now: 1 of 1 connection has rows, but none with a value that a shape shows, the slide hides");
  AddField("gone", 1, "No such column");
  modPages::Refresh(presentation);
  EXPECT_EQ(view.Text("lblHides"), "now: 1 of 1 connection has rows, the slide shows");
  slide.shapes.pop_back();
  AddField("b", 1);
  modPages::Refresh(presentation);
  EXPECT_EQ(view.Text("lblHides"), "now: 1 of 1 connection has rows, the slide shows");
}

TEST_F(SlideTest, ScrollEntriesAreAddedChangedAndRemoved) {
  AddField("a", 1);
  AddField("b", 2);
  AddField("7", 1, "Name", "002");
  Dock({});
  EXPECT_EQ(view.Click("cmdRemove"), "Choose an entry first.");
  view.Set("txtEntry", "1");
  EXPECT_EQ(view.Text("lblMoves"), "moves the 2 shapes of 001");
  view.Set("txtStep", "2");
  view.Set("txtTime", "5000");
  EXPECT_THAT(slide.tags->items, IsEmpty()) << "not before it is added";
  view.Click("cmdAdd");
  EXPECT_EQ((*slide.tags)["CORVANE SCROLLSTEP1"], "True\t2\t5000");
  EXPECT_EQ(view.Click("cmdAdd"), "The entry is there already; its fields change it.");
  view.Set("txtStep", "-3");
  view.Check("chkScroll", false);
  EXPECT_EQ((*slide.tags)["CORVANE SCROLLSTEP1"], "False\t-3\t5000");

  view.Set("txtEntry", "7");
  EXPECT_EQ(view.Text("lblMoves"), "moves shape '7'");
  view.Click("cmdAdd");
  view.Select("lstScroll", {0});
  EXPECT_EQ(view.Text("txtEntry"), "1");
  const auto& items = view.Get<Forms::ListBox>("lstScroll").Items();
  ASSERT_EQ(items.size(), 2U);
  EXPECT_THAT(items[1].Cells, ElementsAre("shape '7'", "-3", "5000", "no"));
  view.Click("cmdRemove");
  EXPECT_EQ((*slide.tags)["CORVANE SCROLLSTEP1"], "(none)");
  EXPECT_NE((*slide.tags)["CORVANE SCROLLSTEP7"], "(none)");
}

TEST_F(SlideTest, WhatIsNoEntryIsComplainedAbout) {
  Dock({});
  const struct {
    const char* control;
    const char* text;
    const char* problem;
  } cases[] = {
      {"txtEntry", "0", "Entries run from 1 to 999."},
      {"txtEntry", "1000", "Entries run from 1 to 999."},
      {"txtEntry", "x", "Entries run from 1 to 999."},
      {"txtStep", "0", "A step of 0 rows is no scrolling."},
      {"txtStep", "1000001", "Rows to move by, below 0 backwards, from -1000000 to 1000000."},
      {"txtTime", "19", "Milliseconds from one step to the next, from 20 to 86400000."},
      {"txtTime", "1e3", "Milliseconds from one step to the next, from 20 to 86400000."},
  };
  for (const auto& c : cases) {
    view.Set("txtEntry", "5");
    view.Set("txtStep", "1");
    view.Set("txtTime", "1000");
    view.Set(c.control, c.text);
    view.Click("cmdAdd");
    EXPECT_EQ(view.Problem(c.control), c.problem) << c.text;
  }
  EXPECT_THAT(slide.tags->items, IsEmpty());
}

TEST_F(SlideTest, ADialogWritesOnOKAndLosesNoEntryThatWasTyped) {
  slide.tags->items = {{"CORVANE SCROLLSTEP3", "what"}, {"CORVANE SLIDE PROPERTIES", "-1\t0\t"}};
  const auto before = slide.tags->items;
  Open(Page::Slide, {});
  EXPECT_THAT(view.Text("lblProblems"), HasSubstr("Scroll entry 3 cannot be read"));
  view.Click("cmdOK");
  EXPECT_EQ(slide.tags->items, before) << "nothing was changed";
  Open(Page::Slide, {});
  view.Check("chkHideWhenNoData", false);
  view.Set("txtEntry", "2");
  view.Click("cmdOK");
  EXPECT_NE(view.Problem("txtStep"), "");
  view.Set("txtStep", "1");
  view.Set("txtTime", "20");
  EXPECT_EQ(slide.tags->items, before);
  view.Click("cmdOK");
  EXPECT_THAT(slide.tags->items, ElementsAre(Pair("CORVANE SLIDE PROPERTIES", "0\t0\t"),
                                             Pair("CORVANE SCROLLSTEP2", "True\t1\t20")));
  EXPECT_THAT(Steps(), ElementsAre("Slide properties"));
}

struct ScrollPlayTest : OpenDeck {
  ScrollPlayTest() {
    slide.tags->items = {{"CORVANE SCROLLSTEP1", "True\t2\t500"}};
    AddField("a", 1, "Item");
    AddField("b", 2, "Item");
    AddField("still", 1, "Name", "002");
    presentation->FillValues(false);
    Dock({});
  }
  std::string Texts() {
    std::string texts;
    for (const auto& shape : slide.shapes) texts += shape->text + "|";
    return texts;
  }
  static constexpr const char* AtRest = "Rye|Plum|Cake|";
};

TEST_F(ScrollPlayTest, StepsThroughThePagesAsAShowWouldAndChangesNothing) {
  const auto tags = slide.tags->items;
  deck->saved = true;
  ASSERT_EQ(Texts(), AtRest);
  view.Click("cmdPlay");
  EXPECT_EQ(view.Property("cmdPlay", "Caption"), "Sto&p");
  EXPECT_EQ(Texts(), "Seed| |Cake|") << "beyond the data nothing is shown, nor marked";
  machine.loop.Advance(499);
  EXPECT_EQ(Texts(), "Seed| |Cake|");
  machine.loop.Advance(1);
  EXPECT_EQ(Texts(), AtRest);
  machine.loop.Advance(500);
  EXPECT_EQ(Texts(), "Seed| |Cake|");
  view.Click("cmdPlay");
  EXPECT_EQ(view.Property("cmdPlay", "Caption"), "&Play");
  EXPECT_EQ(Texts(), AtRest);
  machine.loop.Advance(10'000);
  EXPECT_EQ(Texts(), AtRest);
  EXPECT_EQ(slide.tags->items, tags);
  EXPECT_TRUE(deck->saved);
  EXPECT_THAT(Steps(), IsEmpty());
}

TEST_F(ScrollPlayTest, NoPageStandsLongerThanTwoSecondsOrUnreadablyShort) {
  const auto stands = [&](const char* time) {
    slide.tags->items = {{"CORVANE SCROLLSTEP1", std::string("True\t2\t") + time}};
    modPages::Refresh(presentation);
    view.Click("cmdPlay");
    int milliseconds = 0;
    while (Texts() != AtRest && milliseconds < 10'000) {
      machine.loop.Advance(10);
      milliseconds += 10;
    }
    view.Click("cmdPlay");
    return milliseconds;
  };
  EXPECT_EQ(stands("60000"), 2000);
  EXPECT_EQ(stands("20"), 100);
}

TEST_F(ScrollPlayTest, AnythingElseEndsItAndNewDataAreTakenUp) {
  view.Click("cmdPlay");
  machine.files.Write("/decks/today.txt", "Item\tPrice\nA\t1\nB\t2\nC\t3\nD\t4\n");
  presentation->Connections().front()->Requery(true);
  presentation->FillConnection("001");
  ASSERT_EQ(Texts(), "A|B|Cake|");
  modPages::Refresh(presentation);
  EXPECT_EQ(Texts(), "C|D|Cake|") << "the page that was on";
  view.Check("chkHideWhenNoData", true);
  EXPECT_EQ(Texts(), "A|B|Cake|");
  EXPECT_FALSE(machine.loop.HasTimers());

  view.Click("cmdPlay");
  ASSERT_EQ(Texts(), "C|D|Cake|");
  Dock({slide.shapes.front()});
  EXPECT_EQ(Texts(), "A|B|Cake|");
  machine.loop.Advance(10'000);
  EXPECT_EQ(Texts(), "A|B|Cake|");
}

TEST_F(ScrollPlayTest, StepsOncePerPeriodWhoeverPlays) {
  view.Click("cmdPlay");
  machine.loop.Advance(250);
  // On the page of another window.
  auto other = std::make_shared<ScrollPlay>(presentation, deck->slides.front());
  clsSlide properties;
  properties.ReadTags(*slide.tags);
  other->TakeUp(properties);
  other->Start();
  EXPECT_EQ(view.Property("cmdPlay", "Caption"), "&Play");
  EXPECT_EQ(Texts(), "Seed| |Cake|");
  machine.loop.Advance(499);
  EXPECT_EQ(Texts(), "Seed| |Cake|");
  machine.loop.Advance(1);
  EXPECT_EQ(Texts(), AtRest);
  machine.loop.Advance(500);
  EXPECT_EQ(Texts(), "Seed| |Cake|");
  other.reset();
  EXPECT_EQ(Texts(), AtRest);
  EXPECT_FALSE(machine.loop.HasTimers());
}

TEST_F(ScrollPlayTest, SaysWhyThereIsNothingToPlay) {
  machine.files.Write("/decks/today.txt", "Item\tPrice\nA\t1\n");
  presentation->Connections().front()->Requery(true);
  modPages::Refresh(presentation);
  EXPECT_EQ(view.Click("cmdPlay"), "The data have no further rows to scroll to.");
  slide.tags->items = {{"CORVANE SCROLLSTEP1", "False\t2\t500"}};
  modPages::Refresh(presentation);
  EXPECT_EQ(view.Click("cmdPlay"), "Nothing on this slide scrolls.");
}

}  // namespace
}  // namespace LF2000
