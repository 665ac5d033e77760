#include "deck/show/TransitionEffect.h"

#include <gmock/gmock.h>

#include "support/DeckBuilder.h"

namespace deck::test {
namespace {

using Kind = TransitionEffect::Kind;
using support::alternative;
using support::DeckBuilder;

TEST(TransitionEffectTest, ReadsHowSlidesComeIn) {
  const std::pair<std::string, TransitionEffect> cases[] = {
      {"", {Kind::None, "", false, 0}},
      {"<p:transition advTm=\"3000\"/>", {Kind::None, "", false, 0}},
      {"<p:transition><p:fade/></p:transition>", {Kind::Fade, "", false, 500}},
      {"<p:transition spd=\"med\"><p:fade thruBlk=\"1\"/></p:transition>", {Kind::Fade, "", true, 750}},
      {"<p:transition spd=\"slow\"><p:push dir=\"u\"/></p:transition>", {Kind::Push, "u", false, 1000}},
      {"<p:transition><p:sndAc/><p:wipe/></p:transition>", {Kind::Wipe, "l", false, 500}},
      {"<p:transition><p:cover dir=\"rd\"/></p:transition>", {Kind::Cover, "rd", false, 500}},
      {"<p:transition><p:pull dir=\"?\"/></p:transition>", {Kind::Uncover, "l", false, 500}},
      {"<p:transition><p:split orient=\"vert\" dir=\"in\"/></p:transition>",
       {Kind::Split, "vert-in", false, 500}},
      {"<p:transition><p:split/></p:transition>", {Kind::Split, "horz-out", false, 500}},
      {"<p:transition><p:cut/></p:transition>", {Kind::Cut, "", false, 500}},
      {"<p:transition><p:newsflash/></p:transition>", {Kind::Fade, "", false, 500}},
      {alternative("<p:transition spd=\"med\" p14:dur=\"700\"><p:fade/></p:transition>",
                   "<p:transition spd=\"med\"><p:fade/></p:transition>"),
       {Kind::Fade, "", false, 700}},
      {alternative("<p:transition spd=\"slow\" p14:dur=\"1200\"><p14:pan dir=\"u\"/></p:transition>",
                   "<p:transition spd=\"slow\"><p:push dir=\"u\"/></p:transition>"),
       {Kind::Push, "u", false, 1200}},
      {alternative("<p:transition p14:dur=\"-5\"><p14:vortex/></p:transition>", ""),
       {Kind::Fade, "", false, 0}},
  };
  for (const auto& [xml, expected] : cases) {
    SCOPED_TRACE(xml);
    DeckBuilder deck = DeckBuilder::of();
    deck.afterCommonData(1, xml);
    const auto& [kind, direction, throughBlack, milliseconds] = expected;
    EXPECT_THAT(transitionOf(deck.presentation()->slidePart(1)),
                testing::FieldsAre(kind, direction, throughBlack, milliseconds));
  }
}

}  // namespace
}  // namespace deck::test
