#include <gmock/gmock.h>

#include "deck/SlideShowFixture.h"
#include "support/TemporaryFolder.h"

namespace deck::test {
namespace {

using support::DeckBuilder;
using support::TemporaryFolder;
using support::textShape;
using testing::ElementsAre;

TEST_F(SlideShowTest, GoesOnWhereAnotherShowStands) {
  fakes::Clock clock(loop_);
  host::Services services;
  services.clock = &clock;
  host::Use(services);
  begin("v3vh");
  show_->goTo(2);
  loop_.Advance(2000);
  show_->blank(Blank::Black);
  show_->blank(Blank::None);
  loop_.Advance(1000);
  SlideShowOptions next;
  const auto goOn = [&](const char* slides) {
    deck_ = DeckBuilder();
    begin(slides, next);
  };
  next.place = show_->place();
  goOn("v3vh");
  EXPECT_EQ(show_->position(), 2);
  EXPECT_EQ(after(1999), 2);
  EXPECT_EQ(after(1), 3) << "its time ran on from the show before";

  show_->blank(Blank::White);
  next.place = show_->place();
  goOn("vvvh");
  EXPECT_EQ(show_->position(), 3);
  EXPECT_EQ(show_->blank(), Blank::White);

  show_->goTo(4);
  next.place = show_->place();
  goOn("vvvh");
  EXPECT_EQ(show_->position(), 4) << "chosen by number, hidden as it is";
  next.place->isChosen = false;
  goOn("vvvh");
  EXPECT_EQ(show_->position(), 4) << "with nothing behind it, the show stays";
  next.place->slide = 1;
  goOn("hvv");
  EXPECT_EQ(show_->position(), 2) << "the author has hidden it meanwhile";

  show_->last();
  show_->next();
  next.place = show_->place();
  goOn("vvv");
  EXPECT_TRUE(show_->isAtEnd());
  show_->previous();
  EXPECT_EQ(show_->position(), 3);
  next.place->slide = 7;
  EXPECT_THROW(begin("", next), basic::Error);
  host::Use({});
}

TEST_F(SlideShowTest, StandsWhenItIsThroughAndAnotherFollows) {
  isFollowed_ = true;
  SlideShowOptions looping;
  looping.loop = true;
  for (const SlideShowOptions& options : {SlideShowOptions(), looping}) {
    deck_ = support::DeckBuilder();
    begin("1h1h", options);
    heard_.clear();
    EXPECT_EQ(after(5000), 3) << "nothing moves until the other one is there";
    EXPECT_THAT(heard_, ElementsAre("slide 3", "through"));
    isFollowed_ = false;
    show_->next();
    EXPECT_EQ(show_->position(), options.loop ? 1 : 5) << "the other one failed";
    isFollowed_ = true;
  }
  deck_ = support::DeckBuilder();
  begin("1");
  heard_.clear();
  hide(1);
  loop_.Advance(10);
  EXPECT_THAT(heard_, ElementsAre("through")) << "nothing is left of it to be seen";
}

TEST_F(SlideShowTest, APacedShowMovesWhereItIsPut) {
  SlideShowOptions paced;
  paced.isPaced = true;
  paced.loop = true;
  begin("1h1v", paced);
  EXPECT_EQ(after(5000), 1);
  show_->moveTo(1);
  EXPECT_EQ(show_->position(), 3) << "the next one stands in for a hidden one";
  heard_.clear();
  show_->moveTo(2);
  EXPECT_THAT(heard_, ElementsAre()) << "that one is on show already";
  show_->moveTo(3);
  hide(4);
  EXPECT_EQ(after(10), 1);
  show_->goTo(2);
  show_->moveTo(1);
  EXPECT_EQ(show_->position(), 3) << "chosen by number it was not where it was put";
  show_->moveTo(9);
  EXPECT_EQ(show_->position(), 3);
}

TEST_F(SlideShowTest, GoesOnWhenTheDeckIsDeleted) {
  const TemporaryFolder folder;
  deck_.addSlide(textShape(2, "Price", "1"));
  deck_.addSlide();
  const std::string path = folder.write("deck.pptx", deck_.bytes());
  presentation_ = application_->open(path);
  show_ = SlideShow::begin(*application_, presentation_, loop_);
  std::filesystem::remove(path);
  application_->close(presentation_);
  presentation_.reset();
  EXPECT_THAT(steps(1), ElementsAre(2));
  show_->View()->Slide()->Tags()->Add("A", "1");
  EXPECT_THAT(steps(2), ElementsAre(3, 0));
}
}  // namespace
}  // namespace deck::test
