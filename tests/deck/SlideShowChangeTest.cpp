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
  loop_.Advance(1999);
  EXPECT_EQ(show_->position(), 2);
  loop_.Advance(1);
  EXPECT_EQ(show_->position(), 3) << "its time ran on from the show before";

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
