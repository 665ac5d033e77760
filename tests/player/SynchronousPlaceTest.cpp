// Where players stand that follow the clock.

#include "app/player/SynchronousPlace.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>

namespace app::test {
namespace {

/// "deck:slide+remaining"
std::string at(const std::vector<TimedDeck>& decks, std::int64_t now) {
  const auto place = synchronousPlace(decks, now);
  if (!place) return "nowhere";
  return std::to_string(place->deck) + ":" + std::to_string(place->slide.slide) + "+" +
         std::to_string(place->remaining);
}

const std::vector<TimedDeck> decks = {{{0, 1, 3000}, {2, 3, 1500}}, {}, {{0, 5, 500}}};

TEST(SynchronousPlace, GoesRoundWithTheTime) {
  EXPECT_EQ(at(decks, 0), "0:1+3000");
  EXPECT_EQ(at(decks, 2999), "0:1+1");
  EXPECT_EQ(at(decks, 3000), "0:3+1500");
  EXPECT_EQ(at(decks, 4500), "2:5+500");
  EXPECT_EQ(at(decks, 4999), "2:5+1");
  EXPECT_EQ(at(decks, 5000), "0:1+3000");
  constexpr std::int64_t Year2026 = 1'767'225'600'000;
  EXPECT_EQ(at(decks, Year2026 + 4500), "2:5+500") << "5 s divide a day";
  EXPECT_EQ(at(decks, -1), "2:5+1") << "a machine without a clock battery";
  EXPECT_NE(at(decks, std::numeric_limits<std::int64_t>::min()), "nowhere");
}

TEST(SynchronousPlace, IsWhereTheTimeRemainingLeads) {
  std::int64_t now = 17;
  for (int step = 0; step < 1000; ++step) {
    const auto place = synchronousPlace(decks, now);
    ASSERT_GT(place->remaining, 0);
    const auto before = synchronousPlace(decks, now + place->remaining - 1);
    EXPECT_EQ(before->slide, place->slide);
    now += place->remaining;
    EXPECT_FALSE(synchronousPlace(decks, now)->slide == place->slide);
  }
  EXPECT_EQ(at({}, now), "nowhere");
  EXPECT_EQ(at({{}, {}}, now), "nowhere");
}

}  // namespace
}  // namespace app::test
