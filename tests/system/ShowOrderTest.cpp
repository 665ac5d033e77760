// What is kept current in shows of a range, custom shows and loops: the deck's own show engine drives the
// runtime.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "addin/support/modErrors.h"
#include "deck/show/SlideShow.h"
#include "fakes/FakeServices.h"
#include "runtime/clsRuntime.h"
#include "support/DeckBuilder.h"
#include "support/RecordedEvents.h"

namespace LF2000 {
namespace {

using testing::ElementsAre;

/// Slides with one text each from a file of its own, that hide while it holds no value.
struct ShowOrderTest : testing::Test {
  fakes::Machine machine;
  support::DeckBuilder builder;
  std::shared_ptr<deck::Application> application = std::make_shared<deck::Application>();
  std::shared_ptr<deck::Presentation> deck;
  std::shared_ptr<deck::SlideShow> show;
  clsRuntime runtime;
  support::RecordedEvents events;

  ShowOrderTest() {
    modErrors::SlideShowRunning = true;
    application->Advise(&events);
    events.onBegin = [this](const auto& window) {
      runtime.ActivePresentation(window->Presentation());
      runtime.StartTimers(window);
    };
    events.onSlide = [this](const auto& window) { runtime.SlideShowNextSlide(window); };
    events.onEnd = [this] { runtime.UnSetLinkedObjects(); };
  }
  ~ShowOrderTest() override {
    if (show) show->end();
  }
  static std::string File(int slide) { return "/decks/" + std::to_string(slide) + ".txt"; }
  void Write(int slide, const std::string& value) {
    machine.files.Write(File(slide), value.empty() ? "Value\n" : "Value\n" + value + "\n");
  }
  /// `values` by slide; an empty one is no data.
  void Begin(const std::vector<std::string>& values, const deck::SlideShowOptions& options) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      builder.addSlide(support::textShape(2, "value", "author's"));
    }
    deck = builder.presentation();
    deck->Tags()->Add("CORVANE VERSION", "1");
    for (int slide = 1; slide <= static_cast<int>(values.size()); ++slide) {
      const std::string number = "00" + std::to_string(slide);
      Write(slide, values[static_cast<std::size_t>(slide) - 1]);
      deck->Tags()->Add("CORVANE CONNECTION" + number, "0\tFile\t" + File(slide) + "\t-1\t");
      const auto item = deck->Slides()->Item(slide);
      item->Tags()->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
      const auto tags = item->Shapes()->Item("value")->Tags();
      tags->Add("CORVANE COLUMN TYPE", "2");
      tags->Add("CORVANE COLUMN TAG", number);
      tags->Add("CORVANE COLUMN COLUMNNAME", "Value");
      tags->Add("CORVANE COLUMN ROW", "1");
    }
    show = deck::SlideShow::begin(*application, deck, machine.loop, options);
  }
  std::string Text(int slide) {
    return deck->Slides()->Item(slide)->Shapes()->Item("value")->TextFrame()->TextRange()->Text();
  }
  std::vector<std::string> Texts() {
    std::vector<std::string> all;
    for (int slide = 1; slide <= deck->slideCount(); ++slide) all.push_back(Text(slide));
    return all;
  }
  void WriteAll(const std::string& value) {
    for (int slide = 1; slide <= deck->slideCount(); ++slide) Write(slide, value);
  }
};

TEST_F(ShowOrderTest, ARangeLeavesTheOtherSlidesAloneAndItsHiddenSlideReturns) {
  deck::SlideShowOptions range;
  range.firstSlide = 1;
  range.lastSlide = 2;
  range.loop = true;
  Begin({"", "b", "c"}, range);
  ASSERT_EQ(show->position(), 2);
  WriteAll("new");
  Write(1, "");
  machine.loop.Advance(3000);
  EXPECT_THAT(Texts(), ElementsAre(" ", "new", "c"));
  EXPECT_TRUE(deck->isHidden(1));
  Write(1, "back");
  machine.loop.Advance(1000);
  EXPECT_FALSE(deck->isHidden(1));
  show->next();
  EXPECT_EQ(show->position(), 1);
  EXPECT_EQ(Text(1), "back");
}

TEST_F(ShowOrderTest, ACustomShowKeepsItsNextSlideFresh) {
  builder.customShow(1, {4, 2, 1});
  builder.presentationProperties("<p:showPr loop=\"1\"><p:custShow id=\"1\"/></p:showPr>");
  Begin({"a", "b", "c", "d"}, {});
  ASSERT_EQ(show->position(), 4);
  WriteAll("new");
  machine.loop.Advance(1000);
  EXPECT_THAT(Texts(), ElementsAre("a", "new", "c", "new"));
  Write(2, "");
  machine.loop.Advance(2000);
  EXPECT_THAT(Texts(), ElementsAre("new", " ", "c", "new")) << "slide 2 is passed over";
  Write(2, "back");
  machine.loop.Advance(1000);
  EXPECT_FALSE(deck->isHidden(2));
  for (const int slide : {2, 1, 4}) {
    show->next();
    EXPECT_EQ(show->position(), slide);
  }
}

TEST_F(ShowOrderTest, AShowThatDoesNotLoopHasNothingBehindItsLastSlide) {
  Begin({"a", "b", ""}, {});
  show->next();
  WriteAll("new");
  Write(3, "");
  machine.loop.Advance(2000);
  EXPECT_THAT(Texts(), ElementsAre("a", "new", " "));
  Write(3, "back");
  machine.loop.Advance(1000);
  show->next();
  EXPECT_EQ(show->position(), 3);
}

TEST_F(ShowOrderTest, WithEverySlideHiddenTheFirstWhoseDataReturnIsShown) {
  for (const bool loop : {true, false}) {
    builder = {};
    deck::SlideShowOptions options;
    options.loop = loop;
    Begin({"a", "b", "c"}, options);
    show->next();
    WriteAll("");
    machine.loop.Advance(3000);
    ASSERT_TRUE(show->isEmpty());
    Write(1, "back");
    machine.loop.Advance(1100);
    EXPECT_EQ(show->position(), 1) << "looping " << loop;
    EXPECT_EQ(Text(1), "back");
    show->end();
  }
}

}  // namespace
}  // namespace LF2000
