// One deck taking the place of another while its show runs.

#include "app/show/Stage.h"

#include "app/ShowTest.h"

namespace app::test {
namespace {

struct StageTest : ShowTest {
  int ends = 0;

  std::unique_ptr<Stage> show(const support::DeckBuilder& deck) {
    auto stage = std::make_unique<Stage>(host, loop, open(deck), Stage::Options{});
    stage->begin(std::nullopt, [this] { ++ends; });
    return stage;
  }
  static DeckVersion version(const support::DeckBuilder& deck) { return {deck.package(), {}}; }
};

TEST_F(StageTest, AShowIsThereAsLongAsSomethingOfItWaits) {
  auto stage = show(deckWithSheet());
  const std::weak_ptr<deck::Presentation> first = stage->deck();
  // A slow drive: while the first deck's cells are read, two versions come one after the other.
  int waits = 0;
  machine.files.onLocalPath = [&](std::string_view) {
    if (++waits > 1) return;
    stage->change(version(deckWithSheet()));
    stage->change(version(deckWithSheet()));
    EXPECT_GT(first.use_count(), 1) << "beside the call that waits nobody holds the deck";
  };
  loop.post([&] { first.lock()->UpdateLinks(); });
  runPosted();
  EXPECT_GE(waits, 3);
  EXPECT_TRUE(first.expired());
  EXPECT_EQ(ends, 0);
  EXPECT_TRUE(stage->health().isReady);
}

TEST_F(StageTest, WhatCannotBeShownLeavesTheShowAlone) {
  support::DeckBuilder deck = support::DeckBuilder::of(support::textShape(2, "p", "as before"));
  auto stage = show(deck);
  const std::string shown = stage->state({}).deck;
  EXPECT_THROW(stage->change(version(support::DeckBuilder())), basic::Error);
  runPosted();
  EXPECT_EQ(ends, 0);
  EXPECT_EQ(stage->state({}).deck, shown);
  EXPECT_TRUE(stage->goTo(1).isDone());

  EXPECT_TRUE(stage->end().isDone());
  runPosted();
  EXPECT_EQ(ends, 1);
}

}  // namespace
}  // namespace app::test
