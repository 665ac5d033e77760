// A running show, its views and its end.

#include "app/show/LiveShow.h"

#include "app/ShowTest.h"

namespace app::test {
namespace {

struct LiveShowTest : ShowTest {
  ToldOnce problems;
  int ends = 0;

  std::unique_ptr<LiveShow> show(const support::DeckBuilder& deck) {
    auto live = std::make_unique<LiveShow>(
        host.application(), open(deck), loop, [this] { return host.runtimeTimer(); }, LiveShowOptions(),
        problems);
    live->begin({}, [this] { ++ends; });
    return live;
  }
};

TEST_F(LiveShowTest, AShowThatBeginsAgainIsNotOver) {
  support::DeckBuilder deck = support::DeckBuilder::of();
  const auto live = show(deck);
  live->leave();
  live->begin({}, [this] { ++ends; });
  runPosted();
  EXPECT_EQ(ends, 0);
  live->shutDown();
  runPosted();
  EXPECT_EQ(ends, 1);
}

TEST_F(LiveShowTest, AShapeThatCannotBeDrawnAloneIsAnEmptyView) {
  support::DeckBuilder deck;
  const int slide = deck.addSlide();
  const std::string ink = deck.relate(slide, "customXml", "../ink/ink1.xml");
  deck.shapes(
      slide,
      "<p:contentPart r:id=\"" + ink +
          "\"><p:nvContentPartPr><p:cNvPr id=\"4294967295\" name=\"Ink\"/><p:cNvContentPartPr/><p:nvPr/>"
          "</p:nvContentPartPr></p:contentPart>" +
          support::textShape(2, "Text", "drawn"));
  const auto live = show(deck);
  const web::View view = live->view(std::nullopt, "Ink");
  EXPECT_EQ(view.elementId, "s1-sh4294967295");
  EXPECT_FALSE(live->state(view).current.has_value());
  EXPECT_NE(errorLog(), "");

  const auto drawn = live->state(live->view(std::nullopt, "Text"));
  ASSERT_TRUE(drawn.current.has_value());
  EXPECT_NE(drawn.current->html.find("drawn"), std::string::npos);
  EXPECT_LT(drawn.height, 100);
}

}  // namespace
}  // namespace app::test
