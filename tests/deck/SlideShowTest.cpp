#include "deck/show/SlideShow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "basic/Error.h"
#include "deck/SlideShowFixture.h"

namespace deck::test {
namespace {

using support::DeckBuilder;
using support::textShape;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

TEST_F(SlideShowTest, GoesFromBeginningToEnd) {
  begin("vvv");
  EXPECT_THAT(events_.take(), ElementsAre("begin 1", "slide 1"));
  EXPECT_EQ(show_->View()->Slide()->SlideIndex(), 1);
  EXPECT_THAT(steps(3), ElementsAre(2, 3, 4));
  EXPECT_TRUE(show_->isAtEnd());
  EXPECT_THROW(static_cast<void>(show_->View()->Slide()), basic::Error);
  EXPECT_THAT(events_.take(), ElementsAre("slide 2", "slide 3")) << "the end slide is no slide";
  show_->previous();
  EXPECT_EQ(show_->position(), 3);
  EXPECT_THAT(steps(3), ElementsAre(4, 0, 0));
  EXPECT_THAT(events_.take(), ElementsAre("slide 3", "end"));
  EXPECT_THAT(heard_, ElementsAre("slide 0", "slide 2", "slide 3", "slide 4", "slide 3", "slide 4", "ended"));
  show_->goTo(1);
  show_->end();
  EXPECT_THAT(events_.take(), IsEmpty());
}

TEST_F(SlideShowTest, TakesTheWayThatSettingsAndHiddenSlidesLeave) {
  struct Case {
    const char* title;
    const char* slides;
    const char* properties;
    SlideShowOptions options;
    std::vector<std::int32_t> way;
  };
  SlideShowOptions looping;
  looping.loop = true;
  SlideShowOptions kiosk;
  kiosk.kiosk = true;
  SlideShowOptions third;
  third.startSlide = 3;
  SlideShowOptions range;
  range.firstSlide = 2;
  range.lastSlide = 3;
  const std::vector<Case> cases{
      {"hidden slides are skipped", "hvhvh", "", {}, {2, 4, 6, 0}},
      {"a loop wraps", "vhv", "", looping, {1, 3, 1, 3}},
      {"a kiosk loops", "vv", "", kiosk, {1, 2, 1}},
      {"the deck says kiosk", "vv", "<p:showPr><p:kiosk/></p:showPr>", {}, {1, 2, 1}},
      {"the deck says loop", "vv", "<p:showPr loop=\"1\"/>", {}, {1, 2, 1}},
      {"begins at a hidden slide when told so", "vvhv", "", third, {3, 4, 5}},
      {"a range", "vvvv", "", range, {2, 3, 5, 0}},
      {"the deck's range", "vvvv", "<p:showPr><p:sldRg st=\"3\" end=\"4\"/></p:showPr>", {}, {3, 4, 5}},
      {"only one visible, looping", "hvh", "", looping, {2, 2, 2}},
      {"all hidden", "hhh", "", {}, {1, 1, 1}},
      {"all hidden, looping", "hhh", "", looping, {1, 1, 1}},
      {"custom show", "vvv", "<p:showPr><p:custShow id=\"1\"/></p:showPr>", {}, {3, 1, 3, 4, 0}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.title);
    deck_ = DeckBuilder();
    if (*c.properties != '\0') deck_.presentationProperties(c.properties);
    deck_.customShow(1, {3, 1, 3});
    begin(c.slides, c.options);
    EXPECT_EQ(show_->position(), c.way.front());
    EXPECT_THAT(steps(static_cast<int>(c.way.size()) - 1), ElementsAreArray(c.way.begin() + 1, c.way.end()));
  }
}

TEST_F(SlideShowTest, TellsTheWayAhead) {
  const auto ahead = [&](std::int32_t slide) {
    show_->goTo(slide);
    const PowerPoint::SlidesAhead way = show_->View()->SlidesAhead();
    std::string text = way.Next ? std::to_string(*way.Next) : "none";
    for (const std::int32_t passed : way.PassedOver) text += " over " + std::to_string(passed);
    return text;
  };
  begin("vhhvh");
  EXPECT_EQ(ahead(1), "4 over 2 over 3");
  EXPECT_EQ(ahead(4), "none over 5 over 3 over 2") << "it may go back";
  show_->next();
  ASSERT_TRUE(show_->isAtEnd());
  EXPECT_EQ(show_->View()->SlidesAhead().Next, std::nullopt);

  deck_ = DeckBuilder();
  SlideShowOptions loop;
  loop.loop = true;
  begin("vhhvh", loop);
  EXPECT_EQ(ahead(4), "1 over 5");
  hide(1);
  EXPECT_EQ(ahead(4), "none over 5 over 1 over 2 over 3");

  deck_ = DeckBuilder();
  loop.firstSlide = 2;
  loop.lastSlide = 4;
  begin("vhvvv", loop);
  EXPECT_EQ(ahead(4), "3 over 2");
}

TEST_F(SlideShowTest, GoesWhereItIsTold) {
  begin("vhvhv");
  show_->last();
  EXPECT_EQ(show_->position(), 5);
  show_->previous();
  EXPECT_EQ(show_->position(), 3);
  show_->goTo(2);
  EXPECT_EQ(show_->position(), 2) << "a hidden slide may be asked for by number";
  EXPECT_EQ(show_->following(), 3);
  show_->first();
  show_->previous();
  EXPECT_EQ(show_->position(), 1);
  EXPECT_THROW(show_->goTo(6), basic::Error);
  EXPECT_THROW(show_->goTo(0), basic::Error);
  EXPECT_EQ(show_->position(), 1);
}

TEST_F(SlideShowTest, FollowsTheSlidesTimings) {
  begin("32v");
  EXPECT_EQ(after(2999), 1);
  EXPECT_EQ(after(1), 2);
  show_->previous();
  EXPECT_EQ(after(2999), 1) << "each showing of a slide has its full time";
  EXPECT_EQ(after(1 + 2000), 3);
  EXPECT_EQ(after(1000000), 3) << "a slide without a timing waits";
}

TEST_F(SlideShowTest, SlidesWithoutATimingTakeTheOneGivenForThem) {
  SlideShowOptions kiosk;
  kiosk.kiosk = true;
  kiosk.seconds = 1.5;
  begin("3vv", kiosk);
  EXPECT_EQ(after(2999), 1) << "its own goes before";
  EXPECT_EQ(after(1 + 1500), 3);
  EXPECT_EQ(after(1500), 1);

  deck_ = DeckBuilder();
  kiosk.useTimings = false;
  begin("3v", kiosk);
  EXPECT_EQ(after(1500), 2) << "a show that does without timings has none";
}

TEST_F(SlideShowTest, TimingsStopWhenBlankOrUnwantedOrOver) {
  begin("22");
  show_->blank(Blank::Black);
  EXPECT_EQ(after(10000), 1);
  show_->blank(Blank::None);
  EXPECT_EQ(after(2000), 2);
  show_->blank(Blank::White);
  show_->next();
  EXPECT_EQ(show_->blank(), Blank::None) << "another slide ends the blank";
  EXPECT_TRUE(show_->isAtEnd());
  loop_.Advance(10000);
  EXPECT_TRUE(show_->isRunning()) << "the end slide waits";
  EXPECT_THAT(heard_,
              ElementsAre("slide 0", "blank 1", "blank 0", "slide 2", "blank 2", "blank 0", "slide 3"));

  deck_ = DeckBuilder();
  SlideShowOptions byHand;
  byHand.useTimings = false;
  begin("12", byHand);
  EXPECT_EQ(after(10000), 1);
}

TEST_F(SlideShowTest, LeavesASlideThatBecomesHiddenButNotAtOnce) {
  begin("vvv");
  hide(1);
  EXPECT_EQ(show_->position(), 1) << "whoever hides it is in the midst of its work";
  EXPECT_EQ(after(10), 2);
  hide(2);
  hide(2, false);
  EXPECT_EQ(after(10), 2) << "hidden and shown again within one turn";
  hide(3);
  hide(2);
  hide(1, false);
  EXPECT_EQ(after(10), 1) << "back to what there is to see";
  hide(1);
  EXPECT_EQ(after(10), 1) << "nothing else to see";
  show_->goTo(3);
  hide(1, false);
  hide(3, false);
  hide(3);
  EXPECT_EQ(after(10), 3) << "asked for by number";
  show_->first();
  hide(2, false);
  hide(1);
  show_->goTo(1);
  EXPECT_EQ(after(10), 1) << "asked for within the turn that hid it";
}

TEST_F(SlideShowTest, WaitsWhereEverySlideIsHiddenAndGoesToTheFirstThatReturns) {
  begin("vvv");
  for (int slide : {1, 2, 3}) hide(slide);
  loop_.Advance(10);
  EXPECT_TRUE(show_->isEmpty());
  show_->next();
  EXPECT_TRUE(show_->isEmpty());
  EXPECT_FALSE(show_->isAtEnd());
  hide(2, false);
  EXPECT_FALSE(show_->isEmpty());
  EXPECT_EQ(after(10), 2);
  hide(2);
  loop_.Advance(10);
  show_->goTo(3);
  EXPECT_FALSE(show_->isEmpty()) << "asked for by number";
}

/// An effect of the main sequence; `node` is "clickEffect", "withEffect" or "afterEffect".
std::string effect(const std::string& node, const std::string& kind, int preset, int shape) {
  return "<p:par><p:cTn presetID=\"" + std::to_string(preset) + "\" presetClass=\"" + kind +
         "\" presetSubtype=\"8\" nodeType=\"" + node +
         "\"><p:childTnLst><p:set><p:cBhvr><p:tgtEl><p:spTgt spid=\"" + std::to_string(shape) +
         "\"/></p:tgtEl></p:cBhvr></p:set><p:animEffect><p:cBhvr><p:cTn "
         "dur=\"300\"/></p:cBhvr></p:animEffect>"
         "</p:childTnLst></p:cTn></p:par>";
}
std::string click(const std::string& effects) {
  return "<p:par><p:cTn><p:childTnLst>" + effects + "</p:childTnLst></p:cTn></p:par>";
}
std::string timing(const std::string& clicks) {
  return "<p:timing><p:tnLst><p:par><p:cTn nodeType=\"tmRoot\"><p:childTnLst><p:seq><p:cTn "
         "nodeType=\"mainSeq\"><p:childTnLst>" +
         clicks + "</p:childTnLst></p:cTn></p:seq></p:childTnLst></p:cTn></p:par></p:tnLst></p:timing>";
}

TEST_F(SlideShowTest, BuildsUpASlideClickByClick) {
  const std::string clicks =
      click(effect("afterEffect", "entr", 10, 9)) +
      click(effect("clickEffect", "entr", 22, 2) + effect("withEffect", "entr", 1, 3)) +
      click(effect("clickEffect", "emph", 6, 2)) + click(effect("clickEffect", "entr", 10, 2)) +
      click(effect("clickEffect", "exit", 10, 2) + effect("afterEffect", "exit", 1, 4));
  deck_.addSlide();
  deck_.afterCommonData(1, timing(clicks));
  begin("v");
  const auto hidden = [&] { return show_->builds().hiddenAfter(show_->builtSteps()); };
  EXPECT_EQ(show_->builds().steps(), 2U) << "what starts by itself or comes once more is no step";
  EXPECT_THAT(hidden(), ElementsAre(2, 3));
  EXPECT_EQ(show_->builds().step(0).front().kind, "wipe");
  EXPECT_EQ(show_->builds().step(0).front().direction, "r");
  EXPECT_EQ(show_->builds().step(0).front().milliseconds, 300);
  EXPECT_THAT(steps(1), ElementsAre(1));
  EXPECT_THAT(hidden(), IsEmpty());
  EXPECT_THAT(steps(1), ElementsAre(1));
  EXPECT_THAT(hidden(), ElementsAre(2, 4));
  EXPECT_THAT(steps(1), ElementsAre(2));
  show_->previous();
  EXPECT_THAT(hidden(), ElementsAre(2, 4)) << "back to the slide as it was left";
  show_->previous();
  show_->previous();
  EXPECT_EQ(show_->builtSteps(), 0U);
  EXPECT_EQ(show_->position(), 1);

  SlideShowOptions kiosk;
  kiosk.kiosk = true;
  begin("", kiosk);
  EXPECT_EQ(show_->builds().steps(), 0U);
  EXPECT_THAT(hidden(), IsEmpty()) << "nobody clicks in a kiosk";
}

TEST_F(SlideShowTest, SkipsWhatTheBeginningHid) {
  events_.onBegin = [this](const auto& window) {
    EXPECT_EQ(window->Presentation(), presentation_);
    hide(1);
    hide(2);
    window->View()->PointerType(PowerPoint::SlideShowPointerType::AlwaysHidden);
  };
  begin("vvv");
  EXPECT_THAT(events_.take(), ElementsAre("begin 1", "slide 3"));
  EXPECT_EQ(show_->View()->PointerType(), PowerPoint::SlideShowPointerType::AlwaysHidden);
}

TEST_F(SlideShowTest, NeedsASlideAndARangeThatExists) {
  EXPECT_THROW(begin(""), basic::Error);
  SlideShowOptions beyond;
  beyond.lastSlide = 3;
  EXPECT_THROW(begin("vv", beyond), basic::Error);
  EXPECT_THAT(events_.take(), IsEmpty());
}

}  // namespace
}  // namespace deck::test
